// SPDX-License-Identifier: MIT
//
// Values that are answers.

#include "edit/Answer.h"

#include "edit/rewrite.h"
#include "input/Document.h"

namespace orvid_tool {

void appendAnswer(const Call& call, const ko::Orvid::Element& value, Bytes& out) {
    const bool isRaw =
        call.isRaw && value.isString() &&
        !(call.lines.isOn && value.string().find_first_of("\r\n") != std::string::npos);
    if (isRaw) {
        out.append(value.string());
        out.append("\n");
    } else {
        out.append(jsonText(value, call.layout));
    }
}

bool appendAnswer(const Call& call, std::string_view value, Bytes& out) {
    const char first = value.front();
    if (first == '{' || first == '[') {
        return rewrite(value, {call.layout.options.indent, false}, nullptr, wholeOptions(), out);
    }
    if (first == '"' && value.find('\\') != std::string_view::npos) {
        return false;
    }
    if (first == '"' && call.isRaw) {
        value = value.substr(1, value.length() - 2);
    }
    out.append(value);
    out.append("\n");
    return true;
}

}  // namespace orvid_tool
