// SPDX-License-Identifier: MIT
//
// Comparing two trees: a walk through both at once, with the containers on the way kept in a stack.

#include <ko/Orvid/Array.h>
#include <ko/Orvid/Object.h>

#include <variant>
#include <vector>

#include "tree/Tree.h"

namespace ko::Orvid {

namespace {

using SData = Element::SData;

int sign(int result) { return result > 0 ? 1 : result < 0 ? -1 : 0; }

/// Where the comparison of two containers has got to.
template<class Container>
struct Cursor {
    Cursor(const Container& a, const Container& b)
        : left(a.begin()), leftEnd(a.end()), right(b.begin()), rightEnd(b.end()) {}

    bool isOver() const { return left == leftEnd || right == rightEnd; }
    /// A sequence that ends first is the smaller one.
    int lengthOrder() const { return (left == leftEnd ? 0 : 1) - (right == rightEnd ? 0 : 1); }

    typename Container::const_iterator left;
    typename Container::const_iterator leftEnd;
    typename Container::const_iterator right;
    typename Container::const_iterator rightEnd;
};

/// Of two different values of the same type. All containers are alike.
int compareScalars(const SData& a, const SData& b) {
    switch (a.type) {
        case etNull:
            return (a.value.null > b.value.null ? 1 : 0) - (a.value.null < b.value.null ? 1 : 0);
        case etBoolean:
            return int{a.value.boolean} - int{b.value.boolean};
        case etNumber:
            return sign(a.value.number->compare(*b.value.number));
        case etString:
            return sign(a.value.string->compare(*b.value.string));
        default:
            return 0;
    }
}

/// The order of two values as far as it takes no look into containers.
int compareOutside(const SData& a, const SData& b) {
    if (&a == &b) {
        return 0;
    }
    if (a.type != b.type) {
        return a.type > b.type ? 1 : -1;
    }
    return compareScalars(a, b);
}

/// Whether compareOutside() leaves two values undecided.
bool areContainers(const SData& a, const SData& b) {
    return a.type == b.type && isContainer(a) && &a != &b;
}

class Comparison {
public:
    Comparison(const SData& a, const SData& b) { open(a, b); }

    /// The order of the containers.
    int run() {
        int result = 0;
        while (result == 0 && !m_open.empty()) {
            result = std::visit([this](auto& position) { return step(position); }, m_open.back());
        }
        return result;
    }

private:
    using ArrayCursor = Cursor<Element::TArray>;
    using ObjectCursor = Cursor<Element::TObject>;

    /// Two containers are left to run().
    int compare(const SData& a, const SData& b) {
        if (areContainers(a, b)) {
            open(a, b);
            return 0;
        }
        return compareOutside(a, b);
    }

    /// Two containers of the same type.
    void open(const SData& a, const SData& b) {
        if (a.type == etObject) {
            m_open.emplace_back(ObjectCursor(*a.value.object, *b.value.object));
        } else {
            m_open.emplace_back(ArrayCursor(*a.value.array, *b.value.array));
        }
    }

    // A step may open a container, which moves the positions: it takes what it needs before that.

    int step(ArrayCursor& position) {
        if (position.isOver()) {
            return close(position);
        }
        const Element& left = *position.left++;
        const Element& right = *position.right++;
        return compare(left.data(), right.data());
    }

    int step(ObjectCursor& position) {
        if (position.isOver()) {
            return close(position);
        }
        const auto& left = *position.left++;
        const auto& right = *position.right++;
        const int keyOrder = sign(left.first.compare(right.first));
        return keyOrder != 0 ? keyOrder : compare(left.second.data(), right.second.data());
    }

    template<class Position>
    int close(const Position& position) {
        const int result = position.lengthOrder();
        m_open.pop_back();
        return result;
    }

    std::vector<std::variant<ArrayCursor, ObjectCursor>> m_open;
};

}  // namespace

int compareTrees(const SData& a, const SData& b) {
    return areContainers(a, b) ? Comparison(a, b).run() : compareOutside(a, b);
}

}  // namespace ko::Orvid
