// SPDX-License-Identifier: MIT
//
// ElementCreator, the path listener that looks an element up and makes what is missing on the way.

#pragma once

#include <ko/Orvid/Path.h>
#include <ko/Orvid/PathParser.h>

#include <string>

namespace ko::Orvid {

/// Moves from a start element one step down for each step of a path, and builds: an empty element
/// becomes the container that the step needs, a missing member and the step `[*]` add an empty
/// element. Nothing else is converted, and no array is padded. What was built stays when a later
/// step fails. A step costs O(log n) in an object and O(1) in an array, making the creator costs
/// the length of the path; all else is O(1).
class KO_API ElementCreator : public PathParserListener {
public:
    /// `path` is named in errors; it is what the parser is going to read. `value` is held for the
    /// caller and not read. With `throwOnFailure` a step that cannot be made throws PathNotFound;
    /// without, it only clears pathExists().
    ElementCreator(const Path& path, Element& start, const Element& value, bool throwOnFailure);
    ~ElementCreator() override;

    bool cbObjectProperty(const std::string& key) override;
    bool cbArrayItem(unsigned int index) override;

    /// Whether every step so far could be made.
    bool pathExists() const { return m_pathExists; }
    /// Where the walk stands: after the last step that could be made.
    Element& currentElement() const { return *m_current; }
    const Element& value() const { return m_value; }

private:
    bool missing(const std::string& step);

    Element* m_current;
    const Element& m_value;
    bool m_pathExists;
    bool m_throwOnFailure;
    std::string m_path;
};

}  // namespace ko::Orvid
