// SPDX-License-Identifier: MIT
//
// Values that are answers.

#include "Answer.h"

namespace orvid_tool {

void appendAnswer(const SCall& call, const ko::Orvid::Element& value, std::string& out) {
    const bool isRaw =
        call.isRaw && value.isString() &&
        !(call.lines.isOn && value.string().find_first_of("\r\n") != std::string::npos);
    if (isRaw) {
        out.append(value.string()).append("\n");
    } else {
        append(out, jsonText(value, call.layout));
    }
}

}  // namespace orvid_tool
