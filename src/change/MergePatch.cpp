// SPDX-License-Identifier: MIT
//
// Merge patches, with the objects that are still to be merged in a stack.

#include <ko/Orvid/MergePatch.h>

#include <ko/Orvid/Object.h>

#include <utility>
#include <vector>

#include "tree/Snapshot.h"
#include "tree/Tree.h"
#include "tree/TreeMove.h"

namespace ko::Orvid {

namespace {

class Merge {
public:
    void run(Element& target, const Element& patch) {
        merge(target, patch);
        while (!m_open.empty()) {
            const auto [object, members] = m_open.back();
            m_open.pop_back();
            mergeMembers(*object, *members);
        }
    }

private:
    void merge(Element& target, const Element& patch) {
        if (!patch.isObject()) {
            copyValue(target, patch);
            return;
        }
        if (!target.isObject()) {
            becomeContainer(target, etObject);
        }
        m_open.emplace_back(&target.object(), &patch.object());
    }

    void mergeMembers(Element::TObject& object, const Element::TObject& members) {
        for (const auto& [key, value] : members) {
            if (value.isNull()) {
                object.erase(key);
            } else {
                const auto present = object.find(key);
                merge(present == object.end() ? object.resetMember(key) : present->second, value);
            }
        }
    }

    std::vector<std::pair<Element::TObject*, const Element::TObject*>> m_open;
};

}  // namespace

void mergePatch(Element& target, const Element& patch) {
    const Snapshot before(patch, target);
    Merge().run(target, before.get());
}

}  // namespace ko::Orvid
