// SPDX-License-Identifier: MIT
//
// The search for what is no JSON. A parent link leads back from the last child of a container, so
// the walk keeps nothing but the iterators of the containers that are open.

#include "document/WriteError.h"

#include <ko/Orvid/Array.h>
#include <ko/Orvid/Element.h>
#include <ko/Orvid/Object.h>
#include <ko/Orvid/WriteOptions.h>

#include <string>
#include <vector>

#include "text/NumberText.h"
#include "text/StringText.h"

namespace ko::Orvid {

namespace {

/// A container that is open, and what of it comes next.
struct Level {
    const Element::TObject* object = nullptr;
    const Element::TArray* array = nullptr;
    Element::TObject::const_iterator member;
    Element::TArray::const_iterator item;
};

class Search {
public:
    Search(const WriteOptions& options, const std::string* leftOut)
        : m_allowInvalidUtf8(options.allowInvalidUtf8), m_leftOut(leftOut) {}

    std::optional<WriteError> run(const Element& root) {
        const Element* element = &root;
        while (element != nullptr) {
            const char* error = writeErrorOf(*element);
            if (error == nullptr && element != &root && !isText(element->memberKey())) {
                error = "The key is no valid UTF-8";
            }
            if (error != nullptr) {
                return WriteError{error, element};
            }
            open(*element);
            element = next();
        }
        return std::nullopt;
    }

private:
    /// Why the value, its children left aside, makes no JSON; null when it does.
    const char* writeErrorOf(const Element& element) const {
        if (element.isEmpty()) {
            return "The element has no value";
        }
        NumberBuffer buffer;
        if (element.isNumber() && !text::isNumber(element.number().textIn(buffer))) {
            return "The number is none that JSON can express";
        }
        return element.isString() && !isText(element.string()) ? "The string is no valid UTF-8"
                                                               : nullptr;
    }

    bool isText(const std::string& string) const {
        return m_allowInvalidUtf8 || string.empty() || text::isUtf8(string);
    }

    void open(const Element& element) {
        if (element.isObject()) {
            Level level;
            level.object = &element.object();
            level.member = level.object->begin();
            m_open.push_back(level);
        } else if (element.isArray()) {
            Level level;
            level.array = &element.array();
            level.item = level.array->begin();
            m_open.push_back(level);
        }
    }

    const Element* next() {
        for (; !m_open.empty(); m_open.pop_back()) {
            Level& level = m_open.back();
            if (level.array != nullptr && level.item != level.array->end()) {
                return &*level.item++;
            }
            if (level.object != nullptr && skipLeftOut(level) != level.object->end()) {
                return &level.member++->second;
            }
        }
        return nullptr;
    }

    Element::TObject::const_iterator skipLeftOut(Level& level) const {
        const bool mayLeaveOut = m_leftOut != nullptr && m_open.size() == 1;
        if (mayLeaveOut && level.member != level.object->end() &&
            level.member->first == *m_leftOut) {
            ++level.member;
        }
        return level.member;
    }

    const bool m_allowInvalidUtf8;
    const std::string* const m_leftOut;
    std::vector<Level> m_open;
};

}  // namespace

std::optional<WriteError> findWriteError(const Element& root, const WriteOptions& options,
                                         const std::string* leftOut) {
    return Search(options, leftOut).run(root);
}

}  // namespace ko::Orvid
