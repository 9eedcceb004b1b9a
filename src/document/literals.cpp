// SPDX-License-Identifier: MIT
//
// What the literals stand for.

#include <ko/Orvid/literals.h>

#include <ko/Orvid/DomParser.h>
#include <ko/Orvid/ReadOptions.h>

#include <string_view>

namespace ko::Orvid {

inline namespace literals {

Element operator""_json(const char* text, std::size_t length) {
    Element element;
    DomParser parser(ReadOptions::strict());
    parser.begin(element);
    parser.feed({text, length});
    parser.finish();
    return element;
}

Path operator""_path(const char* text, std::size_t length) {
    Path path(std::string_view(text, length));
    static_cast<void>(path.steps());  // which throws for a malformed one
    return path;
}

}  // namespace literals

}  // namespace ko::Orvid
