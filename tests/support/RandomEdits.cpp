// SPDX-License-Identifier: MIT
//
// The edits, one function for each kind.

#include "support/RandomEdits.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace orvid_test {

using ko::Orvid::Element;
using ko::Orvid::JsonPointer;

std::vector<Element*> RandomEdits::allOf(Element& root) {
    std::vector<Element*> all{&root};
    for (std::size_t i = 0; i < all.size(); ++i) {
        if (all[i]->isArray()) {
            for (Element& item : all[i]->array()) {
                all.push_back(&item);
            }
        } else if (all[i]->isObject()) {
            for (auto& member : all[i]->object()) {
                all.push_back(&member.second);
            }
        }
    }
    return all;
}

void RandomEdits::erase(Element& element) {
    Element& parent = *element.parent();
    if (parent.isObject()) {
        parent.object().erase(std::string(element.memberKey()));
        return;
    }
    auto& items = parent.array();
    items.erase(std::find_if(items.begin(), items.end(),
                             [&](const Element& item) { return &item == &element; }));
}

void RandomEdits::moveWithin(Element& element) {
    Element& parent = *element.parent();
    Element moved = std::move(element);
    erase(element);
    if (parent.isObject()) {
        parent.object().resetMember("renamed") = std::move(moved);
    } else {
        parent.array().push_back(std::move(moved));
    }
}

bool RandomEdits::lies(const Element& element, const Element& within) {
    const Element* at = &element;
    while (at != nullptr && at != &within) {
        at = at->parent();
    }
    return at != nullptr;
}

Element RandomEdits::value(unsigned depth) {
    switch (m_choose(depth > 2 ? 6 : 8)) {
        case 0:
            return Element(20 + static_cast<int>(m_choose(9)));
        case 1:
            return Element("v");
        case 2:
            return Element(m_choose(2) == 0);
        case 3:
            return Element();
        case 4:
            return Element(ko::Orvid::Number("21.50"));
        case 5:
            return Element("x\"\n\xC3\xA9");
        default:
            return container(depth);
    }
}

Element RandomEdits::container(unsigned depth) {
    Element result;
    const bool isObject = m_choose(2) == 0;
    Element::create(result.data(), isObject ? ko::Orvid::etObject : ko::Orvid::etArray, &result);
    for (unsigned i = m_choose(4); i > 0; --i) {
        const Element child = value(depth + 1);
        if (isObject) {
            result.object().insert({"n" + std::to_string(i), child});
        } else {
            result.array().push_back(child);
        }
    }
    return result;
}

void RandomEdits::run(Element& root) {
    const std::vector<Element*> all = allOf(root);
    const auto any = [&]() -> Element& {
        return *all[m_choose(static_cast<unsigned>(std::min<std::size_t>(all.size(), 256)))];
    };
    Element& element = any();
    const unsigned kind = m_choose(10);
    m_script += std::to_string(kind) + " at \"" + element.path() + "\"\n";
    switch (kind) {
        case 0:
            element = value();
            break;
        case 1:
            if (element.parent() != nullptr) {
                erase(element);
            }
            break;
        case 2:
            add(element);
            break;
        case 3:
            shuffle(element);
            break;
        case 4:
            rename(element);
            break;
        case 5:
            move(element, any());
            break;
        case 6:
            patch(root, element, any());
            break;
        case 7:
            setScalar(element);
            break;
        case 8:
            element.swap(any());
            break;
        default:
            sort(element);
            break;
    }
}

void RandomEdits::add(Element& parent) {
    if (parent.isObject()) {
        parent.object().insert({"new" + std::to_string(m_choose(4)), value()});
    } else if (parent.isArray()) {
        parent.array().push_back(value());
        auto& items = parent.array();
        for (std::size_t i = m_choose(3) == 0 ? items.size() - 1 : 0; i > 0; --i) {
            std::swap(items[i], items[i - 1]);
        }
    }
}

void RandomEdits::shuffle(Element& array) {
    if (array.isArray()) {
        auto& items = array.array();
        for (std::size_t i = 1; i < items.size(); ++i) {
            std::swap(items[i],
                      items[m_choose(static_cast<unsigned>(std::min<std::size_t>(i + 1, 256)))]);
        }
    }
}

void RandomEdits::sort(Element& array) {
    if (array.isArray()) {
        auto& items = array.array();
        for (std::size_t i = 1; i < items.size(); ++i) {
            for (std::size_t j = i; j > 0 && items[j].type() < items[j - 1].type(); --j) {
                std::swap(items[j], items[j - 1]);
            }
        }
    }
}

void RandomEdits::rename(Element& member) {
    if (member.parent() == nullptr || !member.parent()->isObject()) {
        return;
    }
    Element& parent = *member.parent();
    Element moved = std::move(member);
    parent.object().erase(std::string(member.memberKey()));
    parent.object().resetMember("r" + std::to_string(m_choose(3))) = std::move(moved);
}

void RandomEdits::move(Element& element, Element& target) {
    if (element.parent() == nullptr || lies(target, element) || !target.isObject()) {
        return;
    }
    const std::string key = element.parent()->isObject() ? element.memberKey() : "m";
    Element moved = std::move(element);
    erase(element);
    target.object().resetMember(key) = std::move(moved);
}

void RandomEdits::patch(Element& root, const Element& from, const Element& target) {
    static const char* const names[] = {"move", "copy", "remove", "replace", "add"};
    const bool isArray = target.isArray();
    Element operation;
    Element::create(operation.data(), ko::Orvid::etObject, &operation);
    operation.insert("op", Element(names[m_choose(5)]));
    operation.insert("from", Element(JsonPointer::of(from).str()));
    operation.insert("path", Element(JsonPointer::of(target).str() + (isArray             ? "/0"
                                                                      : target.isObject() ? "/p"
                                                                                          : "")));
    operation.insert("value", value());
    Element list;
    Element::create(list.data(), ko::Orvid::etArray, &list);
    list.array().push_back(operation);
    try {
        applyPatch(root, list);
    } catch (const ko::Orvid::PatchException&) {
        m_script += "  (refused)\n";
    }
}

void RandomEdits::setScalar(Element& scalar) {
    if (scalar.isNumber()) {
        scalar.setNumber(30 + static_cast<int>(m_choose(9)));
    } else if (scalar.isString()) {
        scalar.setString(std::string("s"));
    } else if (scalar.isBoolean()) {
        scalar.setBoolean(!scalar.boolean());
    }
}

}  // namespace orvid_test
