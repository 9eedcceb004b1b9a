// SPDX-License-Identifier: MIT
//
// RandomEdits, changes to a tree made of choices, in every way that the library offers. New numbers
// equal none of CommentedJson's. It needs no test framework: the fuzzers use it as well.

#pragma once

#include <ko/Orvid.h>

#include <string>
#include <vector>

#include "support/CommentedJson.h"

namespace orvid_test {

class RandomEdits {
public:
    explicit RandomEdits(const Choice& choose) : m_choose(choose) {}

    /// Changes the tree below `root` in one way, or finds that it cannot be done.
    void run(ko::Orvid::Element& root);
    /// What was done so far, a line for each.
    const std::string& script() const { return m_script; }

    /// The element and all that lies below it.
    static std::vector<ko::Orvid::Element*> allOf(ko::Orvid::Element& root);
    /// Takes an element that has a parent out of it.
    static void erase(ko::Orvid::Element& element);
    /// The same, and puts its value elsewhere: under the key `renamed` of the same object, or after
    /// the last item of the same array.
    static void moveWithin(ko::Orvid::Element& element);

private:
    using Element = ko::Orvid::Element;

    Element value(unsigned depth = 0);
    Element container(unsigned depth);
    void add(Element& parent);
    void shuffle(Element& array);
    void sort(Element& array);
    void rename(Element& member);
    void move(Element& element, Element& target);
    void patch(Element& root, const Element& from, const Element& target);
    void setScalar(Element& scalar);
    static bool lies(const Element& element, const Element& within);

    const Choice& m_choose;
    std::string m_script;
};

}  // namespace orvid_test
