// SPDX-License-Identifier: MIT
//
// The library under measurement, behind the same interface as its peers.

#include <ko/Orvid.h>

#include "peers/peer.h"

namespace orvid_bench {

namespace {

using ko::Orvid::Element;

void summarize(const Element& element, Summary& summary) {
    if (element.isObject()) {
        ++summary.objects;
        for (const auto& member : element.object()) {
            summary.addKey(member.first.size());
            summarize(member.second, summary);
        }
    } else if (element.isArray()) {
        ++summary.arrays;
        for (const Element& item : element.array()) {
            summarize(item, summary);
        }
    } else if (element.isString()) {
        summary.addString(element.string().size());
    } else if (element.isNumber()) {
        // Not toString(), which would leave a string in each number of the tree that is measured.
        summary.addNumber(std::stod(std::string(element.number().textView())));
    } else if (element.isBoolean()) {
        summary.addBoolean(element.boolean());
    } else {
        ++summary.nulls;
    }
}

class OrvidTree : public Tree {
public:
    Element root;

    Summary summary() const override {
        Summary result;
        summarize(root, result);
        return result;
    }
    std::string text() const override { return ko::Orvid::Generator().encode(root); }
    std::size_t write() const override { return ko::Orvid::Generator().encode(root).size(); }
    std::unique_ptr<Tree> copy() const override {
        auto result = std::make_unique<OrvidTree>();
        result->root = root;
        return result;
    }
    bool equals(const Tree& other) const override {
        return root == static_cast<const OrvidTree&>(other).root;
    }
    void edit() override {
        root.tryUpdate("edited", 1);
        root.tryUpdate("editor", "bench");
    }
    const void* lookUp(const PathTexts& path) const override { return &root.get(path.dotted); }
    std::string scalar(const PathTexts& path) const override {
        const Element& value = root.get(path.dotted);
        return value.isString() ? value.string() : value.number().toString();
    }
};

std::unique_ptr<Tree> read(const std::string& text) {
    auto tree = std::make_unique<OrvidTree>();
    ko::Orvid::DomParser().parse(tree->root, text);
    return tree;
}

}  // namespace

Peer orvid() { return {"orvid", read}; }

}  // namespace orvid_bench
