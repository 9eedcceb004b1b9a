// SPDX-License-Identifier: MIT
//
// Recipes: text to values.

#include "recipe.h"

#include <ko/Orvid.h>

#include <chrono>
#include <iostream>
#include <map>
#include <optional>
#include <sstream>

using namespace ko::Orvid;

struct Point {
    double x;
    double y;
    std::optional<std::string> label;
};
ORVID_FIELDS(Point, x, y, label)

enum class Level { low, high };
ORVID_NAMES(Level, {{Level::low, "low"}, {Level::high, "high"}})

namespace geometry {

struct Angle {
    double degrees;
};

void fromElement(const Element& element, Angle& angle) {
    angle.degrees = element.get("deg").to<double>();
}
void toElement(Element& element, const Angle& angle) {
    element = makeObject({{"deg", angle.degrees}});
}

}  // namespace geometry

namespace cookbook {

namespace {

void readText() {
    const std::string text = R"({"host": "alpha", "port": 8O})";
    try {
        const Element root = parse(text);
    } catch (const ParseException& error) {
        std::cout << error.firstLine() << ":" << error.firstColumn() << ": " << error.message()
                  << "\n"
                  << sourceExcerpt(text, error);
    }
}

void readComments() {
    const Element root = parse("{ // a comment\n \"a\": [1, 2,], }", ReadOptions::jsonc());
    std::cout << serialize(root) << "\n";
}

void limitInput() {
    ReadOptions options = ReadOptions::strict();
    options.maxDepth = 3;
    options.maxLength = 1'000'000;
    try {
        parse("[[[[]]]]", options);
    } catch (const ParseException& error) {
        std::cout << error.message() << "\n";
    }
}

void readRecords() {
    std::istringstream in("{\"id\": 1}\n{\"id\": \n{\"id\": 3}\n");
    JsonLines lines(in);
    for (bool isMore = true; isMore;) {
        try {
            for (const Element& record : lines) {
                std::cout << lines.number() << ": " << record.get("id").to<int>() << "\n";
            }
            isMore = false;
        } catch (const ParseException& error) {
            std::cout << lines.number() << ": skipped, " << error.message() << "\n";
        }
    }
}

void readPieces() {
    Element root;
    DomParser parser(ReadOptions::strict());
    parser.begin(root);
    for (const char* const piece : {"{\"na", "me\": \"caf\xC3", "\xA9\"}"}) {
        parser.feed(piece);
    }
    parser.finish();
    std::cout << serialize(root) << "\n";
}

void readWithFallback() {
    const Element root = parse(R"({"log": {"level": "warn"}})");
    const auto level = root.toOr<std::string>("log.level", "info");
    const int lines = root.toOr("log.lines", 100);
    std::cout << level << " " << lines << "\n";
}

void readContainers() {
    const Element root = parse(R"({"sizes": [3, 5], "ports": {"http": 80, "https": 443}})");
    const auto sizes = root.get("sizes").to<std::vector<int>>();
    const auto ports = root.get("ports").to<std::map<std::string, int>>();
    std::cout << sizes.size() << " " << ports.at("https") << "\n";
}

void readStruct() {
    const auto points = parse(R"([{"x": 1, "y": 2.5}, {"x": 0, "y": 0, "label": "origin"}])")
                            .to<std::vector<Point>>();
    for (const Point& point : points) {
        std::cout << point.x << " " << point.y << " " << point.label.value_or("-") << "\n";
    }
}

void readEnumeration() {
    const auto level = parse(R"("high")").to<Level>();
    std::cout << (level == Level::high) << " " << serialize(Element::from(Level::low)) << "\n";
}

void readWithFunctions() {
    const auto angle = parse(R"({"deg": 90})").to<geometry::Angle>();
    std::cout << angle.degrees << " " << serialize(Element::from(geometry::Angle{45.5})) << "\n";
}

void readDuration() {
    const Element root = parse(R"({"timeout": 250})");
    const auto timeout = root.get("timeout").to<std::chrono::milliseconds>();
    std::cout << timeout.count() << " ms\n";
}

}  // namespace

std::vector<Recipe> reading() {
    return {
        {"Read a text and show where it is wrong", readText},
        {"Read JSON with comments and trailing commas", readComments},
        {"Limit what strangers may send", limitInput},
        {"Read one document a line and skip malformed lines", readRecords},
        {"Read a document that arrives in pieces", readPieces},
        {"Read a value, or a fallback where there is none", readWithFallback},
        {"Read arrays and objects into containers", readContainers},
        {"Read objects into a struct", readStruct},
        {"Read an enumeration from strings", readEnumeration},
        {"Convert a type with functions of your own", readWithFunctions},
        {"Read a duration", readDuration},
    };
}

}  // namespace cookbook
