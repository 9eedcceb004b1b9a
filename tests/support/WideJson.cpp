// SPDX-License-Identifier: MIT
//
// The writers of wide documents.

#include "support/WideJson.h"

#include <vector>

namespace orvid_test {

std::string makeWideJson(const Choice& choose) {
    const std::vector<std::string> gaps{"\n", "\n  ",      "\r\n\t",      "\n\n  ",
                                        "  ", " /* c */ ", "\n // c\n  ", ""};
    const unsigned rarity = 1 + choose(80);
    const auto gap = [&] { return choose(rarity) == 0 ? gaps[choose(8)] : " "; };
    const auto item = [&](unsigned i) {
        switch (choose(6)) {
            case 0:
                return "{" + gap() + "\"a\":" + gap() + "[1,2,3,4]" + gap() + "}";
            case 1:
                return std::string("{ }");
            default:
                return std::to_string(i);
        }
    };
    std::string text = "[";
    for (unsigned i = 0, count = choose(100); i <= count; ++i) {
        text += (i == 0 ? "" : ",") + gap() + item(i);
    }
    text += gap() + "]";
    std::string object = "{";
    for (unsigned i = 0, count = choose(200); i <= count; ++i) {
        object += (i == 0 ? "" : ",") + gap() + "\"k" + std::to_string(i) + "\":" + gap() +
                  (i == 70 ? text : "1");
    }
    return object + gap() + "}";
}

std::string makeRows(const Choice& choose, bool isObject) {
    const std::vector<std::string> rows{"\n  ", "\n\t", "\r\n    ", "\n"};
    const std::vector<std::string> comments{"//\n", "// c\n  ", "/*\n*/", "/* c */",
                                            "/*/\n *//**/"};
    const auto comment = [&] { return choose(6) == 0 ? comments[choose(5)] : ""; };
    std::string text(1, isObject ? '{' : '[');
    for (unsigned i = 0, count = 3 + choose(isObject ? 150 : 30); i < count; ++i) {
        text += i == 0 ? "" : comment() + "," + comment();
        text += choose(12) == 0 ? rows[choose(4)] : "";
        text += (isObject ? "\"k" + std::to_string(i) + "\":" : "") + std::to_string(i);
    }
    return text + comment() + (isObject ? '}' : ']');
}

}  // namespace orvid_test
