// SPDX-License-Identifier: MIT
//
// The writer of scattered documents.

#include "support/ScatteredJson.h"

#include <cstddef>
#include <iterator>

namespace orvid_test {

namespace {

class Scatter {
public:
    explicit Scatter(const Choice& choose)
        : m_choose(choose), m_rarity(1 + choose(5)), m_commaRarity(1 + choose(4)) {}

    std::string run() {
        if (m_choose(6) == 0) {
            m_text = "\xEF\xBB\xBF";
        }
        gap();
        value(0);
        gap();
        return std::move(m_text);
    }

private:
    void gap() {
        while (m_choose(m_rarity + 1) == 0) {
            piece();
        }
    }

    void piece() {
        static const char* const spaces[] = {" ", "\t", "\n", "\r\n", "\n\n", "  ", "\r", " \n  "};
        const unsigned kind = m_choose(12);
        if (kind < std::size(spaces)) {
            m_text += spaces[kind];
            return;
        }
        const std::string number = "#" + std::to_string(m_comments++) + ";";
        static const char* const ends[] = {" , } \"*/", "*/", "\n ]*/", "\r\n*/"};
        m_text += kind < 10 ? "/*" + number + ends[m_choose(4)]
                            : "//" + number + (m_choose(3) == 0 ? " \"\r\n" : "\n");
    }

    void value(unsigned depth) {
        constexpr unsigned deepest = 4;
        const unsigned kind = m_choose(depth == 0 ? 2 : 5);
        if (kind > 1 || depth > deepest) {
            scalar();
        } else {
            container(depth, kind == 0);
        }
    }

    void scalar() {
        static const char* const tokens[] = {"1",
                                             "2.0",
                                             "1E3",
                                             "-0",
                                             "true",
                                             "false",
                                             "null",
                                             "\"\"",
                                             "\"\\/\"",
                                             "\"\\u00e9\"",
                                             "0.10",
                                             "\"//\"",
                                             "\"\\ud83d\\ude00\"",
                                             "[]",
                                             "{}",
                                             "\"a\"",
                                             "\"/*\"",
                                             "-1e-2",
                                             "77",
                                             "\"c d\""};
        m_text += tokens[m_choose(static_cast<unsigned>(std::size(tokens)))];
    }

    void container(unsigned depth, bool isObject) {
        const unsigned count = m_choose(5);
        m_text += isObject ? '{' : '[';
        for (unsigned i = 0; i < count; ++i) {
            gap();
            if (isObject) {
                key(i);
            }
            value(depth + 1);
            gap();
            if (i + 1 < count || m_choose(m_commaRarity) == 0) {
                m_text += ',';
            }
        }
        gap();
        m_text += isObject ? '}' : ']';
    }

    void key(unsigned index) {
        m_text += (m_choose(8) == 0 ? "\"\\u006b" : "\"k") + std::to_string(index) + "\"";
        gap();
        m_text += ':';
        gap();
    }

    const Choice& m_choose;
    const unsigned m_rarity;
    const unsigned m_commaRarity;
    std::string m_text;
    int m_comments = 0;
};

}  // namespace

std::string makeScatteredJson(const Choice& choose) { return Scatter(choose).run(); }

}  // namespace orvid_test
