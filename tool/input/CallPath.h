// SPDX-License-Identifier: MIT
//
// CallPath, a path as a call gives it: path text, in which a negative index counts from the end, or
// a JSON Pointer. What it leads to is known for a document only.

#pragma once

#include <ko/Orvid.h>

#include <cstddef>
#include <functional>
#include <optional>
#include <string>

namespace orvid_tool {

class CallPath {
public:
    CallPath() = default;
    /// A word that begins with `/` is a JSON Pointer; `\/` begins a key with a slash. A word that
    /// is a JSON string stands for its text, as the verbs write a path with a control character in
    /// it. Throws Failure for a malformed pointer, for one with a `#` before it, and for a path
    /// with a negative index that is malformed.
    explicit CallPath(const std::string& word);

    /// The path itself, in place of the JSON string that it may have been.
    const std::string& word() const { return m_word; }
    /// Whether the word is a path of the library as it stands, the same for every document.
    bool isPlain() const { return !m_pointer && !m_hasNegative; }

    /// The pointer, where the word is one; or null.
    const ko::Orvid::JsonPointer* pointer() const { return m_pointer ? &*m_pointer : nullptr; }

    /// The library's path to an element of that document, which need not exist, but all before a
    /// negative index must. Throws PathNotFound, and Failure for a malformed path.
    std::string in(const ko::Orvid::Element& root) const;

    /// How many items the array at a path has; nothing where there is none.
    using ItemCount = std::function<std::optional<std::size_t>(const std::string& path)>;
    /// The library's path, where the word is no pointer. Nothing where an item at a negative index
    /// is not there.
    std::optional<std::string> withCounts(const ItemCount& itemsAt) const;

    /// The same of a path where something is to be put. Throws Failure where the path begins as
    /// queries do, with a `$` that is no key.
    std::string pathIn(const ko::Orvid::Element& root) const;
    /// The pointer, where the word is one with an empty key, which a path cannot express; or null.
    const ko::Orvid::JsonPointer* onlyPointer() const;

    /// The element at the path. Throw PathNotFound, and Failure for a malformed path.
    ko::Orvid::Element& get(ko::Orvid::Element& root) const;
    const ko::Orvid::Element& get(const ko::Orvid::Element& root) const;
    /// The same; null where there is none. Before documents are read that may lack the element:
    /// requireLookup().
    const ko::Orvid::Element* find(const ko::Orvid::Element& root) const;

    /// Throws Failure for a path that is malformed or has a [*], which get() finds only where the
    /// document leads so far.
    void requireLookup() const;

private:
    std::string m_word;
    std::optional<ko::Orvid::JsonPointer> m_pointer;
    bool m_hasNegative = false;
};

}  // namespace orvid_tool
