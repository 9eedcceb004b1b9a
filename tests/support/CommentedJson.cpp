// SPDX-License-Identifier: MIT
//
// The writer of commented documents.

#include "support/CommentedJson.h"

#include <cstdlib>

namespace orvid_test {

namespace {

constexpr unsigned k_deepest = 3;

class Writer {
public:
    explicit Writer(const Choice& choose)
        : m_choose(choose),
          m_newline(choose(3) == 0 ? "\r\n" : "\n"),
          m_indent(std::vector<std::string>{"  ", "\t", "    ", " "}[choose(4)]),
          m_colon(std::vector<std::string>{": ", ":", " : ", ":  "}[choose(4)]),
          m_hasTrailingCommas(choose(2) == 0),
          m_mixesNewlines(choose(8) == 0),
          m_commentRarity(choose(4) == 0 ? 100 : 2 + choose(6)) {}

    CommentedJson run() {
        if (m_choose(5) == 0) {
            m_result.text = "\xEF\xBB\xBF";
        }
        while (rarely()) {
            put(comment());
            newline(0);
        }
        value(0, false);
        while (rarely()) {
            newline(0);
            put(comment());
        }
        if (m_choose(2) == 0) {
            put(m_newline);
        }
        return std::move(m_result);
    }

private:
    bool rarely() { return m_choose(m_commentRarity) == 0; }

    void put(const std::string& text) { m_result.text += text; }

    void newline(unsigned depth) {
        if (m_mixesNewlines && m_choose(2) == 0) {
            m_newline = m_newline == "\n" ? "\r\n" : "\n";
        }
        put(m_choose(12) == 0 ? " " + m_newline : m_newline);
        for (unsigned i = 0; i < depth; ++i) {
            put(m_indent);
        }
    }

    int number() {
        const int number = m_result.comments++;
        for (const std::size_t owner : m_owners) {
            m_result.values[owner].comments.insert(number);
        }
        return number;
    }

    std::string block() { return "/*#" + std::to_string(number()) + "; , : \" { */"; }
    /// A block comment, or one up to the end of the line, which must follow.
    std::string comment() {
        return m_choose(2) == 0 ? block() : "//#" + std::to_string(number()) + "; , \" ] */";
    }

    void scalar() {
        static const std::vector<std::string> tokens = {"1",           "2.0",
                                                        "1E3",         "-0",
                                                        "true",        "false",
                                                        "null",        "\"\"",
                                                        "\"a\"",       "\"\\/\"",
                                                        "\"\\u00e9\"", "\"x\\ny\"",
                                                        "0.10",        "12345678901234567890123",
                                                        "\"// no\"",   "\"\\ud83d\\ude00\"",
                                                        "7",           "8",
                                                        "\"b\"",       "\"c d\""};
        put(tokens[m_choose(static_cast<unsigned>(tokens.size()))]);
    }

    void value(unsigned depth, bool isOnLine) {
        const unsigned kind = depth == 0 ? m_choose(2) : m_choose(6);
        if (depth > k_deepest || kind > 1) {
            scalar();
        } else if (isOnLine || m_choose(3) == 0) {
            lineContainer(depth, kind == 0);
        } else {
            linesContainer(depth, kind == 0);
        }
    }

    void beginChild(bool isObject, unsigned index) {
        CommentedValue child;
        child.pointer = m_pointer;
        child.pointer.push_back(isObject ? "k" + std::to_string(index) : std::to_string(index));
        m_pointer = child.pointer;
        m_owners.push_back(m_result.values.size());
        m_result.values.push_back(child);
    }

    void endChild() {
        m_pointer.pop_back();
        m_owners.pop_back();
    }

    void keyAndValue(unsigned depth, bool isObject, bool isOnLine) {
        if (isObject) {
            put("\"" + m_pointer.back() + "\"");
            if (rarely()) {
                put(" " + block() + m_colon + block() + " ");
            } else {
                put(m_colon);
            }
        }
        value(depth, isOnLine);
    }

    void lineContainer(unsigned depth, bool isObject) {
        const unsigned count = m_choose(4);
        const std::string pad = m_choose(3) == 0 ? " " : "";
        put(isObject ? "{" : "[");
        put(pad);
        for (unsigned i = 0; i < count; ++i) {
            beginChild(isObject, i);
            if (rarely()) {
                put(block() + " ");
            }
            keyAndValue(depth + 1, isObject, true);
            if (rarely()) {
                put(" " + block());
            }
            endChild();
            if (i + 1 < count || (m_hasTrailingCommas && m_choose(4) == 0)) {
                put(i + 1 < count ? ", " : ",");
            }
        }
        if (count == 0 && rarely()) {
            put(block());
        }
        put(pad);
        put(isObject ? "}" : "]");
    }

    /// Comment lines that belong to no child, with a blank line after them.
    void freeLines(unsigned depth) {
        while (rarely()) {
            newline(depth);
            put(comment());
            newline(0);
        }
    }

    void linesContainer(unsigned depth, bool isObject) {
        const unsigned count = m_choose(5);
        put(isObject ? "{" : "[");
        if (rarely()) {
            put(" " + comment());
        }
        for (unsigned i = 0; i < count; ++i) {
            if (m_choose(6) == 0) {
                newline(0);
            }
            freeLines(depth + 1);
            beginChild(isObject, i);
            while (rarely()) {
                newline(depth + 1);
                put(comment());
            }
            newline(depth + 1);
            if (rarely()) {
                put(block() + " ");
            }
            keyAndValue(depth + 1, isObject, false);
            const std::string before = rarely() ? " " + block() : "";
            put(before);
            if (i + 1 < count || m_hasTrailingCommas) {
                put(",");
            }
            if (rarely()) {
                put(" " + comment());
            }
            endChild();
        }
        if (rarely()) {
            if (count > 0) {
                newline(0);
            }
            newline(depth + 1);
            put(comment());
        }
        newline(depth);
        put(isObject ? "}" : "]");
    }

    const Choice& m_choose;
    std::string m_newline;
    const std::string m_indent;
    const std::string m_colon;
    const bool m_hasTrailingCommas;
    const bool m_mixesNewlines;
    const unsigned m_commentRarity;
    CommentedJson m_result;
    std::vector<std::string> m_pointer;
    std::vector<std::size_t> m_owners;
};

}  // namespace

std::vector<int> CommentedJson::commentsIn(const std::string& text) {
    std::vector<int> numbers;
    for (std::size_t at = text.find("#"); at != std::string::npos; at = text.find("#", at + 1)) {
        numbers.push_back(static_cast<int>(std::strtol(text.c_str() + at + 1, nullptr, 10)));
    }
    return numbers;
}

CommentedJson makeCommentedJson(const Choice& choose) { return Writer(choose).run(); }

}  // namespace orvid_test
