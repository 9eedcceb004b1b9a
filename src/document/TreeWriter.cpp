// SPDX-License-Identifier: MIT
//
// The walk: scalars are written on the way, a container that opens interrupts the one that holds
// it. A container that the writer refuses is left out with all that it holds.

#include "document/TreeWriter.h"

#include <ko/Orvid/Dom.h>

#include <algorithm>
#include <string_view>

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
        case etObject:
            open(*data.value.object);
            break;
        case etArray:
            open(*data.value.array);
            break;
        default:
            break;
    }
}

void TreeWriter::writeNumber(const Number& number) {
    NumberBuffer buffer;
    const std::string_view text = number.textIn(buffer);
    m_writer.number(text.data(), text.size());
}

void TreeWriter::open(const Element::TArray& array) {
    if (m_writer.openArray() == WriteStatus::ok) {
        m_open.emplace_back();
        Level& level = m_open.back();
        level.isArray = true;
        level.item = array.begin();
        level.itemsEnd = array.end();
    }
}

void TreeWriter::open(const Element::TObject& object) {
    if (m_writer.openMap() == WriteStatus::ok) {
        m_open.emplace_back();
        Level& level = m_open.back();
        level.member = object.begin();
        level.membersEnd = object.end();
        if (m_sortsKeys) {
            sort(level);
        }
    }
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
        const bool isArray = level.isArray;
        const bool isInterrupted = isArray ? writeItems(level) : writeMembers(level);
        if (!isInterrupted) {
            m_open.pop_back();
            static_cast<void>(isArray ? m_writer.closeArray() : m_writer.closeMap());
        }
    }
}

/// Answers whether a container was opened, so that the level may have moved.
bool TreeWriter::writeItems(Level& level) {
    const std::size_t depth = m_open.size();
    while (level.item != level.itemsEnd) {
        writeValue(*level.item++);
        if (m_open.size() != depth) {
            return true;
        }
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
