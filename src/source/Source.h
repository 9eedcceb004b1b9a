// SPDX-License-Identifier: MIT
//
// Source, the text of a document beside its tree, with the spans of all values in it.

#pragma once

#include <ko/Orvid/Element.h>
#include <ko/Orvid/JsonPointer.h>
#include <ko/Orvid/ReadOptions.h>
#include <ko/Orvid/SourcePlace.h>

#include <cstddef>
#include <optional>
#include <string>
#include <utility>

#include "source/SourceMap.h"

namespace ko::Orvid {

class Source {
public:
    /// The text of a document, and the name of its file, empty where it has none.
    Source(std::string text, const ReadOptions& options, std::string file);
    Source(const Source&) = delete;
    Source& operator=(const Source&) = delete;
    ~Source() = default;

    /// The spans that were noted while the text was read.
    void setSpans(SpanTable values) noexcept { m_map.set(m_text, std::move(values)); }
    /// The same where none could be noted: they are located in the text, of which `root` was read
    /// just now from the offset `begin` on.
    void locateValues(std::size_t begin, const Element& root) { m_map.locate(m_text, begin, root); }

    const std::string& text() const noexcept { return m_text; }
    const std::string& file() const noexcept { return m_file; }
    const ReadOptions& options() const noexcept { return m_options; }
    /// Whether the spans are known: not those of a text that ended early.
    bool hasSpans() const noexcept { return !m_map.empty(); }

    /// The text with the changes that were made to the tree. `root` need not be the element that
    /// was read; it must be JSON, and the spans known. `leftOut` is a key of the root that is not
    /// written, or null; `moved` is what is known to have been moved since the text was read.
    std::string textOf(const Element& root, const std::string* leftOut,
                       const MovedPlaces& moved) const;
    /// Where the element stood when it was read.
    std::optional<SourcePlace> placeOf(const Element& element) const;

private:
    SourceSpan span(std::size_t begin, std::size_t end) const;

    const std::string m_text;
    const std::string m_file;
    const ReadOptions m_options;
    SourceMap m_map;
};

}  // namespace ko::Orvid
