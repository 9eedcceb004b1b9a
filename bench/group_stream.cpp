// SPDX-License-Identifier: MIT
//
// Reading from a file stream, beside reading a text that is in memory already.

#include <ko/Orvid.h>

#include <fstream>
#include <iterator>
#include <memory>
#include <stdexcept>

#include "group.h"
#include "temporary_file.h"

namespace orvid_bench {

namespace {

using ko::Orvid::DomParser;
using ko::Orvid::Element;

void readStream(const TemporaryFile& file, Element& root) {
    std::ifstream in(file.name(), std::ios::binary);
    in >> root;
    keep(&root);
}

void readBuffer(const std::string& text, Element& root) {
    DomParser().parse(root, text);
    keep(&root);
}

void readFileWhole(const TemporaryFile& file, Element& root) {
    std::ifstream in(file.name(), std::ios::binary);
    readBuffer({std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()}, root);
}

Group streamGroup(const Document& document) {
    const auto file = std::make_shared<TemporaryFile>(document.text);
    const std::string& text = document.text;
    Element fromStream;
    Element fromBuffer;
    readStream(*file, fromStream);
    readBuffer(text, fromBuffer);
    if (Element::compare(fromStream.data(), fromBuffer.data()) != 0) {
        throw std::runtime_error(document.name + " is another document when read from a stream");
    }
    Group group{"stream read", document.name, {}};
    group.jobs = {{"orvid",
                   [file] {
                       Element root;
                       readStream(*file, root);
                   }},
                  {"orvid, whole buffer",
                   [text] {
                       Element root;
                       readBuffer(text, root);
                   }},
                  {"orvid, file into a string, then the string", [file] {
                       Element root;
                       readFileWhole(*file, root);
                   }}};
    group.bars = {{"orvid", "orvid, whole buffer", 1.1}};
    return group;
}

}  // namespace

std::vector<Group> streamGroups(const std::vector<Document>& documents) {
    std::vector<Group> result;
    for (const Document& document : documents) {
        result.push_back(streamGroup(document));
    }
    return result;
}

}  // namespace orvid_bench
