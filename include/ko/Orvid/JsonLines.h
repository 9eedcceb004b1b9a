// SPDX-License-Identifier: MIT
//
// JsonLines reads records, one JSON document a line (JSON Lines, NDJSON), one after the other.

#pragma once

#include <ko/export.h>
#include <ko/Orvid/Element.h>
#include <ko/Orvid/ReadOptions.h>
#include <ko/Orvid/SourcePlace.h>

#include <cstddef>
#include <iosfwd>
#include <iterator>
#include <memory>
#include <optional>

namespace ko::Orvid {

/// The records of a stream, as a range to go through once:
/// `for (Element& record : lines) ...`. Blank lines are skipped, and counted; a line may end in
/// CR LF, the last one without a newline, and the first one may begin with a byte order mark. One
/// record is in memory at a time.
///
/// A malformed line throws ParseException, whose line is number() and whose columns are those in
/// the line, and is skipped: going on, with next(), ++ or another loop, reads the line after it.
/// An operation that states no cost is O(1).
class KO_API JsonLines {
public:
    class iterator;

    /// Reads from `in`, which must live as long as this, by its buffer: its own state is left
    /// alone except for eofbit at the end and badbit where it fails. Each line must be one whole
    /// document, whatever the options say; their limits hold for each.
    explicit JsonLines(std::istream& in, const ReadOptions& options = ReadOptions::strict());
    ~JsonLines();
    JsonLines(const JsonLines&) = delete;
    JsonLines& operator=(const JsonLines&) = delete;

    /// The next record; null after the last one. The element is the same each time: it can be
    /// changed, and moved from, and is read anew by the next call. Throws ParseException as above,
    /// Exception where the stream fails or could not be opened, and std::bad_alloc, which skips the
    /// line too. Linear in the length of the line.
    Element* next();
    /// The 1-based number of the line that was read last; 0 before the first one.
    unsigned long long number() const noexcept;
    /// Where the element with that path in the record that was read last stood in the stream: on
    /// the line number(), with offsets and columns in that line, in which no byte order mark
    /// counts. Nothing where there was no such element, and before the first record. Parses the
    /// line again: linear in its length. Throws ParseException for a malformed path.
    std::optional<SourcePlace> placeOf(const Path& path) const;

    /// Reads the next record. Throws as next(), and costs that.
    iterator begin();
    iterator end() noexcept;

private:
    struct State;
    std::unique_ptr<State> m_state;
};

/// The position in a JsonLines, which all copies share. An operation that states no cost is O(1).
class JsonLines::iterator {
public:
    using iterator_category = std::input_iterator_tag;
    using value_type = Element;
    using difference_type = std::ptrdiff_t;
    using pointer = Element*;
    using reference = Element&;

    iterator() = default;

    Element& operator*() const noexcept { return *m_record; }
    Element* operator->() const noexcept { return m_record; }
    ///@{
    /// Throws as JsonLines::next(), and costs that; another ++ then goes on.
    iterator& operator++() {
        m_record = m_lines->next();
        return *this;
    }
    void operator++(int) { ++*this; }
    ///@}

    friend bool operator==(const iterator& a, const iterator& b) noexcept {
        return a.m_record == b.m_record;
    }
    friend bool operator!=(const iterator& a, const iterator& b) noexcept { return !(a == b); }

private:
    friend class JsonLines;
    iterator(JsonLines* lines, Element* record) : m_lines(lines), m_record(record) {}

    JsonLines* m_lines = nullptr;
    Element* m_record = nullptr;  ///< null at the end
};

inline JsonLines::iterator JsonLines::begin() { return {this, next()}; }

inline JsonLines::iterator JsonLines::end() noexcept { return {}; }

}  // namespace ko::Orvid
