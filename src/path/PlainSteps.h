// SPDX-License-Identifier: MIT
//
// PlainSteps reads the steps of path text one by one, without a listener and without copies, as far
// as the text is plain: no escapes, no `[*]`, no errors. Whatever else the text holds is left to
// PathParser, which is the one that knows the whole language.

#pragma once

#include <cstddef>
#include <string_view>

#include "path/PathCharacters.h"

namespace ko::Orvid {

class PlainSteps {
public:
    enum class StepKind { key, index, end, notPlain };

    explicit PlainSteps(std::string_view text) : m_rest(text) {}

    /// Takes the next step. After `end` and `notPlain` there is none.
    StepKind next() {
        if (m_rest.empty()) {
            return StepKind::end;
        }
        if (m_rest.front() == '[') {
            return takeIndex();
        }
        return takeKey(m_rest.front() == '.' ? 1 : 0);
    }

    /// Of the last step, if it was a key. Lies in the path's text.
    std::string_view key() const { return m_key; }
    /// Of the last step, if it was an index; 0-based.
    unsigned int index() const { return m_index; }

private:
    StepKind takeKey(std::size_t start) {
        m_rest.remove_prefix(start);
        const std::size_t length = keyLength(m_rest);
        m_key = m_rest.substr(0, length);
        m_rest.remove_prefix(length);
        const bool isPlain =
            length > 0 && (m_rest.empty() || m_rest.front() == '.' || m_rest.front() == '[');
        return isPlain ? StepKind::key : StepKind::notPlain;
    }

    StepKind takeIndex() {
        constexpr std::size_t longest = 9;  // any number of nine digits fits
        std::size_t length = 1;
        m_index = 0;
        while (length <= longest && length < m_rest.size() && isDigit(m_rest[length])) {
            m_index = m_index * 10 + static_cast<unsigned int>(m_rest[length] - '0');
            ++length;
        }
        if (length == 1 || length == m_rest.size() || m_rest[length] != ']') {
            return StepKind::notPlain;
        }
        m_rest.remove_prefix(length + 1);
        return StepKind::index;
    }

    std::string_view m_rest;
    std::string_view m_key;
    unsigned int m_index = 0;
};

/// Calls `take` with each step of a plain path: a key as std::string_view, or an index. Returns
/// whether the path was plain; if not, some steps were taken.
template<class Take>
bool takePlainSteps(std::string_view path, const Take& take) {
    for (PlainSteps steps(path);;) {
        switch (steps.next()) {
            case PlainSteps::StepKind::key:
                take(steps.key());
                break;
            case PlainSteps::StepKind::index:
                take(steps.index());
                break;
            case PlainSteps::StepKind::end:
                return true;
            case PlainSteps::StepKind::notPlain:
                return false;
        }
    }
}

}  // namespace ko::Orvid
