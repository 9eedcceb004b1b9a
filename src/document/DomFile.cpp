// SPDX-License-Identifier: MIT
//
// Documents from files and into files. What would make a file that is no JSON is found before the
// file is touched.

#include <ko/Orvid/Array.h>
#include <ko/Orvid/Dom.h>
#include <ko/Orvid/DomParser.h>
#include <ko/Orvid/FileException.h>
#include <ko/Orvid/Generator.h>
#include <ko/Orvid/Object.h>
#include <ko/Orvid/SafeFile.h>

#include <memory>
#include <string_view>
#include <vector>

#include "text/NumberText.h"

namespace ko::Orvid {

namespace {

constexpr const char* k_read = "read";
constexpr const char* k_write = "write";
constexpr std::string_view k_byteOrderMark = "\xEF\xBB\xBF";

/// The first line of the message, behind its place where that is known.
std::string reasonOf(const ParseException& error) {
    std::string place;
    if (error.firstLine() >= 0) {
        place = "line " + std::to_string(error.firstLine()) + ", column " +
                std::to_string(error.firstColumn()) + ": ";
    }
    return place + error.message().substr(0, error.message().find('\n'));
}

/// Why the value, its children left aside, makes no JSON; null when it does.
const char* faultOf(const Element& element) {
    if (element.isEmpty()) {
        return "The element has no value";
    }
    const bool isNoNumber = element.isNumber() && !text::isNumber(element.number().toString());
    return isNoNumber ? "The number is none that JSON can express" : nullptr;
}

/// Looks at all elements that the document writes.
void checkValues(const Dom& dom, const std::string& file) {
    std::vector<const Element*> open{dom.root()};
    while (!open.empty()) {
        const Element& element = *open.back();
        open.pop_back();
        if (const char* const fault = faultOf(element)) {
            const Exception cause(fault, &element);
            throw FileException(file, k_write,
                                std::string(fault) + ", at \"" + element.path() + "\"", 0, &cause);
        }
        if (element.isObject()) {
            const bool leavesOut = &element == dom.root() && !dom.writeMeta();
            for (const auto& [key, value] : element.object()) {
                if (!leavesOut || key != dom.metaKey()) {
                    open.push_back(&value);
                }
            }
        } else if (element.isArray()) {
            for (const Element& item : element.array()) {
                open.push_back(&item);
            }
        }
    }
}

std::string refusal(int state) {
    constexpr int tooDeep = 2;
    return state == tooDeep ? "Nested deeper than 127 levels"
                            : "A value was refused, with the state " + std::to_string(state);
}

}  // namespace

Dom Dom::load(const std::string& file, const ReadOptions& options) {
    std::string text = readFile(file);
    if (std::string_view(text).substr(0, k_byteOrderMark.size()) == k_byteOrderMark) {
        text.erase(0, k_byteOrderMark.size());
    }
    Dom dom;
    auto root = std::make_unique<Element>();
    dom.setRoot(*root, true);
    static_cast<void>(root.release());
    dom.setWriteMeta(true);
    try {
        DomParser(options).parse(dom, text);
    } catch (const ParseException& error) {
        throw FileException(file, k_read, reasonOf(error), 0, &error);
    }
    return dom;
}

void Dom::save(const std::string& file, const WriteOptions& options) const {
    if (m_root == nullptr) {
        throw FileException(file, k_write, "The document has no root");
    }
    checkValues(*this, file);
    Generator generator(nullptr, options);
    const std::string text = generator.encode(*this);
    if (generator.state() != 0) {
        throw FileException(file, k_write, refusal(generator.state()));
    }
    replaceFile(file, text);
}

}  // namespace ko::Orvid
