// SPDX-License-Identifier: MIT
//
// Whole documents as text.

#include <ko/Orvid/serialize.h>

#include <ko/Orvid/Dom.h>
#include <ko/Orvid/Element.h>
#include <ko/Orvid/Exception.h>
#include <ko/Orvid/Generator.h>

#include "document/WriteError.h"

namespace ko::Orvid {

namespace {

void requireJson(const Element& root, const WriteOptions& options, const std::string* leftOut) {
    if (const auto error = findWriteError(root, options, leftOut)) {
        throw Exception(error->message, error->element);
    }
}

}  // namespace

std::string serialize(const Element& element, const WriteOptions& options) {
    requireJson(element, options, nullptr);
    return Generator(nullptr, options).encode(element);
}

std::string serialize(const Dom& dom, const WriteOptions& options) {
    requireJson(*dom, options, dom.writeMeta() ? nullptr : &dom.metaKey());
    return Generator(nullptr, options).encode(dom);
}

}  // namespace ko::Orvid
