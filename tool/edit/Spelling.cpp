// SPDX-License-Identifier: MIT
//
// Strings of one text put in the places of those of another.

#include "edit/Spelling.h"

#include <string>
#include <utility>

#include "edit/Kept.h"
#include "input/skipWhitespace.h"

namespace orvid_tool {

namespace {

using ko::Orvid::Dom;
using ko::Orvid::JsonPointer;

/// The next string of a well-formed text, without what stands before it; empty at the end.
std::string_view takeString(std::string_view& text) {
    std::size_t begin = text.find_first_of("\"/");
    while (begin < text.length() && text[begin] == '/') {
        begin = text.find_first_of("\"/", commentEnd(text, begin));
    }
    if (begin == std::string_view::npos) {
        return {};
    }
    std::size_t end = begin + 1;
    while (text[end] != '"') {
        end += text[end] == '\\' ? 2U : 1U;
    }
    const std::string_view string = text.substr(begin, end + 1 - begin);
    text.remove_prefix(end + 1);
    return string;
}

/// `text` with each of its strings spelled as in `source`, which holds the same value, perhaps in
/// another layout and with comments.
std::string respelled(std::string_view text, std::string_view source) {
    std::string result;
    std::string_view rest = text;
    for (std::string_view old = takeString(rest); !old.empty(); old = takeString(rest)) {
        result.append(text.data(), old.data());
        result += takeString(source);
        text = rest;
    }
    return result += text;
}

}  // namespace

std::string_view escapedText(const Call& call, Document& document, const JsonPointer& pointer) {
    if (!document.kept || call.layout.isAsked || call.layout.isColored) {
        return {};
    }
    Dom& kept = *document.kept;
    *kept = std::move(document.root);
    std::string_view text;
    if (const auto place = kept.placeOf(pointer.get(*kept))) {
        text = document.text.substr(place->offset, place->length);
    }
    document.root = std::move(*kept);
    return text.find('\\') == std::string_view::npos ? std::string_view() : text;
}

void spellAs(std::string_view source, const Call& call, const JsonPointer& pointer,
             std::size_t start, Bytes& out) {
    const std::string all(out.view().substr(start));
    const Dom edited = Dom::parse(all, editOptions(call));
    const auto place = edited.placeOf(pointer.get(*edited));
    if (!place) {
        return;
    }
    const std::string_view text = all;
    out.cut(start);
    out.append(text.substr(0, place->offset));
    out.append(respelled(text.substr(place->offset, place->length), source));
    out.append(text.substr(place->offset + place->length));
}

}  // namespace orvid_tool
