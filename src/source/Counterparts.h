// SPDX-License-Identifier: MIT
//
// Counterparts, which value of the text each element of the tree is, whatever was done to the tree
// since the text was read. Nothing was noted on the way: the two are compared.
//
// From the root down, members are the same by their key. Items are the same where their address and
// value are, then where their value is in a longest common subsequence, then where their value is
// at all, and else by their address and their neighbours. The whole document is searched for the
// value of what is left over, or a container's children: it was moved or renamed, and a container
// may have been changed as well.
// What stands around a container and what stands in it are treated separately: a member that was
// given a container from elsewhere is still the member of that key, but has the contents of the
// other. An address proves nothing by itself, for that of an element that is gone may be used
// again. Where the caller knows what was moved, that comes first.

#pragma once

#include <ko/Orvid/Element.h>
#include <ko/Orvid/JsonPointer.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <utility>
#include <vector>

#include "source/SourceMap.h"

namespace ko::Orvid {

/// A value in the text, and what became of it.
struct OldValue {
    std::uint64_t hash = 0;
    std::size_t gapBegin = 0;  ///< offset after what stands before it in its container
    std::size_t begin = 0;     ///< offset of its key, or of the value
    std::uint32_t parent = SourceMap::k_none;
    std::uint32_t position = 0;  ///< among its siblings in the text, from 0
    std::uint32_t counterpart = SourceMap::k_none;
    std::uint32_t contents = SourceMap::k_none;  ///< the container that has its children now
};

/// An element of the tree, in the order in which a text would have them.
struct NewValue {
    const Element* element;
    std::uint64_t hash;
    std::uint32_t parent;
    std::uint32_t next;  ///< the first that neither is this one nor lies in it
    std::uint32_t counterpart = SourceMap::k_none;
    std::uint32_t contents = SourceMap::k_none;  ///< the container that its children were in
};

class Counterparts {
public:
    /// `leftOut` is a key of the root that is not written, or null; `moved` is what is known to
    /// have been moved, from where in the text to where in the tree. Linear in the size of text and
    /// tree, except for sorting, and for arrays in which many items changed at once.
    Counterparts(const SourceMap& map, const Element& root, const std::string* leftOut,
                 const MovedPlaces& moved);

    /// The counterpart of the root is the root. That of the root's element is the root as well, or
    /// the value that became it.
    const OldValue& before(std::uint32_t value) const noexcept { return m_old[value]; }
    const NewValue& now(std::uint32_t element) const noexcept { return m_new[element]; }

    /// The children of a value in the text, in its order, with those of repeated keys.
    std::vector<std::uint32_t> childrenBefore(std::uint32_t value) const;
    /// Those that the tree got from there, in its order: a repeated key stands where it stood
    /// first, with its last value.
    std::vector<std::uint32_t> boundChildren(std::uint32_t value) const;
    std::vector<std::uint32_t> childrenNow(std::uint32_t element) const;
    /// Whether the element is a member, and so has a key.
    bool isMember(std::uint32_t element) const noexcept {
        return m_new[element].parent != SourceMap::k_none &&
               m_new[m_new[element].parent].element->isObject();
    }
    bool wasMember(std::uint32_t value) const noexcept {
        return m_old[value].parent != SourceMap::k_none && m_map.isObject(m_old[value].parent);
    }
    /// Whether it is known that a value was moved out of the one in the text, or is gone from
    /// there, or was moved into the element, however deep: then equal values do not say that the
    /// same stand there.
    bool isKnownToDiffer(std::uint32_t value, std::uint32_t element) const {
        return m_movedOutOf.count(value) > 0 || m_movedInto.count(element) > 0;
    }
    /// The key token of a value that was a member.
    std::string_view keyBefore(std::uint32_t value) const;

private:
    using Numbers = std::vector<std::uint32_t>;
    using Positions = std::vector<std::pair<std::size_t, std::size_t>>;

    void listOld();
    void hashOld();
    void listNew(const Element& root, const std::string* leftOut);
    void hashNew();
    std::uint64_t hashOldContainer(std::uint32_t value) const;
    std::uint64_t hashNewContainer(std::uint32_t element) const;

    /// What is known to have become of a value, and so of the values in it of which nothing else is
    /// known.
    enum class Fate : std::uint8_t { unknown, there, gone };
    using ByAddress = std::unordered_map<const Element*, std::uint32_t>;

    void pairKnown(const MovedPlaces& moved);
    void pairKnown(std::uint32_t value, std::uint32_t element);
    Numbers valuesAt(const MovedPlaces& moved) const;
    std::vector<Fate> fatesOf(const MovedPlaces& moved, ByAddress& known);
    void setGone(std::vector<Fate> fates);
    void setMovedOut(std::uint32_t value);
    void setGoneWithin(std::uint32_t value);
    Numbers unpaired(const Numbers& before) const;
    Numbers unmatched(const Numbers& now) const;
    void pairRoot();
    void bringRoot();
    std::uint32_t movedToRoot() const;
    std::uint32_t containerMovedToRoot() const;
    bool hasChildrenOf(std::uint32_t value, std::uint32_t element) const;
    void pair(std::uint32_t value, std::uint32_t element);
    void pairMember(std::uint32_t value, std::uint32_t element);
    void pairContents(std::uint32_t value, std::uint32_t element);
    void releaseContents(std::uint32_t value, std::uint32_t element);
    void pairReleased();
    bool isPaired(std::uint32_t value) const {
        return m_old[value].counterpart != SourceMap::k_none;
    }
    /// Whether it may still be found to be something in the tree.
    bool isOpen(std::uint32_t value) const { return !isPaired(value) && !m_isGone[value]; }
    void matchAll();
    void matchChildren(std::uint32_t value, std::uint32_t element);
    void matchMembers(const Numbers& before, const Numbers& now);
    Numbers filled(const Numbers& values) const;
    void matchByHash(const Numbers& before, const Numbers& now);

    void matchItems(const Numbers& allBefore, const Numbers& allNow);
    using Pairs = std::vector<std::pair<std::uint32_t, std::uint32_t>>;
    /// Of one item, the other with which it has most children in common.
    struct Likest {
        std::size_t partner = 0;
        std::size_t count = 0;
        bool isOnly = false;

        void add(std::size_t other, std::size_t shared) {
            isOnly = shared > count || (isOnly && shared < count);
            partner = shared > count ? other : partner;
            count = std::max(count, shared);
        }
    };
    struct SharedChildren {
        std::vector<Likest> ofLost;
        std::vector<Likest> ofAdded;
    };

    bool areInPlace(const Numbers& lost, const Numbers& added) const;
    bool areFromElsewhere(std::uint32_t value, const Numbers& before, const Numbers& now);
    void listItemsByAddress();
    Pairs alikeItems(const Numbers& lost, const Numbers& added) const;
    SharedChildren sharedChildren(const Numbers& lost, const Numbers& added) const;
    bool shareHalf(std::uint32_t value, std::uint32_t element) const;
    Positions unmovedItems(const Numbers& before, const Numbers& now) const;
    /// Positions in an array before and now, each up to an end.
    struct ItemRange {
        std::size_t from;
        std::size_t fromEnd;
        std::size_t to;
        std::size_t toEnd;

        bool isEmpty() const { return from == fromEnd || to == toEnd; }
    };

    void alignRange(const Numbers& before, const Numbers& now, ItemRange range,
                    std::uint64_t& sharedSteps, Positions& result) const;
    Positions alignItems(const Numbers& before, const Numbers& now, const Positions& pairs) const;
    Positions pairedInOrder(const Numbers& before, const Numbers& now) const;
    template<class MatchRest>
    void pairAround(const Numbers& lost, const Numbers& added, const Positions& pairs,
                    const MatchRest& matchRest);
    void matchChanged(const Numbers& lost, const Numbers& added);
    void matchReplaced(const Numbers& lost, const Numbers& added);
    void matchUnlike(Numbers lost, Numbers added);
    static bool areFew(const Numbers& lost, const Numbers& added);
    /// Which positions hold the children of added containers, in ascending order.
    struct AddedChildren {
        std::unordered_map<std::uint64_t, std::vector<std::size_t>> byTrace;
        std::unordered_map<const Element*, std::size_t> byAddress;
    };

    Positions alikeInOrder(const Numbers& lost, const Numbers& added) const;
    AddedChildren childrenOf(const Numbers& added) const;
    std::size_t firstAlike(std::uint32_t value, const Numbers& added, std::size_t from,
                           const AddedChildren& children) const;
    Positions changedInPlace(const Numbers& lost, const Numbers& added) const;
    template<class Matches>
    void pairInOrder(Numbers& lost, Numbers& added, const Matches& matches);
    bool isSameKind(std::uint32_t value, std::uint32_t element) const;

    void matchMoved();
    bool isLost(std::uint32_t value) const;
    bool isAdded(std::uint32_t element) const;
    bool hadContents(std::uint32_t value) const;
    bool mayBecome(std::uint32_t value, std::uint32_t element) const;
    bool mayBecomeByValue(std::uint32_t value, std::uint32_t element) const;
    Numbers addedBySize() const;
    std::uint32_t movedFrom(std::uint32_t element) const;
    std::uint32_t ownerOfChildren(std::uint32_t element) const;
    void listLostChildren();
    std::uint64_t traceBefore(std::uint32_t value) const;
    std::uint64_t traceNow(std::uint32_t element) const;
    std::uint64_t keysBefore(std::uint32_t object) const;
    std::uint64_t keysNow(std::uint32_t object) const;
    bool mayHaveChanged(std::uint32_t element) const;
    std::uint32_t changedOnItsWay(std::uint32_t element) const;
    bool areOfOneArray(std::uint32_t value, std::uint32_t element) const;
    bool hadMoreChildren(std::uint32_t value, std::size_t count) const;
    std::uint32_t sharingMost(std::uint32_t element) const;
    bool mayHaveMoved(std::uint32_t value, std::uint32_t element) const;
    bool isTelling(std::uint32_t value) const;
    bool mayBringComments(std::uint32_t value, std::uint32_t element) const;
    bool isStillContainer(std::uint32_t value) const;
    bool wasContainer(std::uint32_t element) const;
    bool haveSameKey(std::uint32_t value, std::uint32_t element) const;
    bool isSameContainer(std::uint32_t value, std::uint32_t element) const;

    /// The greatest product of the numbers of changed items that are compared with each other.
    static constexpr std::size_t k_mostCompared = 10000;

    const SourceMap& m_map;
    std::vector<OldValue> m_old;
    std::vector<NewValue> m_new;
    std::vector<std::pair<std::uint32_t, std::uint32_t>> m_due;  ///< containers to look into
    std::vector<std::pair<std::uint32_t, std::uint32_t>> m_released;
    std::unordered_set<std::uint32_t> m_movedOutOf;  ///< values that a value below them left
    std::unordered_set<std::uint32_t> m_movedInto;   ///< elements
    std::unordered_set<std::uint32_t> m_known;       ///< elements that were moved or stayed
    std::vector<bool> m_isGone;  ///< by value: whether it is known to be gone for good
    bool m_areAllKnown = false;  ///< whether nothing was moved besides these
    ByAddress m_itemsByAddress;  ///< those of arrays in the text, when first asked for
    ByAddress m_lostByAddress;
    std::unordered_map<std::uint64_t, Numbers> m_lostByHash;
    std::unordered_map<std::uint64_t, std::size_t> m_addedByHash;
    std::unordered_map<std::uint64_t, Numbers> m_ownersByChild;  ///< lost containers
    std::unordered_map<std::uint64_t, Numbers> m_lostByKeys;     ///< lost objects
    std::unordered_map<std::uint64_t, std::size_t> m_addedByKeys;
};

}  // namespace ko::Orvid
