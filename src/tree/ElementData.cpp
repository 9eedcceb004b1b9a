// SPDX-License-Identifier: MIT
//
// The payload record of an element: making, copying and releasing it.

#include <ko/Orvid/Array.h>
#include <ko/Orvid/Element.h>
#include <ko/Orvid/Object.h>

#include "tree/Place.h"
#include "tree/Strays.h"
#include "tree/Tree.h"

namespace ko::Orvid {

namespace {

/// Both payloads are of one type; the target's is kept.
void assign(Element::SData& target, const Element::SData& source) {
    switch (source.type) {
        case etNull:
            target.value.null = source.value.null;
            break;
        case etBoolean:
            target.value.boolean = source.value.boolean;
            break;
        case etNumber:
            target.value.number->set(*source.value.number);
            break;
        case etString:
            *target.value.string = *source.value.string;
            break;
        case etObject:
            *target.value.object = *source.value.object;
            break;
        case etArray:
            *target.value.array = *source.value.array;
            break;
        default:
            break;
    }
}

/// A payload of its own with the source's value.
Element::SData copied(const Element::SData& source, Element* owner) {
    Element::SData data = source;
    switch (source.type) {
        case etNumber:
            data.value.number = new Number(*source.value.number);
            break;
        case etString:
            data.value.string = new std::string(*source.value.string);
            break;
        case etObject:
        case etArray: {
            OwnedData container(source.type, owner);
            copyTree(*container, source);
            return container.release();
        }
        default:
            break;
    }
    return data;
}

/// Former children, who are elsewhere, are not taken along.
template<class Container>
void moveContainer(Container& container, Element* owner) noexcept {
    Strays::comeHome(Place::linkOf(container));
    Place::moveTo(container, owner);
}

}  // namespace

void moveTree(Element::SData& data, Element* owner) noexcept {
    if (data.type == etArray && data.value.array != nullptr) {
        moveContainer(*data.value.array, owner);
    } else if (data.type == etObject && data.value.object != nullptr) {
        moveContainer(*data.value.object, owner);
    }
}

void Element::create(SData& data, EType type, Element* owner) {
    data.type = type;
    // A payload that cannot be had is null, which destroy() skips.
    switch (type) {
        case etNumber:
            data.value.number = nullptr;
            data.value.number = new Number;
            break;
        case etString:
            data.value.string = nullptr;
            data.value.string = new std::string;
            break;
        case etObject:
            data.value.object = nullptr;
            data.value.object = new TObject(owner);
            break;
        case etArray:
            data.value.array = nullptr;
            data.value.array = new TArray(owner);
            break;
        default:
            break;
    }
}

void Element::destroy(SData& data) {
    if (isContainer(data)) {
        SData container = data;  // the caller's record stays as it is
        destroyTree(container);
    } else {
        releaseLeaf(data);
    }
}

void Element::copy(SData& target, const SData& source, Element* owner) {
    if (&target == &source) {
        return;
    }
    if (target.type == source.type) {
        assign(target, source);
        return;
    }
    if (source.type < etEmpty || source.type > etArray) {
        return;
    }
    if (source.type == etEmpty) {  // has no payload, so the word of the target stays
        destroy(target);
        target.type = etEmpty;
        return;
    }
    // The copy is complete before the old payload goes: the source may lie within it.
    const SData data = copied(source, owner);
    destroy(target);
    target = data;
}

int Element::compare(const SData& a, const SData& b) { return compareTrees(a, b); }

}  // namespace ko::Orvid
