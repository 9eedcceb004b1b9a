// SPDX-License-Identifier: MIT
//
// Steps as text.

#include "path/PathText.h"

#include <ko/Orvid/PathGenerator.h>

#include <algorithm>

namespace ko::Orvid {

void appendEscaped(std::string& text, std::string_view key) {
    while (!key.empty()) {
        const std::size_t plain =
            std::min(key.find_first_of(PathGenerator::k_special), key.length());
        text.append(key.substr(0, plain));
        key.remove_prefix(plain);
        if (!key.empty()) {
            text += '\\';
            text += key.front();
            key.remove_prefix(1);
        }
    }
}

void PathText::genObjectProperty(std::string_view key) {
    if (!m_isFirst) {
        m_text += '.';
    }
    appendEscaped(m_text, key);
    m_isFirst = false;
}

void PathText::genListItem(unsigned int index) {
    m_text += '[';
    m_text += index == k_noIndex ? "*" : std::to_string(index);
    m_text += ']';
    m_isFirst = false;
}

}  // namespace ko::Orvid
