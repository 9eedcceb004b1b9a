// SPDX-License-Identifier: MIT
//
// The walk through a tree that writes it, whatever its depth: the containers that are open are kept
// in a vector.

#pragma once

#include <ko/Orvid/Array.h>
#include <ko/Orvid/Element.h>
#include <ko/Orvid/Object.h>
#include <ko/Orvid/WriteOptions.h>

#include <cstddef>
#include <string>
#include <vector>

#include "text/Writer.h"

namespace ko::Orvid {

text::Layout layoutOf(const WriteOptions& options);

/// Writes values, one after the other.
class TreeWriter {
public:
    enum class Check { nothing, values };

    TreeWriter(text::Writer& writer, bool sortsKeys, Check check = Check::nothing)
        : m_writer(writer), m_sortsKeys(sortsKeys), m_checksValues(check == Check::values) {}

    // Throw std::bad_alloc, with a part of the value written. A value of type etEmpty writes
    // nothing.
    void write(const Element& element);
    /// Without its meta, unless the document says to write that.
    void write(const Dom& dom);
    void write(const Element::TArray& array);
    /// Leaves out the member `leftOut`, where that is given.
    void write(const Element::TObject& object, const std::string* leftOut = nullptr);

    /// Whether each value written was one of JSON, the bytes of strings aside. Only where values
    /// are checked.
    bool wroteJson() const noexcept { return m_wroteJson; }

private:
    using Member = Element::TObject::value_type;

    /// A container that is open, and what of it comes next.
    struct Level {
        const Element::TArray* array;  ///< null for an object
        std::size_t position;          ///< of the next item
        Element::TObject::const_iterator member;
        Element::TObject::const_iterator membersEnd;
        std::size_t sorted;  ///< where its members begin in m_sorted
    };

    void writeValue(const Element& element);
    void writeScalar(const Element::SData& data);
    void writeNumber(const Number& number);
    [[gnu::noinline]] void writeOtherNumber(const Number& number);
    std::size_t writeScalars(const Element::TArray& array, std::size_t position);
    bool writeScalars(Level& level);
    void open(const Element::TArray& array);
    void open(const Element::TObject& object);
    void sort(Level& level);
    void finishLevels();
    bool writeItems(Level& level);
    bool writeMembers(Level& level);
    const Member* nextMember(Level& level);

    text::Writer& m_writer;
    const bool m_sortsKeys;
    const bool m_checksValues;
    bool m_wroteJson = true;
    const std::string* m_leftOut = nullptr;  ///< in the outermost object
    std::vector<Level> m_open;
    std::vector<const Member*> m_sorted;  ///< of the open objects, in each the last key first
};

}  // namespace ko::Orvid
