// SPDX-License-Identifier: MIT
//
// Copying a tree, in the order of the document, so that neighbors become neighbors in memory.

#include <ko/Orvid/Array.h>
#include <ko/Orvid/Object.h>

#include <cstddef>
#include <string>
#include <vector>

#include "tree/Place.h"
#include "tree/Tree.h"

namespace ko::Orvid {

namespace {

using SData = Element::SData;

/// What a node and its number take, in bytes.
constexpr std::size_t k_nodesPerChild = 112;

std::size_t childCount(const SData& source) {
    return source.type == etArray ? source.value.array->size() : source.value.object->size();
}

class TreeCopier {
public:
    /// `target` is an empty container of the source's type.
    void run(SData& target, const SData& source) {
        open(target, source);
        while (!m_open.empty()) {
            copyNext();
        }
    }

private:
    /// A container that is being copied, and how far that has come.
    struct SOpen {
        SData* target;
        const SData* source;
        Element::TArray::const_iterator item;
        Element::TObject::const_iterator member;
    };

    void open(SData& target, const SData& source) {
        SOpen opened{&target, &source, {}, {}};
        if (source.type == etArray) {
            opened.item = source.value.array->begin();
            target.value.array->reserve(source.value.array->size());
        } else {
            opened.member = source.value.object->begin();
        }
        m_open.push_back(opened);
    }

    /// Goes on in the innermost container, up to its end or to a container in it.
    void copyNext() {
        const bool isArray = m_open.back().source->type == etArray;
        if (isArray ? copyItems(m_open.back()) : copyMembers(m_open.back())) {
            m_open.pop_back();
        }
    }

    // Answer whether the container is complete. Where it is not, `open` is no longer the innermost.

    bool copyItems(SOpen& open) {
        const Element::TArray& source = *open.source->value.array;
        Element::TArray& target = *open.target->value.array;
        while (open.item != source.end()) {
            const Element& item = *open.item;
            ++open.item;
            Element& copied = target.appendNull();
            Place::withoutPosition(copied);
            if (copyChild(copied, item)) {
                return false;
            }
        }
        return true;
    }

    bool copyMembers(SOpen& open) {
        const Element::TObject& source = *open.source->value.object;
        Element::TObject& target = *open.target->value.object;
        while (open.member != source.end()) {
            const auto& [key, value] = *open.member++;
            if (copyChild(Place::append(target, key), value)) {
                return false;
            }
        }
        Place::indexKeys(target);
        return true;
    }

    /// Gives `target`, which is null, the source's value. Answers whether that is a container,
    /// which is empty yet and has become the innermost one.
    bool copyChild(Element& target, const Element& source) {
        if (!isContainer(source.data())) {
            copyLeaf(target, source.data());
            return false;
        }
        Element::create(target.data(), source.type(), &target);
        open(target.data(), source.data());
        return true;
    }

    /// `target` is null.
    static void copyLeaf(Element& target, const SData& source) {
        SData& data = target.data();
        if (source.type == etNumber) {
            data.value.number = new Number(*source.value.number);
            data.type = etNumber;
        } else if (source.type == etString) {
            data.value.string = new std::string(*source.value.string);
            data.type = etString;
        } else {
            Element::copy(data, source, &target);
        }
    }

    std::vector<SOpen> m_open;
};

}  // namespace

void copyTree(SData& target, const SData& source) {
    NodeMemory nodes(k_nodesPerChild * (1 + childCount(source)));
    const NodeMemory::Scope scope(nodes);
    TreeCopier().run(target, source);
}

}  // namespace ko::Orvid
