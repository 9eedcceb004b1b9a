// SPDX-License-Identifier: MIT
//
// What the literals stand for.

#include <ko/Orvid/literals.h>

#include <ko/Orvid/DomParser.h>
#include <ko/Orvid/PathParser.h>
#include <ko/Orvid/ReadOptions.h>

#include <string_view>

namespace ko::Orvid {

namespace {

/// Takes every step; an error throws already.
class PathCheck : public PathParserListener {
public:
    bool cbObjectProperty(const std::string& /*key*/) override { return true; }
    bool cbArrayItem(unsigned int /*index*/) override { return true; }
};

}  // namespace

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
    PathCheck check;
    PathParser(&check).parse(std::string_view(text, length));
    return Path(std::string_view(text, length));
}

}  // namespace literals

}  // namespace ko::Orvid
