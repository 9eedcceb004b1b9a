// SPDX-License-Identifier: MIT
//
// The bytes before the token, what becomes of the token, and the bytes after it.

#include "edit/TextSplice.h"

#include <optional>
#include <string>

#include "text/byteOrderMark.h"
#include "text/TextLookup.h"

namespace orvid_tool {

namespace {

using ko::Orvid::Dom;
using ko::Orvid::Element;
using ko::Orvid::ReadOptions;

bool isContainer(const Element& value) { return value.isObject() || value.isArray(); }

/// Whether the scalar has no other spelling: two such tokens are one value if they are one text.
bool isPlain(std::string_view token) {
    const bool isNumber = token.front() == '-' || (token.front() >= '0' && token.front() <= '9');
    return token.find_first_of(isNumber ? ".eE" : "\\") == std::string_view::npos;
}

/// What becomes of the token. Where it may say the same as the value in another way, the library
/// knows whether it stays: the scalar is a document of its own then.
std::string written(std::string_view token, const Scalar& value, const ReadOptions& options) {
    if (isPlain(token) && isPlain(value.text)) {
        return std::string(value.text);
    }
    Dom document = Dom::parse(token, options);
    *document = value.element;
    return document.text();
}

}  // namespace

bool splice(std::string_view text, const ValueSteps& steps, const Scalar& value,
            const ReadOptions& options, Bytes& out) {
    if (isContainer(value.element)) {
        return false;
    }
    const std::string_view document = text.substr(ko::Orvid::text::markLength(text));
    const std::optional<std::string_view> found = ko::Orvid::text::lookUp(document, steps, options);
    if (!found || found->front() == '{' || found->front() == '[') {
        return false;
    }
    const std::string token = written(*found, value, options);
    const auto begin = static_cast<std::size_t>(found->data() - text.data());
    static_cast<void>(out.room(text.length() + token.length()));
    out.append(text.substr(0, begin));
    out.append(token);
    out.append(text.substr(begin + found->length()));
    return true;
}

}  // namespace orvid_tool
