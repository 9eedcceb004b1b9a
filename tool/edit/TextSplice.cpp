// SPDX-License-Identifier: MIT
//
// The scalar is a document of its own for the library, which knows whether its token may stay.

#include "edit/TextSplice.h"

#include <optional>
#include <string>

#include "text/TextLookup.h"

namespace orvid_tool {

namespace {

using ko::Orvid::Dom;
using ko::Orvid::Element;

bool isContainer(const Element& value) { return value.isObject() || value.isArray(); }

}  // namespace

bool splice(std::string_view text, const ValueSteps& steps, const Element& value, Bytes& out) {
    const std::optional<std::string_view> found =
        isContainer(value) ? std::nullopt
                           : ko::Orvid::text::lookUp(text, steps, ko::Orvid::ReadOptions::strict());
    if (!found || found->front() == '{' || found->front() == '[') {
        return false;
    }
    Dom token = Dom::parse(*found);
    *token = value;
    const std::string written = token.text();
    const auto begin = static_cast<std::size_t>(found->data() - text.data());
    static_cast<void>(out.room(text.length() + written.length()));
    out.append(text.substr(0, begin));
    out.append(written);
    out.append(text.substr(begin + found->length()));
    return true;
}

}  // namespace orvid_tool
