// SPDX-License-Identifier: MIT
//
// The places of children when their containers are used as the lists and maps below them.

#include <ko/Orvid/Array.h>
#include <ko/Orvid/Exception.h>
#include <ko/Orvid/Object.h>

#include "tree/Containment.h"
#include "tree/Strays.h"

namespace ko::Orvid::detail {

namespace {

template<class Container, class Base>
void beginExchangeOf(Base& a, Base& b) {
    const auto* const left = dynamic_cast<const Container*>(&a);
    const auto* const right = dynamic_cast<const Container*>(&b);
    if (left != nullptr && right != nullptr &&
        (liesInChild(*left, *right) || liesInChild(*right, *left))) {
        throw Exception("A container cannot be exchanged with one that it lies in!",
                        left->parent());
    }
    Strays::exchange(&a, &b);
}

}  // namespace

void ElementPlaces::beginExchange(ElementList& a, ElementList& b) {
    beginExchangeOf<Element::TArray>(a, b);
}

void ElementPlaces::beginExchange(ElementMap& a, ElementMap& b) {
    beginExchangeOf<Element::TObject>(a, b);
}

void ElementPlaces::renew(ElementMap& map) noexcept {
    if (auto* const object = dynamic_cast<Element::TObject*>(&map)) {
        object->setParent(object->parent());
    }
}

void ElementPlaces::endNotes() noexcept { Strays::settle(m_link); }

}  // namespace ko::Orvid::detail
