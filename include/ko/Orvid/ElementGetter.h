// SPDX-License-Identifier: MIT
//
// ElementGetter, the path listener that looks an element up.

#pragma once

#include <ko/Orvid/Path.h>
#include <ko/Orvid/PathParser.h>

#include <string>

namespace ko::Orvid {

/// Moves from a start element one step down for each step of a path. It reads the tree and owns
/// nothing of it. A step `[*]` throws ParseException("Index must be set!"). A step costs O(log n)
/// in an object and O(1) in an array, making the getter costs the length of the path; all else is
/// O(1).
class KO_API ElementGetter : public PathParserListener {
public:
    /// `path` is named in errors; it is what the parser is going to read. With `throwOnMissing` a
    /// step that leads nowhere throws PathNotFound; without, it only clears pathExists().
    ElementGetter(const Path& path, const Element& start, bool throwOnMissing);
    ElementGetter(const ElementGetter&) = delete;
    ElementGetter& operator=(const ElementGetter&) = delete;
    ~ElementGetter() override;

    bool cbObjectProperty(const std::string& key) override;
    bool cbArrayItem(unsigned int index) override;

    /// Whether every step so far led somewhere.
    bool pathExists() const { return m_pathExists; }
    /// Where the walk stands: after the last step that led somewhere.
    const Element& currentElement() const { return *m_current; }

private:
    friend class Path;

    /// Refers to `path`, which must outlive the getter, instead of copying its text: a lookup that
    /// finds its element needs no memory.
    ElementGetter(const Path* path, const Element& start, bool throwOnMissing);

    bool missing(const std::string& step);

    const Element* m_current;
    bool m_pathExists;
    bool m_throwOnMissing;
    Path m_copy;
    const Path* m_path;
};

}  // namespace ko::Orvid
