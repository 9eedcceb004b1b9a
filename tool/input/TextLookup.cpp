// SPDX-License-Identifier: MIT
//
// One pass through the text. Of a repeated key the last value counts, as it does in a tree.

#include "input/TextLookup.h"

#include "input/KeySet.h"
#include "input/Tokens.h"
#include "text/StringText.h"

namespace orvid_tool {

namespace {

bool isUtf8(std::string_view text) {
    const char* const end = text.data() + text.size();
    return ko::Orvid::text::scanUtf8(text.data(), end).at == end;
}

/// Whether a string has an escape from \uD800 to \uDFFF, or one that looks so.
bool hasSurrogate(std::string_view text) {
    for (std::size_t at = text.find("\\u"); at != std::string_view::npos;
         at = text.find("\\u", at + 2)) {
        if (text.substr(at + 2, 1) == "d" || text.substr(at + 2, 1) == "D") {
            return true;
        }
    }
    return false;
}

class Lookup {
public:
    Lookup(std::string_view text, const std::vector<SStep>& steps, KeySet::TKeys* keys)
        : m_tokens(text), m_steps(steps), m_keys(keys) {}

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
        switch (m_tokens.byte()) {
            case '{':
                return depth < deepest && passObject(depth, isOnPath && depth < m_steps.size());
            case '[':
                return depth < deepest && passArray(depth, isOnPath && depth < m_steps.size());
            case '"':
                return passString();
            case 'n':
            case 't':
            case 'f':
                return m_tokens.passWord();
            default:
                return m_tokens.passNumber();
        }
    }

    bool passString() {
        const char* const start = m_tokens.place();
        bool hasEscape = false;
        return m_tokens.passString(hasEscape) &&
               (m_keys == nullptr || !hasEscape ||
                !hasSurrogate({start, static_cast<std::size_t>(m_tokens.place() - start)}));
    }

    bool passObject(std::size_t depth, bool hasStep) {
        if (m_keys == nullptr) {
            return passMembers(depth, hasStep, nullptr);
        }
        KeySet keys(*m_keys);
        return passMembers(depth, hasStep, &keys) && keys.areDifferent();
    }

    bool passMembers(std::size_t depth, bool hasStep, KeySet* keys) {
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
            if (keys != nullptr && !keys->add({key + 1, length})) {
                return false;
            }
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
    KeySet::TKeys* const m_keys;  ///< null where keys may be repeated
    std::optional<std::string_view> m_found;
};

}  // namespace

std::optional<std::string_view> lookUp(std::string_view text, const std::vector<SStep>& steps) {
    return Lookup(text, steps, nullptr).run();
}

std::optional<std::string_view> lookUpStrictly(std::string_view text,
                                               const std::vector<SStep>& steps) {
    KeySet::TKeys keys;
    const auto found = Lookup(text, steps, &keys).run();
    return isUtf8(text) ? found : std::nullopt;
}

}  // namespace orvid_tool
