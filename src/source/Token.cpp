// SPDX-License-Identifier: MIT
//
// What strings stand for, and scalars as text.

#include "source/Token.h"

#include "source/DecimalText.h"
#include "text/StringText.h"
#include "text/Writer.h"

namespace ko::Orvid {

namespace {

std::string_view withoutQuotes(std::string_view token) { return token.substr(1, token.size() - 2); }

}  // namespace

EType typeOfToken(char first) noexcept {
    switch (first) {
        case '{':
            return etObject;
        case '[':
            return etArray;
        case '"':
            return etString;
        case 't':
        case 'f':
            return etBoolean;
        case 'n':
            return etNull;
        default:
            return etNumber;
    }
}

std::string stringOfToken(std::string_view token) {
    const std::string_view text = withoutQuotes(token);
    std::string bytes;
    text::appendUnescaped(bytes, text.data(), text.data() + text.size());
    return bytes;
}

bool tokenSays(std::string_view token, std::string_view bytes) {
    const std::string_view text = withoutQuotes(token);
    return text == bytes
               ? text.find('\\') == std::string_view::npos
               : text.find('\\') != std::string_view::npos && stringOfToken(token) == bytes;
}

bool tokenSays(std::string_view token, const Element& scalar) {
    if (typeOfToken(token.front()) != scalar.type()) {
        return false;
    }
    if (scalar.isString()) {
        return tokenSays(token, std::string_view(scalar.string()));
    }
    if (scalar.isNumber()) {
        const std::string_view text = scalar.number().textView();
        return token == text || (!hasOwnSpelling(text) && sameDecimal(token, text));
    }
    return scalar.isNull() || scalar.boolean() == (token.front() == 't');
}

void appendQuoted(std::string& out, std::string_view text) {
    text::Layout layout;
    layout.isIndented = false;
    layout.hasFinalNewline = false;
    text::Writer writer(layout);
    writer.string(text.data(), text.size());
    out += writer.text();
}

void appendScalar(std::string& out, const Element& scalar) {
    switch (scalar.type()) {
        case etBoolean:
            out += scalar.boolean() ? "true" : "false";
            break;
        case etNumber:
            out += scalar.number().textView();
            break;
        case etString:
            appendQuoted(out, scalar.string());
            break;
        default:
            out += "null";
            break;
    }
}

}  // namespace ko::Orvid
