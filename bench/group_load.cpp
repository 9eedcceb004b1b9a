// SPDX-License-Identifier: MIT
//
// What it costs to keep a document's source: the same file loaded with the places of its values,
// and without. Both read strictly.

#include <ko/Orvid.h>

#include <memory>
#include <stdexcept>

#include "group.h"
#include "temporary_file.h"

namespace orvid_bench {

namespace {

Group loadGroup(const Document& document) {
    using ko::Orvid::Dom;
    const auto file = std::make_shared<TemporaryFile>(document.text);
    const auto load = [file] {
        const Dom dom = Dom::load(file->name());
        keep(&dom);
    };
    const auto read = [file] {
        const std::string text = ko::Orvid::readFile(file->name());
        ko::Orvid::Element root;
        ko::Orvid::DomParser(ko::Orvid::ReadOptions::strict()).parse(root, text);
        keep(&root);
    };
    Group group{"load", document.name, {{"orvid, Dom::load", load}, {"without places", read}}};
    group.bars = {{"orvid, Dom::load", "without places", 1.25}};
    group.verify = [file] {
        const Dom dom = Dom::load(file->name());
        if (!dom.placeOf(*dom) || dom.text() != ko::Orvid::readFile(file->name())) {
            throw std::runtime_error("the source of a document is lost");
        }
    };
    return group;
}

}  // namespace

std::vector<Group> loadGroups(const std::vector<Document>& documents) {
    std::vector<Group> result;
    result.reserve(documents.size());
    for (const Document& document : documents) {
        result.push_back(loadGroup(document));
    }
    return result;
}

}  // namespace orvid_bench
