// SPDX-License-Identifier: MIT
//
// Numbers for the different trees in some documents: the same tree has the same number wherever it
// stands, so that two trees are compared in constant time and without a chance of error.

#pragma once

#include <ko/Orvid/Element.h>

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "change/KeyedHash.h"

namespace ko::Orvid {

/// Knows every element of the documents that were added, which must outlive it unchanged. Trees are
/// the same by treesEqual() with NumberRule::sameText: numbers agree in their text, the order of
/// members does not count.
class TreeNumbers {
public:
    using Numbers = std::vector<std::size_t>;

    TreeNumbers();

    /// Linear in the size of the tree, and a logarithm for the members of each object. Does not
    /// recurse.
    void add(const Element& root);

    /// The tree's number, below the number of elements that were added.
    std::size_t of(const Element& element) const;
    /// The numbers of an array's items.
    Numbers ofItems(const Element::TArray& items) const;
    /// How many bytes the element takes as compact text.
    std::uint64_t textLength(const Element& element) const { return m_lengths[of(element)]; }

private:
    /// A value that is no container, by its text.
    struct Scalar {
        EType type;
        std::string_view text;

        bool operator==(const Scalar& other) const noexcept {
            return type == other.type && text == other.text;
        }
    };
    struct Hasher {
        KeyedHash hash;

        std::size_t operator()(const Scalar& scalar) const noexcept;
        std::size_t operator()(const Numbers& numbers) const noexcept;
    };

    static Scalar scalarOf(const Element& element);
    void addChildren(const Element& container);
    std::size_t numberOf(const Scalar& scalar);
    std::size_t numberOf(const Element& child);
    std::size_t numberOfObject(const Element::TObject& object);
    std::size_t numberOfArray(const Element::TArray& array);
    std::size_t numberOf(Numbers&& content, std::uint64_t length);

    Hasher m_hasher;
    std::unordered_map<Scalar, std::size_t, Hasher> m_scalars;
    /// By the type, and the numbers of what is within.
    std::unordered_map<Numbers, std::size_t, Hasher> m_contents;
    std::unordered_map<const Element*, std::size_t> m_containers;
    std::vector<std::uint64_t> m_lengths;  ///< by number
};

/// How many bytes a string takes as JSON text, with its quotes.
std::uint64_t quotedLength(std::string_view text);

}  // namespace ko::Orvid
