// SPDX-License-Identifier: MIT
//
// Boost.JSON. It has no indented layout: its text is the compact one.

#include <boost/json.hpp>

#include "peers/peer.h"

namespace orvid_bench {

namespace {

namespace json = boost::json;

void summarize(const json::value& value, Summary& summary) {
    if (value.is_object()) {
        ++summary.objects;
        for (const auto& member : value.get_object()) {
            summary.addKey(member.key().size());
            summarize(member.value(), summary);
        }
    } else if (value.is_array()) {
        ++summary.arrays;
        for (const json::value& item : value.get_array()) {
            summarize(item, summary);
        }
    } else if (value.is_string()) {
        summary.addString(value.get_string().size());
    } else if (value.is_number()) {
        summary.addNumber(value.to_number<double>());
    } else if (value.is_bool()) {
        summary.addBoolean(value.get_bool());
    } else {
        ++summary.nulls;
    }
}

class BoostTree : public Tree {
public:
    json::value root;

    Summary summary() const override {
        Summary result;
        summarize(root, result);
        return result;
    }
    std::string text() const override { return json::serialize(root); }
    std::size_t write() const override { return json::serialize(root).size(); }
    std::unique_ptr<Tree> copy() const override {
        auto result = std::make_unique<BoostTree>();
        result->root = root;
        return result;
    }
    bool equals(const Tree& other) const override {
        return root == static_cast<const BoostTree&>(other).root;
    }
    void edit() override {
        root.as_object()["edited"] = 1;
        root.as_object()["editor"] = "bench";
    }
    const void* lookUp(const PathTexts& path) const override {
        return &root.at_pointer(path.pointer);
    }
    std::string scalar(const PathTexts& path) const override {
        const json::value& value = root.at_pointer(path.pointer);
        return value.is_string() ? value.get_string().c_str() : json::serialize(value);
    }
};

std::unique_ptr<Tree> read(const std::string& text) {
    json::parse_options options;
    options.max_depth = 1000;
    auto tree = std::make_unique<BoostTree>();
    tree->root = json::parse(text, {}, options);
    return tree;
}

}  // namespace

Peer boostJson() { return {"Boost.JSON", read}; }

}  // namespace orvid_bench
