// SPDX-License-Identifier: MIT
//
// RapidJSON.

#include <rapidjson/document.h>
#include <rapidjson/pointer.h>
#include <rapidjson/prettywriter.h>
#include <rapidjson/stringbuffer.h>

#include <stdexcept>

#include "peers/peer.h"

namespace orvid_bench {

namespace {

void summarize(const rapidjson::Value& value, Summary& summary) {
    if (value.IsObject()) {
        ++summary.objects;
        for (const auto& member : value.GetObject()) {
            summary.addKey(member.name.GetStringLength());
            summarize(member.value, summary);
        }
    } else if (value.IsArray()) {
        ++summary.arrays;
        for (const auto& item : value.GetArray()) {
            summarize(item, summary);
        }
    } else if (value.IsString()) {
        summary.addString(value.GetStringLength());
    } else if (value.IsNumber()) {
        summary.addNumber(value.GetDouble());
    } else if (value.IsBool()) {
        summary.addBoolean(value.GetBool());
    } else {
        ++summary.nulls;
    }
}

class RapidJsonTree : public Tree {
public:
    rapidjson::Document root;

    Summary summary() const override {
        Summary result;
        summarize(root, result);
        return result;
    }
    std::string text() const override {
        rapidjson::StringBuffer buffer;
        print(buffer);
        return {buffer.GetString(), buffer.GetSize()};
    }
    std::size_t write() const override {
        rapidjson::StringBuffer buffer;
        print(buffer);
        return buffer.GetSize();
    }
    std::unique_ptr<Tree> copy() const override {
        auto result = std::make_unique<RapidJsonTree>();
        result->root.CopyFrom(root, result->root.GetAllocator());
        return result;
    }
    bool equals(const Tree& other) const override {
        return root == static_cast<const RapidJsonTree&>(other).root;
    }
    void edit() override {
        rapidjson::Pointer("/edited").Set(root, 1);
        rapidjson::Pointer("/editor").Set(root, "bench");
    }
    const void* lookUp(const PathTexts& path) const override {
        return rapidjson::Pointer(path.pointer.data(), path.pointer.size()).Get(root);
    }
    std::string scalar(const PathTexts& path) const override {
        const rapidjson::Value& value = *rapidjson::Pointer(path.pointer.c_str()).Get(root);
        return value.IsString() ? value.GetString() : std::to_string(value.GetInt64());
    }

private:
    void print(rapidjson::StringBuffer& buffer) const {
        rapidjson::PrettyWriter<rapidjson::StringBuffer> writer(buffer);
        writer.SetIndent(' ', 4);
        root.Accept(writer);
    }
};

std::unique_ptr<Tree> read(const std::string& text) {
    auto tree = std::make_unique<RapidJsonTree>();
    if (tree->root.Parse(text.data(), text.size()).HasParseError()) {
        throw std::runtime_error("RapidJSON: parse error");
    }
    return tree;
}

}  // namespace

Peer rapidJson() { return {"RapidJSON", read, 0, 10000}; }

}  // namespace orvid_bench
