// SPDX-License-Identifier: MIT
//
// Paths of a call made paths of the library, with the document at hand.

#include "input/CallPath.h"

#include <algorithm>
#include <sstream>

#include "input/Document.h"
#include "input/PathSteps.h"
#include "input/withPath.h"
#include "output/shellWord.h"

namespace orvid_tool {

namespace {

using ko::Orvid::Element;
using ko::Orvid::JsonPointer;
using ko::Orvid::Path;
using ko::Orvid::PathNotFound;

constexpr std::size_t k_none = std::string::npos;

/// A step `[-N]` within a path.
struct Negative {
    std::size_t start = k_none;  ///< of its bracket
    std::size_t end = k_none;    ///< after its bracket
    std::size_t count = 0;       ///< from the end, 1 is the last item; 0 where N is too great
};

/// Throws Failure for a number that begins with a zero.
Negative negativeAt(const std::string& text, std::size_t start) {
    constexpr std::size_t mostDigits = 9;
    const std::size_t digits = start + 2;
    const std::size_t end = text.find_first_not_of("0123456789", digits);
    if (text.compare(start, 2, "[-") != 0 || end == k_none || end == digits || text[end] != ']') {
        return {};
    }
    const std::string number = text.substr(digits, end - digits);
    if (number.length() > 1 && number.front() == '0') {
        throw Failure(ExitStatus::usage,
                      "path \"" + text + "\": [-" + number + "] has a zero before its number");
    }
    return {start, end + 1, number.length() <= mostDigits ? std::stoul(number) : 0};
}

/// The first from the offset, which is between two steps, on.
Negative firstNegative(const std::string& text, std::size_t from = 0) {
    for (std::size_t i = from; i < text.length(); i += text[i] == '\\' ? 2U : 1U) {
        const Negative step = text[i] == '[' ? negativeAt(text, i) : Negative();
        if (step.start != k_none) {
            return step;
        }
    }
    return {};
}

/// The path with each negative index made 0, and of the same length.
std::string withoutNegatives(std::string path) {
    for (Negative step = firstNegative(path); step.start != k_none; step = firstNegative(path)) {
        path.replace(step.start + 1, step.end - step.start - 2, step.end - step.start - 2, '0');
    }
    return path;
}

/// A path with a negative index is another one in each document, so its errors are found, and shown
/// as it was typed, before that. Throws Failure.
void requireWellFormed(const std::string& word) {
    refuseMisleading(word);
    try {
        static_cast<void>(Path(withoutNegatives(word)).steps());
    } catch (const ko::Orvid::ParseException& error) {
        throw malformedPath(word, error);
    }
}

/// The element at the first `end` bytes of the path, of which the first `from` lead to `holder`.
/// Throws what Element::get() throws for all of them, and Failure where they are malformed.
const Element& elementBefore(const Element& root, const Element& holder, const std::string& path,
                             std::size_t from, std::size_t end) {
    const Element* const plain =
        Path::plainElement(std::string_view(path).substr(from, end - from), holder);
    if (plain != nullptr) {
        return *plain;
    }
    return withPath(path.substr(0, end),
                    [&root](const Path& before) { return std::cref(root.get(before)); });
}

std::size_t indexOf(const Negative& step, const Element& array, const std::string& word,
                    const std::string& text) {
    if (!array.isArray() || step.count == 0 || step.count > array.size()) {
        throw PathNotFound(&array, word, text.substr(step.start, step.end - step.start));
    }
    return array.size() - step.count;
}

JsonPointer pointerOf(const std::string& word) {
    try {
        return JsonPointer(word);
    } catch (const ko::Orvid::ParseException& error) {
        throw malformedPath(word, error);
    }
}

/// The text as a key of a path, which is not taken for the `$` of a query.
std::string keyText(const std::string& key) {
    std::ostringstream text;
    ko::Orvid::PathGenerator(text).genObjectProperty(key);
    return key == "$" ? "\\$" : text.str();
}

/// The text of a word that is a JSON string, and any other word as it is.
std::string withoutQuotes(const std::string& word) {
    if (word.rfind('"', 0) != 0) {
        return word;
    }
    try {
        Element text;
        readArgument("PATH", word, text);
        return text.string();
    } catch (const Failure&) {
        return word;
    }
}

/// A pointer as it stands in an address.
void refuseFragment(const std::string& word) {
    if (word.rfind("#/", 0) == 0) {
        throw Failure(ExitStatus::usage, "path \"" + word + "\": a JSON Pointer has no #, write " +
                                             shellWord(word.substr(1)) +
                                             "; a key that begins so is written \\#/");
    }
}

/// Throws PathNotFound where the pointer has a step into an array that is no index.
void requireIndices(const JsonPointer& pointer, const Element& root) {
    const Element* holder = &root;
    for (const std::string& step : pointer.steps()) {
        if (holder->isArray() && step != "-" && !isIndex(step)) {
            throw PathNotFound(holder, pointer.str(), step);
        }
        JsonPointer next;
        next.push_back(step);
        holder = next.find(*holder);
        if (holder == nullptr) {
            return;
        }
    }
}

}  // namespace

CallPath::CallPath(const std::string& word) : m_word(withoutQuotes(word)) {
    refuseFragment(m_word);
    if (!m_word.empty() && m_word.front() == '/') {
        m_pointer = pointerOf(m_word);
    } else {
        m_hasNegative = firstNegative(m_word).start != k_none;
    }
    if (m_hasNegative) {
        requireWellFormed(m_word);
    }
}

std::string CallPath::in(const Element& root) const {
    if (m_pointer) {
        requireIndices(*m_pointer, root);
        try {
            return m_pointer->toPath(root).str();
        } catch (const ko::Exception&) {
            throw Failure(ExitStatus::usage, "pointer \"" + m_word +
                                                 "\": a place with an empty key can be set, but "
                                                 "not inserted or moved to");
        }
    }
    std::string path = m_word;
    const Element* holder = &root;
    std::size_t from = 0;
    for (Negative step = firstNegative(path); step.start != k_none;
         step = firstNegative(path, from)) {
        const Element& array = elementBefore(root, *holder, path, from, step.start);
        const std::size_t index = indexOf(step, array, m_word, path);
        const std::string plain = "[" + std::to_string(index) + "]";
        path.replace(step.start, step.end - step.start, plain);
        holder = array.item(index);
        from = step.start + plain.length();
    }
    return path;
}

std::optional<std::string> CallPath::withCounts(const ItemCount& itemsAt) const {
    std::string path = m_word;
    for (Negative step = firstNegative(path); step.start != k_none; step = firstNegative(path)) {
        const std::optional<std::size_t> count = itemsAt(path.substr(0, step.start));
        if (!count || step.count == 0 || step.count > *count) {
            return std::nullopt;
        }
        path.replace(step.start, step.end - step.start,
                     "[" + std::to_string(*count - step.count) + "]");
    }
    return path;
}

std::string CallPath::pathIn(const Element& root) const {
    const bool isQuery = m_word == "$" || m_word.rfind("$.", 0) == 0 || m_word.rfind("$[", 0) == 0;
    if (isQuery && !(root.isObject() && root.object().contains("$"))) {
        const std::string rest = m_word.substr(m_word.substr(1, 1) == "." ? 2 : 1);
        throw Failure(ExitStatus::usage, "path \"" + m_word + "\": a path has no $, write " +
                                             shellWord(rest) + "; the key \"" + m_word +
                                             "\" is written " + shellWord(keyText(m_word)));
    }
    return in(root);
}

const JsonPointer* CallPath::onlyPointer() const {
    const bool isOnly = m_pointer && std::find(m_pointer->steps().begin(), m_pointer->steps().end(),
                                               "") != m_pointer->steps().end();
    return isOnly ? &*m_pointer : nullptr;
}

const Element& CallPath::get(const Element& root) const {
    if (m_pointer) {
        return m_pointer->get(root);
    }
    try {
        return withPath(in(root), [&](const Path& path) { return std::cref(root.get(path)); });
    } catch (const PathNotFound& error) {
        if (!m_hasNegative || error.path() == m_word || error.elementPath() == nullptr) {
            throw;
        }
        throw PathNotFound(&root.get(*error.elementPath()), m_word, error.key());
    }
}

Element& CallPath::get(Element& root) const {
    return const_cast<Element&>(get(const_cast<const Element&>(root)));
}

void CallPath::requireLookup() const {
    if (m_pointer) {
        return;
    }
    for (const ValueStep& step : stepsOf(withoutNegatives(m_word))) {
        if (!step.isKey && step.index == ko::Orvid::k_noIndex) {
            throw malformedPath(m_word, ko::Orvid::ParseException("", -1, -1, -1, -1)
                                            .withCode(ko::Orvid::ParseErrorCode::pathNoIndex));
        }
    }
}

const Element* CallPath::find(const Element& root) const {
    try {
        return &get(root);
    } catch (const PathNotFound&) {
        return nullptr;
    }
}

}  // namespace orvid_tool
