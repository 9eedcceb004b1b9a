// SPDX-License-Identifier: MIT
//
// One pass over the text. Of a repeated key the last value counts, as it does in a tree.

#include "input/TextLookup.h"

#include "input/Tokens.h"

namespace orvid_tool {

namespace {

class Lookup {
public:
    Lookup(std::string_view text, const std::vector<SStep>& steps)
        : m_tokens(text), m_steps(steps) {}

    std::optional<std::string_view> run() {
        m_tokens.passBlanks();
        if (!passValue(0, true)) {
            return {};
        }
        m_tokens.passBlanks();
        return m_tokens.isAtEnd() ? m_found : std::nullopt;
    }

private:
    /// Passes the value here, which lies below `depth` containers; `isOnPath` says that the steps
    /// so far lead to it.
    bool passValue(std::size_t depth, bool isOnPath) {
        const char* const start = m_tokens.place();
        if (!passAny(depth, isOnPath)) {
            return false;
        }
        if (isOnPath && depth == m_steps.size()) {
            m_found = std::string_view(start, static_cast<std::size_t>(m_tokens.place() - start));
        }
        return true;
    }

    bool passAny(std::size_t depth, bool isOnPath) {
        constexpr std::size_t deepest = 100;
        bool hasEscape = false;
        switch (m_tokens.byte()) {
            case '{':
                return depth < deepest && passObject(depth, isOnPath && depth < m_steps.size());
            case '[':
                return depth < deepest && passArray(depth, isOnPath && depth < m_steps.size());
            case '"':
                return m_tokens.passString(hasEscape);
            case 'n':
            case 't':
            case 'f':
                return m_tokens.passWord();
            default:
                return m_tokens.passNumber();
        }
    }

    bool passObject(std::size_t depth, bool hasStep) {
        const bool isWanted = hasStep && m_steps[depth].isKey;
        m_tokens.passByte();
        m_tokens.passBlanks();
        if (m_tokens.pass('}')) {
            return true;
        }
        do {
            m_tokens.passBlanks();
            const char* const key = m_tokens.place();
            bool hasEscape = false;
            if (m_tokens.byte() != '"' || !m_tokens.passString(hasEscape) || hasEscape) {
                return false;
            }
            const auto length = static_cast<std::size_t>(m_tokens.place() - key) - 2;
            const bool isStep = isWanted && std::string_view(key + 1, length) == m_steps[depth].key;
            m_tokens.passBlanks();
            if (!m_tokens.pass(':') || !passChild(depth, isStep)) {
                return false;
            }
        } while (m_tokens.pass(','));
        return m_tokens.pass('}');
    }

    bool passArray(std::size_t depth, bool hasStep) {
        const bool isWanted = hasStep && !m_steps[depth].isKey;
        m_tokens.passByte();
        m_tokens.passBlanks();
        if (m_tokens.pass(']')) {
            return true;
        }
        unsigned int index = 0;
        do {
            const bool isStep = isWanted && index == m_steps[depth].index;
            ++index;
            if (!passChild(depth, isStep)) {
                return false;
            }
        } while (m_tokens.pass(','));
        return m_tokens.pass(']');
    }

    bool passChild(std::size_t depth, bool isStep) {
        if (isStep) {
            m_found.reset();
        }
        m_tokens.passBlanks();
        const bool isPassed = passValue(depth + 1, isStep);
        m_tokens.passBlanks();
        return isPassed;
    }

    Tokens m_tokens;
    const std::vector<SStep>& m_steps;
    std::optional<std::string_view> m_found;
};

}  // namespace

std::optional<std::string_view> lookUp(std::string_view text, const std::vector<SStep>& steps) {
    return Lookup(text, steps).run();
}

}  // namespace orvid_tool
