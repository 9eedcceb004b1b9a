// SPDX-License-Identifier: MIT
//
// Whole documents as text.

#include <ko/Orvid/serialize.h>

#include <ko/Orvid/Dom.h>
#include <ko/Orvid/Element.h>
#include <ko/Orvid/Exception.h>
#include <ko/Orvid/Generator.h>

#include "document/WriteFault.h"

namespace ko::Orvid {

namespace {

void requireJson(const Element& root, const WriteOptions& options, const std::string* leftOut) {
    if (const auto fault = findWriteFault(root, options, leftOut)) {
        throw Exception(fault->message, fault->element);
    }
}

template<class Value>
std::string encode(const Value& value, const WriteOptions& options) {
    constexpr int tooDeep = 2;
    Generator generator(nullptr, options);
    std::string text = generator.encode(value);
    if (generator.state() == tooDeep) {
        throw Exception("Nested deeper than 127 levels");
    }
    return text;
}

}  // namespace

std::string serialize(const Element& element, const WriteOptions& options) {
    requireJson(element, options, nullptr);
    return encode(element, options);
}

std::string serialize(const Dom& dom, const WriteOptions& options) {
    requireJson(*dom, options, dom.writeMeta() ? nullptr : &dom.metaKey());
    return encode(dom, options);
}

}  // namespace ko::Orvid
