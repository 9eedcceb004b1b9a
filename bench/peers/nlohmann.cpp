// SPDX-License-Identifier: MIT
//
// nlohmann::ordered_json, the form of that library that keeps the order of members.

#include <nlohmann/json.hpp>

#include "peers/peer.h"

namespace orvid_bench {

namespace {

using Json = nlohmann::ordered_json;

void summarize(const Json& value, Summary& summary) {
    if (value.is_object()) {
        ++summary.objects;
        for (const auto& member : value.items()) {
            summary.addKey(member.key().size());
            summarize(member.value(), summary);
        }
    } else if (value.is_array()) {
        ++summary.arrays;
        for (const Json& item : value) {
            summarize(item, summary);
        }
    } else if (value.is_string()) {
        summary.addString(value.get_ref<const std::string&>().size());
    } else if (value.is_number()) {
        summary.addNumber(value.get<double>());
    } else if (value.is_boolean()) {
        summary.addBoolean(value.get<bool>());
    } else {
        ++summary.nulls;
    }
}

class NlohmannTree : public Tree {
public:
    Json root;

    Summary summary() const override {
        Summary result;
        summarize(root, result);
        return result;
    }
    std::string text() const override { return root.dump(4); }
    std::size_t write() const override { return root.dump(4).size(); }
    std::unique_ptr<Tree> copy() const override {
        auto result = std::make_unique<NlohmannTree>();
        result->root = root;
        return result;
    }
    bool equals(const Tree& other) const override {
        return root == static_cast<const NlohmannTree&>(other).root;
    }
    void edit() override {
        root["edited"] = 1;
        root["editor"] = "bench";
    }
    const void* lookUp(const PathTexts& path) const override {
        return &root.at(Json::json_pointer(path.pointer));
    }
    std::string scalar(const PathTexts& path) const override {
        const Json& value = root.at(Json::json_pointer(path.pointer));
        return value.is_string() ? value.get<std::string>() : value.dump();
    }
};

std::unique_ptr<Tree> read(const std::string& text) {
    auto tree = std::make_unique<NlohmannTree>();
    tree->root = Json::parse(text);
    return tree;
}

}  // namespace

Peer nlohmannOrdered() { return {"ordered_json", read, 10000}; }

}  // namespace orvid_bench
