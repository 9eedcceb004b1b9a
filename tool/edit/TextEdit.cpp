// SPDX-License-Identifier: MIT
//
// One pass through the text that copies token after token. A member or an item that the path wants
// and that is missing is written where its container ends.

#include "edit/TextEdit.h"

#include <utility>

#include "input/KeySet.h"
#include "input/Tokens.h"
#include "output/TextSink.h"

namespace orvid_tool {

namespace {

class Rewriting {
public:
    Rewriting(std::string_view text, const STextLayout& layout, const STextEdit* edit,
              TextSink& sink, KeySet::TKeys& keys)
        : m_tokens(text), m_layout(layout), m_edit(edit), m_sink(sink), m_keys(keys) {}

    bool run() {
        m_tokens.passBlanks();
        if (!copyValue(0, m_edit != nullptr)) {
            return false;
        }
        m_tokens.passBlanks();
        m_sink.put('\n');
        return m_tokens.isAtEnd() && (m_edit == nullptr || m_isMade);
    }

private:
    /// Whether the steps so far lead to the container that `depth` others hold, and which step is
    /// wanted of it then.
    const SStep* stepAt(std::size_t depth, bool isOnPath) const {
        return isOnPath && depth < m_edit->steps.size() ? &m_edit->steps[depth] : nullptr;
    }

    bool copyValue(std::size_t depth, bool isOnPath) {
        constexpr std::size_t deepest = 100;
        switch (m_tokens.byte()) {
            case '{':
                return depth < deepest && copyObject(depth, stepAt(depth, isOnPath));
            case '[':
                return depth < deepest && copyArray(depth, stepAt(depth, isOnPath));
            case '"':
                return copyString();
            case 'n':
            case 't':
            case 'f':
                return copyPassed(&Tokens::passWord);
            default:
                return copyPassed(&Tokens::passNumber);
        }
    }

    bool copyPassed(bool (Tokens::*pass)()) {
        const char* const start = m_tokens.place();
        const bool isPassed = (m_tokens.*pass)();
        m_sink.put(start, m_tokens.place());
        return isPassed;
    }

    bool copyString() {
        const char* const start = m_tokens.place();
        bool hasEscape = false;
        if (!m_tokens.passString(hasEscape)) {
            return false;
        }
        if (hasEscape) {
            return m_sink.putEscaped(start, m_tokens.place());
        }
        m_sink.put(start, m_tokens.place());
        return true;
    }

    bool copyObject(std::size_t depth, const SStep* step) {
        const bool isKeyWanted = step != nullptr && step->isKey;
        KeySet keys(m_keys);
        bool isFound = false;
        open('{');
        m_tokens.passBlanks();
        for (bool isFirst = true; m_tokens.byte() != '}'; isFirst = false) {
            if (!isFirst && !m_tokens.pass(',')) {
                return false;
            }
            m_tokens.passBlanks();
            std::string_view key;
            if (!copyKey(depth, isFirst, key) || !keys.add(key)) {
                return false;
            }
            const bool isStep = isKeyWanted && key == step->key;
            isFound = isFound || isStep;
            if (!copyChild(depth, isStep)) {
                return false;
            }
        }
        if (isKeyWanted && !isFound && !make(depth, keys.isEmpty())) {
            return false;
        }
        close(depth, '}');
        return keys.areDifferent();
    }

    bool copyArray(std::size_t depth, const SStep* step) {
        const bool isItemWanted = step != nullptr && !step->isKey;
        unsigned int count = 0;
        open('[');
        m_tokens.passBlanks();
        for (; m_tokens.byte() != ']'; ++count) {
            if (count > 0 && !m_tokens.pass(',')) {
                return false;
            }
            separate(depth, count == 0);
            if (!copyChild(depth, isItemWanted && count == step->index)) {
                return false;
            }
        }
        const bool isStar = isItemWanted && step->index == ko::Orvid::k_noIndex;
        if (isStar && !make(depth, count == 0)) {
            return false;
        }
        close(depth, ']');
        return true;
    }

    bool copyKey(std::size_t depth, bool isFirst, std::string_view& key) {
        const char* const start = m_tokens.place();
        bool hasEscape = false;
        if (m_tokens.byte() != '"' || !m_tokens.passString(hasEscape) || hasEscape) {
            return false;
        }
        const char* const end = m_tokens.place();
        key = std::string_view(start + 1, static_cast<std::size_t>(end - start) - 2);
        m_tokens.passBlanks();
        if (!m_tokens.pass(':') || (m_layout.dropsMeta && depth == 0 && key == "meta")) {
            return false;
        }
        separate(depth, isFirst);
        m_sink.put(start, end);
        colon();
        return true;
    }

    bool copyChild(std::size_t depth, bool isStep) {
        m_tokens.passBlanks();
        const std::size_t before = m_sink.length();
        bool isCopied = copyValue(depth + 1, isStep);
        if (isStep && isCopied && depth + 1 == m_edit->steps.size()) {
            m_sink.cut(before);
            isCopied = putValue(depth + 1);
        }
        m_tokens.passBlanks();
        return isCopied;
    }

    /// Writes the value of the edit below `depth` containers.
    bool putValue(std::size_t depth) {
        const std::string& text = m_edit->value;
        Tokens tokens(std::string_view(text).substr(0, text.length() - 1));
        std::swap(tokens, m_tokens);
        const bool isCopied = copyValue(depth, false);
        std::swap(tokens, m_tokens);
        m_isMade = true;
        return isCopied;
    }

    /// Writes the child that the step at `depth` wants, with all that is to be in it. Only members
    /// can be made below it.
    bool make(std::size_t depth, bool isFirst) {
        const std::vector<SStep>& steps = m_edit->steps;
        const std::size_t last = steps.size() - 1;
        for (std::size_t i = depth; i <= last; ++i) {
            if (!steps[i].isKey && i > depth) {
                return false;
            }
            separate(i, isFirst || i > depth);
            if (steps[i].isKey) {
                m_sink.putQuoted(steps[i].key);
                colon();
            }
            if (i < last) {
                open('{', false);
            }
        }
        if (!putValue(last + 1)) {
            return false;
        }
        for (std::size_t i = last; i > depth; --i) {
            close(i, '}', false);
        }
        return true;
    }

    void open(char bracket, bool isInText = true) {
        if (isInText) {
            m_tokens.passByte();
        }
        m_sink.put(bracket);
    }

    void close(std::size_t depth, char bracket, bool isInText = true) {
        if (isInText) {
            m_tokens.passByte();
        }
        if (m_sink.last() != (bracket == '}' ? '{' : '[')) {
            putMargin(depth);
        }
        m_sink.put(bracket);
    }

    void separate(std::size_t depth, bool isFirst) {
        if (!isFirst) {
            m_sink.put(',');
        }
        putMargin(depth + 1);
    }

    /// What stands before a token on a line of its own.
    void putMargin(std::size_t depth) {
        const std::string& indent = m_layout.indent;
        if (indent.empty()) {
            return;
        }
        const std::size_t length = 1 + depth * indent.length();
        while (m_margin.length() < length) {
            m_margin += indent;
        }
        m_sink.put(m_margin.data(), m_margin.data() + length);
    }

    void colon() {
        m_sink.put(':');
        if (!m_layout.indent.empty()) {
            m_sink.put(' ');
        }
    }

    Tokens m_tokens;
    const STextLayout& m_layout;
    const STextEdit* m_edit;
    TextSink& m_sink;
    std::string m_margin = "\n";  ///< of the deepest level so far
    KeySet::TKeys& m_keys;
    bool m_isMade = false;
};

}  // namespace

bool rewrite(std::string_view text, const STextLayout& layout, const STextEdit* edit, Bytes& out) {
    static thread_local KeySet::TKeys keys;  // one list serves a million lines
    TextSink sink(out);
    return Rewriting(text, layout, edit, sink, keys).run();
}

}  // namespace orvid_tool
