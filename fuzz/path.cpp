// SPDX-License-Identifier: MIT
//
// Path text: parsing, writing the steps and parsing again gives the same steps, from text and from
// a stream; the schema path of a path leads back to it, less its indexes.

#include <ko/Orvid.h>
#include <ko/Orvid/PathGenerator.h>
#include <ko/Orvid/PathParser.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <sstream>
#include <string>
#include <vector>

#include "require.h"

namespace {

using ko::Orvid::Element;
using ko::Orvid::Exception;
using ko::Orvid::ParseException;
using ko::Orvid::Path;
using ko::Orvid::PathGenerator;
using ko::Orvid::PathParser;
using orvid_fuzz::require;
using orvid_fuzz::throws;

struct Step {
    bool isItem;
    std::string key;
    unsigned int index;

    friend bool operator==(const Step& a, const Step& b) {
        return a.isItem == b.isItem && a.key == b.key && a.index == b.index;
    }
};

/// Keeps the steps; goes on after an error as often as it is asked to.
class Steps : public ko::Orvid::PathParserListener {
public:
    explicit Steps(std::size_t errorsToSkip = 0) : m_errorsToSkip(errorsToSkip) {}

    std::vector<Step> list;
    std::string errors;

    bool cbObjectProperty(const std::string& key) override {
        list.push_back({false, key, 0});
        return true;
    }
    bool cbArrayItem(unsigned int index) override {
        list.push_back({true, std::string(), index});
        return true;
    }
    bool cbParseError(const std::string& message, const std::string& token, unsigned int start,
                      unsigned int end) override {
        require(start <= end, "an error ends after its start");
        errors += message + '\n' + token + '\n';
        return m_errorsToSkip-- > 0;
    }

private:
    std::size_t m_errorsToSkip;
};

void compareWithStream(const std::string& text, const Steps& fromText, std::size_t errorsToSkip) {
    Steps fromStream(errorsToSkip);
    std::istringstream in(text);
    PathParser(&fromStream).parse(in);
    require(fromText.list == fromStream.list, "a stream gives the steps of the text");
    require(fromText.errors == fromStream.errors, "a stream gives the errors of the text");
}

/// Whether the byte is there that ends a path, or a key, wherever it stands without a backslash.
bool hasEndByte(const std::string& text) { return text.find('\xFF') != std::string::npos; }

bool isExpressible(const std::vector<Step>& steps) {
    return std::none_of(steps.begin(), steps.end(),
                        [](const Step& step) { return hasEndByte(step.key); });
}

std::string generated(const std::vector<Step>& steps) {
    std::ostringstream out;
    PathGenerator generator(out);
    for (const Step& step : steps) {
        step.isItem ? generator.genListItem(step.index) : generator.genObjectProperty(step.key);
    }
    return out.str();
}

std::vector<Step> parsed(const std::string& text) {
    Steps steps;
    PathParser(&steps).parse(text);
    require(steps.errors.empty(), "a written path has no error");
    return steps.list;
}

void checkSchemaPath(const std::string& text, std::vector<Step> steps) {
    for (Step& step : steps) {
        step.index = step.isItem ? Path::k_noIndex : 0;
    }
    const Path schemaPath = Path::toSchemaPath(text);
    require(parsed(Path::fromSchemaPath(schemaPath).str()) == steps,
            "the schema path of a path leads back to it");
}

void checkAsSchemaPath(const std::string& text) {
    try {
        const Path data = Path::fromSchemaPath(text);
        require(hasEndByte(data.str()) || Path::fromSchemaPath(Path::toSchemaPath(data)) == data,
                "the data path of a schema path leads to that and back");
    } catch (const ParseException&) {
        return;
    }
}

/// The tree that a path makes out of nothing holds the path.
void checkCreation(const std::string& text, const std::vector<Step>& steps) {
    Element root = Element::k_emptyElement;
    bool isMade = true;
    for (const Step& step : steps) {
        isMade = isMade && (!step.isItem || step.index == Path::k_noIndex);
    }
    const bool isRefused = throws<Exception>([&] { root.create(text, Element(true)); });
    require(isMade != isRefused, "a path without indexes is made, another is not");
    if (isMade && isExpressible(steps)) {
        Element* element = &root;
        for (const Step& step : steps) {
            element =
                step.isItem ? &element->array().front() : &element->object().find(step.key)->second;
        }
        require(element->isBoolean(), "the value is at the end of the path");
        require(&root.get(element->path()) == element, "the path of an element leads to it");
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    const std::string text(bytes, bytes + size);
    const std::size_t errorsToSkip = size % 3;
    Steps steps(errorsToSkip);
    PathParser(&steps).parse(text);
    compareWithStream(text, steps, errorsToSkip);
    checkAsSchemaPath(text);
    const bool isMalformed = !steps.errors.empty();
    require(isMalformed == throws<ParseException>([&] { Path::toSchemaPath(text); }),
            "a schema path can be had of every path without an error");
    if (isMalformed) {
        return 0;
    }
    checkCreation(text, steps.list);
    if (isExpressible(steps.list)) {
        require(parsed(generated(steps.list)) == steps.list, "a written path has the same steps");
        checkSchemaPath(text, steps.list);
    }
    return 0;
}
