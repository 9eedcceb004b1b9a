// SPDX-License-Identifier: MIT
//
// Places that are there, and such that are new.

#include "support/PlaceEdits.h"

#include <algorithm>
#include <vector>

#include "edit/Insertion.h"
#include "edit/LastStep.h"
#include "support/RandomEdits.h"

namespace orvid_test {

namespace {

using ko::Orvid::Dom;
using ko::Orvid::Element;
using ko::Orvid::Path;
using orvid_tool::PlaceEdit;

const std::vector<std::string>& values() {
    static const std::vector<std::string> all{
        "9",
        "\"new\"",
        "null",
        "{}",
        "[]",
        "[1,2]",
        "{\"x\":1,\"y\":[2,{}]}",
        "[[1],{\"b\":2}]",
        "{\"x\":1,\"y\":[]}",
        "[\"x\",{\"y\":1}]",
        "[{\"x\":1}]",
        "{\"x\":\"a text that is too long for a line with anything else\"}",
        "[1,2,3,4,5,6,7,8,9,10,11,12,13,14,15,16,17,18,19,20,21]"};
    return all;
}

bool isContainer(const Element* element) { return element->isObject() || element->isArray(); }

}  // namespace

void PlaceChange::operator()(Element& root, const std::string& at) const {
    Element element = *Dom::parse(value);
    if (kind == PlaceEdit::set) {
        root.create(Path(at), element);
    } else if (kind == PlaceEdit::insert) {
        insertAt(root, orvid_tool::LastStep(at), std::move(element), {});
    } else {
        RandomEdits::erase(root.get(Path(at)));
    }
}

orvid_tool::ExcerptEdit PlaceChange::inExcerpt() const {
    const bool putsContainer = value.front() == '{' || value.front() == '[';
    return {kind, putsContainer && kind != PlaceEdit::remove, *this};
}

PlaceChange PlaceEdits::next(Element& root, PlaceEdit kind) const {
    std::vector<Element*> all = RandomEdits::allOf(root);
    const bool isAny = m_choose(2) == 0;
    if (!isAny) {
        all.erase(std::remove_if(all.begin() + 1, all.end(),
                                 [](const Element* element) { return !isContainer(element); }),
                  all.end());
        all.push_back(all.front());
    }
    const bool hasRootOnly = all.size() == 1;
    Element& element =
        hasRootOnly ? root : *all[1 + m_choose(static_cast<unsigned>(all.size() - 1))];
    std::string path = element.path();
    if (path.empty() && kind == PlaceEdit::remove) {
        kind = hasRootOnly ? PlaceEdit::set : PlaceEdit::insert;
    }
    if (kind != PlaceEdit::remove && (!isAny || path.empty())) {
        path = newPlace(element);
        path += kind == PlaceEdit::set && m_choose(3) == 0 ? ".deep[*]" : "";
    }
    return {kind, path, values()[m_choose(static_cast<unsigned>(values().size()))]};
}

std::string PlaceEdits::newPlace(const Element& holder) const {
    const std::string path = holder.path();
    if (holder.isArray()) {
        const std::string end = std::to_string(holder.array().size() + m_choose(2));
        return path + (m_choose(2) == 0 ? "[*]" : "[" + end + "]");
    }
    const std::string key = m_choose(4) == 0 ? "other" : "new";
    return path + (path.empty() ? "" : ".") + key;
}

}  // namespace orvid_test
