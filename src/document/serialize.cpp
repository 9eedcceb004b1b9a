// SPDX-License-Identifier: MIT
//
// Whole documents as text.

#include <ko/Orvid/serialize.h>

#include <ko/Orvid/Dom.h>
#include <ko/Orvid/Element.h>
#include <ko/Orvid/Exception.h>

#include <string>

#include "document/TreeWriter.h"
#include "document/WriteError.h"
#include "text/StringText.h"
#include "text/Writer.h"

namespace ko::Orvid {

namespace {

void requireJson(const Element& root, const WriteOptions& options, const std::string* leftOut) {
    if (const auto error = findWriteError(root, options, leftOut)) {
        throw Exception(error->message, error->element);
    }
}

/// Writes first and checks the text as a whole, which is faster than checking each string: it is
/// UTF-8 where all of them are, since a quote ends each. Only the search for an error takes a walk
/// of its own, as does the layout that replaces what is no UTF-8.
template<class Value>
std::string write(const Value& value, const Element& root, const WriteOptions& options,
                  const std::string* leftOut) {
    if (options.asciiOnly) {
        requireJson(root, options, leftOut);
    }
    text::Writer writer(layoutOf(options));
    TreeWriter tree(writer, options.sortKeys, TreeWriter::Check::values);
    tree.write(value);
    const bool isJson =
        tree.wroteJson() && (options.allowInvalidUtf8 || text::isUtf8(writer.text()));
    if (!isJson) {
        requireJson(root, options, leftOut);
    }
    return std::string(writer.text());
}

}  // namespace

std::string serialize(const Element& element, const WriteOptions& options) {
    return write(element, element, options, nullptr);
}

std::string serialize(const Dom& dom, const WriteOptions& options) {
    return write(dom, *dom, options, dom.writeMeta() ? nullptr : &dom.metaKey());
}

}  // namespace ko::Orvid
