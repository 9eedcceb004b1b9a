// SPDX-License-Identifier: MIT
//
// Documents from text and files, and back. What would make a text that is no JSON is found before
// any of it is written.

#include <ko/Orvid/Array.h>
#include <ko/Orvid/Dom.h>
#include <ko/Orvid/DomParser.h>
#include <ko/Orvid/FileException.h>
#include <ko/Orvid/Generator.h>
#include <ko/Orvid/Object.h>
#include <ko/Orvid/SafeFile.h>

#include <filesystem>
#include <memory>
#include <optional>
#include <string_view>
#include <system_error>
#include <utility>
#include <vector>

#include "source/Source.h"
#include "tree/TreeEqual.h"

namespace ko::Orvid {

namespace {

constexpr const char* k_read = "read";
constexpr const char* k_write = "write";
constexpr const char* k_noRoot = "The document has no root";
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

std::string_view withoutDigits(std::string_view text) {
    const std::size_t end = text.find_first_not_of("0123456789");
    return text.substr(end == std::string_view::npos ? text.size() : end);
}

/// Takes one character of `any` away where the text begins with it.
bool skipOne(std::string_view& text, std::string_view any) {
    const bool found = !text.empty() && any.find(text.front()) != std::string_view::npos;
    text.remove_prefix(found ? 1 : 0);
    return found;
}

/// Takes digits away, at least one.
bool skipDigits(std::string_view& text) {
    const std::string_view rest = withoutDigits(text);
    const bool found = rest.size() < text.size();
    text = rest;
    return found;
}

bool isJsonNumber(std::string_view text) {
    skipOne(text, "-");
    const bool hasInteger = skipOne(text, "0") || skipDigits(text);
    const bool hasFraction = !skipOne(text, ".") || skipDigits(text);
    bool hasExponent = true;
    if (skipOne(text, "eE")) {
        skipOne(text, "+-");
        hasExponent = skipDigits(text);
    }
    return hasInteger && hasFraction && hasExponent && text.empty();
}

/// Why the value, its children left aside, makes no JSON; null when it does.
const char* faultOf(const Element& element) {
    if (element.isEmpty()) {
        return "The element has no value";
    }
    const bool isNoNumber = element.isNumber() && !isJsonNumber(element.number().toString());
    return isNoNumber ? "The number is none that JSON can express" : nullptr;
}

struct Fault {
    const char* text;
    const Element* element;
};

/// The first fault of the elements that the document writes.
std::optional<Fault> findFault(const Dom& dom) {
    std::vector<const Element*> open{dom.root()};
    while (!open.empty()) {
        const Element& element = *open.back();
        open.pop_back();
        if (const char* const fault = faultOf(element)) {
            return Fault{fault, &element};
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
    return std::nullopt;
}

void requireWritable(const Dom& dom, const std::string& file) {
    if (dom.root() == nullptr) {
        throw FileException(file, k_write, k_noRoot);
    }
    if (const std::optional<Fault> fault = findFault(dom)) {
        const Exception cause(fault->text, fault->element);
        throw FileException(file, k_write,
                            std::string(fault->text) + ", at \"" + fault->element->path() + "\"", 0,
                            &cause);
    }
}

std::string refusal(int state) {
    constexpr int tooDeep = 2;
    return state == tooDeep ? "Nested deeper than 127 levels"
                            : "A value was refused, with the state " + std::to_string(state);
}

std::string generated(const Dom& dom, const WriteOptions& options) {
    Generator generator(nullptr, options);
    std::string text = generator.encode(dom);
    if (generator.state() != 0) {
        throw Exception(refusal(generator.state()), dom.root());
    }
    return text;
}

std::string laidOut(const Dom& dom, const std::string& file, const WriteOptions& options) {
    Generator generator(nullptr, options);
    std::string text = generator.encode(dom);
    if (generator.state() != 0) {
        throw FileException(file, k_write, refusal(generator.state()));
    }
    return text;
}

/// Whether the file holds that text already. A file that cannot be read does not.
bool holds(const std::string& file, std::string_view text) {
    std::error_code error;
    const auto size = std::filesystem::file_size(file, error);
    if (error || size != text.size()) {
        return false;
    }
    try {
        return readFile(file) == text;
    } catch (const FileException&) {
        return false;
    }
}

}  // namespace

Dom Dom::read(std::string text, const ReadOptions& options, const std::string& file) {
    const bool hasMark =
        std::string_view(text).substr(0, k_byteOrderMark.size()) == k_byteOrderMark;
    const std::size_t begin = hasMark ? k_byteOrderMark.size() : 0;
    Dom dom;
    auto root = std::make_unique<Element>();
    dom.setRoot(*root, true);
    static_cast<void>(root.release());
    dom.setWriteMeta(true);
    DomParser parser(options);
    parser.parse(dom, std::string_view(text).substr(begin));
    dom.m_source = std::make_unique<const Source>(std::move(text), begin, *dom, options, file);
    return dom;
}

Dom Dom::parse(std::string_view text, const ReadOptions& options) {
    return read(std::string(text), options, {});
}

Dom Dom::load(const std::string& file, const ReadOptions& options) {
    try {
        return read(readFile(file), options, file);
    } catch (const ParseException& error) {
        throw FileException(file, k_read, reasonOf(error), 0, &error);
    }
}

std::string Dom::text() const {
    if (m_root == nullptr) {
        throw Exception(k_noRoot);
    }
    if (const std::optional<Fault> fault = findFault(*this)) {
        throw Exception(fault->text, fault->element);
    }
    return m_source ? sourceText() : generated(*this, WriteOptions());
}

/// A text of which no places are known was not a whole document. It stays while it says the same.
std::string Dom::sourceText() const {
    if (m_source->hasPlaces()) {
        return m_source->textOf(*m_root, m_writeMeta ? nullptr : &m_metaKey);
    }
    const Dom before = read(m_source->text(), m_source->options(), {});
    return treesEqual(*before, *m_root, ENumberRule::sameText) ? m_source->text()
                                                               : generated(*this, WriteOptions());
}

void Dom::save(const std::string& file) const {
    requireWritable(*this, file);
    const std::string content = m_source ? sourceText() : laidOut(*this, file, WriteOptions());
    if (!holds(file, content)) {
        replaceFile(file, content);
    }
}

void Dom::save(const std::string& file, const WriteOptions& options) const {
    requireWritable(*this, file);
    replaceFile(file, laidOut(*this, file, options));
}

}  // namespace ko::Orvid
