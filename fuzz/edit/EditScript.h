// SPDX-License-Identifier: MIT
//
// EditScript carries out operations on two trees as bytes say, each one on a tree and on its plain
// model. What it chooses from the bytes is here; the operations are in the sources beside it, by
// kind.

#pragma once

#include <ko/Orvid.h>

#include <algorithm>
#include <cstddef>
#include <string>
#include <vector>

#include "Input.h"
#include "model/Value.h"

namespace orvid_fuzz {

/// An element of a tree and the same place of the model.
struct Place {
    ko::Orvid::Element* element;
    Value* value;
    std::vector<std::size_t> route;  ///< which tree, then the position in each container

    /// Whether one of the two is the other or lies within it.
    static bool overlap(const Place& a, const Place& b) { return a.isWithin(b) || b.isWithin(a); }

    /// Whether this is the other, or lies within it.
    bool isWithin(const Place& other) const {
        return other.route.size() <= route.size() &&
               std::equal(other.route.begin(), other.route.end(), route.begin());
    }
};

class EditScript {
public:
    explicit EditScript(Input& input) : m_input(input) {}

    /// Carries the script out. After each step all links hold, and the trees agree with their
    /// models.
    void run();

private:
    /// An argument: fresh, or anywhere in the trees. Its model is a copy.
    struct Argument {
        ko::Orvid::Element fresh;
        const ko::Orvid::Element* element = nullptr;
        Value value;
    };

    void step();
    void checkTrees() const;
    void checkComparison() const;

    Place place();
    /// A place whose value is of the type, or nothing.
    bool place(ko::Orvid::EType type, Place& result);
    const std::string& key();
    /// Keys of paths must not be empty.
    std::string pathKey();
    Steps path(unsigned longest);
    /// A path without `[*]`.
    Steps lookupPath(unsigned longest);
    /// The model of a value that is in no tree.
    Value freshValue();
    void choose(Argument& argument);
    /// Whether the tree of the place may grow by the value.
    bool fits(const Place& target, const Value& value, std::size_t steps = 0) const;

    void createByPath();
    void updateByPath();
    void insertMember();
    void removeByValue();
    void findByValue();
    void lookUpOwnPath();

    void assign();
    void assignToItself();
    void copyAway();
    void setScalar();
    void setStringFromItself();
    void copyPayload();
    void parseInto();

    void swapContainers();
    void assignContainers();
    void pushBack();
    void eraseItem();
    void eraseMember();
    void insertBefore();
    void resetMember();

    void moveInto();
    void swapElements();
    void moveContainers();
    void moveAwayAndBack();

    Input& m_input;
    ko::Orvid::Element m_trees[2];
    Value m_models[2];
};

}  // namespace orvid_fuzz
