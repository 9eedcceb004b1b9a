// SPDX-License-Identifier: MIT
//
// The walk: scalars are written on the way, a container that opens interrupts the one that holds
// it. A container that the writer refuses is left out with all that it holds.

#include "document/TreeWriter.h"

#include <ko/Orvid/Dom.h>

#include <algorithm>
#include <string_view>

#include "text/NumberText.h"
#include "tree/Place.h"
#include "tree/Tree.h"

namespace ko::Orvid {

using text::WriteStatus;

text::Layout layoutOf(const WriteOptions& options) {
    return {!options.indent.empty(), options.indent, options.finalNewline, options.asciiOnly,
            options.closeEmpty};
}

void TreeWriter::write(const Dom& dom) {
    const Element& root = *dom;
    if (!root.isObject() || dom.writeMeta()) {
        write(root);
    } else {
        write(root.object(), &dom.metaKey());
    }
}

void TreeWriter::write(const Element& element) {
    m_leftOut = nullptr;
    writeValue(element);
    finishLevels();
}

void TreeWriter::write(const Element::TArray& array) {
    open(array);
    finishLevels();
}

void TreeWriter::write(const Element::TObject& object, const std::string* leftOut) {
    m_leftOut = leftOut;
    open(object);
    finishLevels();
}

/// Writes a scalar, or opens a container.
void TreeWriter::writeValue(const Element& element) {
    const Element::SData& data = element.data();
    if (data.type == etObject) {
        open(*data.value.object);
    } else if (data.type == etArray) {
        open(*data.value.array);
    } else {
        writeScalar(data);
    }
}

void TreeWriter::writeScalar(const Element::SData& data) {
    switch (data.type) {
        case etNull:
            m_writer.null();
            break;
        case etBoolean:
            m_writer.boolean(data.value.boolean);
            break;
        case etNumber:
            writeNumber(*data.value.number);
            break;
        case etString:
            m_writer.string(data.value.string->data(), data.value.string->size());
            break;
        default:
            m_wroteJson = false;
            break;
    }
}

void TreeWriter::writeNumber(const Number& number) {
    const std::string_view text = number.m_store.jsonText();
    if (text.empty()) {
        writeOtherNumber(number);
    } else {
        m_writer.number(text.data(), text.size());
    }
}

/// A number whose text was not read as JSON. That of a binary value is JSON unless it is a word.
void TreeWriter::writeOtherNumber(const Number& number) {
    NumberBuffer buffer;
    const std::string_view text = number.textIn(buffer);
    if (m_checksValues) {
        const bool isDerived = text.data() == buffer.data();
        m_wroteJson =
            m_wroteJson && (isDerived ? text::isDigit(text.back()) : text::isNumber(text));
    }
    m_writer.number(text.data(), text.size());
}

// A container is noted as open at the first container in it: those that hold scalars only, half of
// them in most documents, are written at once.

void TreeWriter::open(const Element::TArray& array) {
    if (m_writer.openArray() != WriteStatus::ok) {
        return;
    }
    const std::size_t position = writeScalars(array, 0);
    if (position == array.size()) {
        static_cast<void>(m_writer.closeArray());
    } else {
        m_open.push_back({&array, position, {}, {}, 0});
    }
}

void TreeWriter::open(const Element::TObject& object) {
    if (m_writer.openMap() != WriteStatus::ok) {
        return;
    }
    Level level{nullptr, 0, object.begin(), object.end(), 0};
    if (m_sortsKeys) {
        sort(level);
    } else if (m_leftOut == nullptr && writeScalars(level)) {
        static_cast<void>(m_writer.closeMap());
        return;
    }
    m_open.push_back(level);
}

/// Writes items from the position on, and returns that of the first container, or the end.
std::size_t TreeWriter::writeScalars(const Element::TArray& array, std::size_t position) {
    while (position != array.size()) {
        const auto items = Place::stretchAt(array, position);
        const std::size_t end = std::min(items.end, array.size());
        for (; position != end; ++position) {
            const Element& item = items.first[position - items.begin];
            if (isContainer(item.data())) {
                return position;
            }
            writeScalar(item.data());
        }
    }
    return position;
}

/// Writes members up to the first container. Returns whether there is none.
bool TreeWriter::writeScalars(Level& level) {
    for (; level.member != level.membersEnd; ++level.member) {
        const auto& [key, value] = *level.member;
        if (isContainer(value.data())) {
            return false;
        }
        m_writer.string(key.data(), key.size());
        writeScalar(value.data());
    }
    return true;
}

/// Moves the members to the list of those that are sorted, from which they are taken at its end.
void TreeWriter::sort(Level& level) {
    level.sorted = m_sorted.size();
    for (; level.member != level.membersEnd; ++level.member) {
        m_sorted.push_back(&*level.member);
    }
    std::sort(m_sorted.begin() + static_cast<std::ptrdiff_t>(level.sorted), m_sorted.end(),
              [](const Member* left, const Member* right) { return right->first < left->first; });
}

void TreeWriter::finishLevels() {
    while (!m_open.empty()) {
        Level& level = m_open.back();
        const bool isArray = level.array != nullptr;
        const bool isInterrupted = isArray ? writeItems(level) : writeMembers(level);
        if (!isInterrupted) {
            m_open.pop_back();
            static_cast<void>(isArray ? m_writer.closeArray() : m_writer.closeMap());
        }
    }
}

/// Returns whether a container was opened, in which case the level may have moved.
bool TreeWriter::writeItems(Level& level) {
    const std::size_t depth = m_open.size();
    const Element::TArray& array = *level.array;
    while (level.position != array.size()) {
        writeValue(array[level.position++]);
        if (m_open.size() != depth) {
            return true;
        }
        level.position = writeScalars(array, level.position);
    }
    return false;
}

bool TreeWriter::writeMembers(Level& level) {
    const std::size_t depth = m_open.size();
    while (const Member* const member = nextMember(level)) {
        const bool isLeftOut = m_leftOut != nullptr && depth == 1 && member->first == *m_leftOut;
        if (!isLeftOut) {
            m_writer.string(member->first.data(), member->first.size());
            writeValue(member->second);
        }
        if (m_open.size() != depth) {
            return true;
        }
    }
    return false;
}

const TreeWriter::Member* TreeWriter::nextMember(Level& level) {
    if (level.member != level.membersEnd) {
        return &*level.member++;
    }
    if (!m_sortsKeys || m_sorted.size() == level.sorted) {
        return nullptr;
    }
    const Member* const member = m_sorted.back();
    m_sorted.pop_back();
    return member;
}

}  // namespace ko::Orvid
