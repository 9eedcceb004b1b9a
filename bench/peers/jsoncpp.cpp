// SPDX-License-Identifier: MIT
//
// JsonCpp.

#include <json/json.h>

#include <stdexcept>

#include "peers/peer.h"

namespace orvid_bench {

namespace {

void summarize(const Json::Value& value, Summary& summary) {
    if (value.isObject()) {
        ++summary.objects;
        for (auto member = value.begin(); member != value.end(); ++member) {
            summary.addKey(member.name().size());
            summarize(*member, summary);
        }
    } else if (value.isArray()) {
        ++summary.arrays;
        for (const Json::Value& item : value) {
            summarize(item, summary);
        }
    } else if (value.isString()) {
        summary.addString(value.asString().size());
    } else if (value.isBool()) {
        summary.addBoolean(value.asBool());
    } else if (value.isNumeric()) {
        summary.addNumber(value.asDouble());
    } else {
        ++summary.nulls;
    }
}

class JsoncppTree : public Tree {
public:
    Json::Value root;

    Summary summary() const override {
        Summary result;
        summarize(root, result);
        return result;
    }
    std::string text() const override {
        Json::StreamWriterBuilder builder;
        builder["indentation"] = "    ";
        builder["emitUTF8"] = true;
        return Json::writeString(builder, root);
    }
    std::size_t write() const override { return text().size(); }
    std::unique_ptr<Tree> copy() const override {
        auto result = std::make_unique<JsoncppTree>();
        result->root = root;
        return result;
    }
    bool equals(const Tree& other) const override {
        return root == static_cast<const JsoncppTree&>(other).root;
    }
    void edit() override {
        root["edited"] = 1;
        root["editor"] = "bench";
    }
    const void* lookUp(const PathTexts& path) const override {
        return &Json::Path(path.dotted).resolve(root);
    }
    std::string scalar(const PathTexts& path) const override {
        return Json::Path(path.dotted).resolve(root).asString();
    }
};

std::unique_ptr<Tree> read(const std::string& text) {
    auto tree = std::make_unique<JsoncppTree>();
    const std::unique_ptr<Json::CharReader> reader(Json::CharReaderBuilder().newCharReader());
    std::string errors;
    if (!reader->parse(text.data(), text.data() + text.size(), &tree->root, &errors)) {
        throw std::runtime_error(errors);
    }
    return tree;
}

}  // namespace

Peer jsoncpp() { return {"jsoncpp", read}; }

}  // namespace orvid_bench
