// SPDX-License-Identifier: MIT
//
// Walking steps while making what they lead to.

#include "input/PathSteps.h"

#include <sstream>
#include <utility>

#include "input/PathWords.h"
#include "output/phrases.h"
#include "output/placeWord.h"

namespace orvid_tool {

namespace {

using ko::Orvid::Element;
using ko::Orvid::EType;

std::string placeName(const Element& element) { return placePhrase(placeWord(element)); }

void fillEmpty(Element& element, EType type) {
    if (element.isEmpty()) {
        Element::create(element.data(), type, &element);
    }
}

Element& makeMember(Element& holder, const std::string& key) {
    fillEmpty(holder, ko::Orvid::etObject);
    if (!holder.isObject()) {
        throw Clash(placeName(holder) + " is no object, so it cannot have a member \"" + key + "\"",
                    &holder);
    }
    const auto found = holder.object().find(key);
    return found != holder.object().end() ? found->second
                                          : holder.insert(key, Element::k_emptyElement);
}

Element& makeItem(Element& holder, std::size_t index, Gaps& gaps) {
    fillEmpty(holder, ko::Orvid::etArray);
    if (!holder.isArray()) {
        throw Clash(placeName(holder) + " is no array, so it cannot have an item [" +
                        std::to_string(index) + "]",
                    &holder);
    }
    auto& items = holder.array();
    if (index > items.size() && !gaps.take(index - items.size())) {
        throw Clash("[" + std::to_string(index) + "] is too far after the item before it");
    }
    while (items.size() < index) {
        items.appendNull();
    }
    if (items.size() == index) {
        items.push_back(Element::k_emptyElement);
    }
    return items[index];
}

/// The step as an index, or k_noIndex when it cannot be one.
unsigned int indexOf(const std::string& step) {
    constexpr std::size_t mostDigits = 9;
    const bool isIndex = !step.empty() && step.length() <= mostDigits &&
                         step.find_first_not_of("0123456789") == std::string::npos &&
                         (step == "0" || step.front() != '0');
    return isIndex ? static_cast<unsigned int>(std::stoul(step)) : ko::Orvid::k_noIndex;
}

Element& makeStep(Element& holder, const std::string& step, Gaps& gaps) {
    const bool isItem = holder.isArray() || (holder.isEmpty() && step == "0");
    if (!isItem) {
        return makeMember(holder, step);
    }
    const unsigned int index = indexOf(step);
    if (index == ko::Orvid::k_noIndex) {
        throw Clash(placeName(holder) + " is an array, and \"" + step + "\" is no index", &holder);
    }
    return makeItem(holder, index, gaps);
}

}  // namespace

bool isIndex(const std::string& step) { return indexOf(step) != ko::Orvid::k_noIndex; }

ValueSteps stepsOf(const std::string& path) {
    ValueSteps steps;
    withPath(path, [&steps](const ko::Orvid::Path& text) {
        for (ko::Orvid::PathStep& step : text.steps()) {
            steps.push_back(
                {step.key.has_value(), std::move(step.key).value_or(std::string()), step.index});
        }
    });
    return steps;
}

std::string pathOf(const ValueSteps& steps) {
    std::ostringstream path;
    ko::Orvid::PathGenerator generator(path);
    for (const ValueStep& step : steps) {
        if (step.isKey) {
            generator.genObjectProperty(step.key);
        } else {
            generator.genListItem(step.index);
        }
    }
    return path.str();
}

bool Gaps::take(std::uint64_t count) {
    if (count > m_left) {
        return false;
    }
    m_left -= count;
    return true;
}

Element& makeAt(Element& root, const ValueSteps& steps, Gaps& gaps) {
    Element* element = &root;
    for (const ValueStep& step : steps) {
        if (!step.isKey && step.index == ko::Orvid::k_noIndex) {
            throw Clash("[*] is no place");
        }
        element =
            step.isKey ? &makeMember(*element, step.key) : &makeItem(*element, step.index, gaps);
    }
    return *element;
}

Element& makeAt(Element& root, const ko::Orvid::JsonPointer& pointer, Gaps& gaps) {
    Element* element = &root;
    for (const std::string& step : pointer.steps()) {
        element = &makeStep(*element, step, gaps);
    }
    return *element;
}

}  // namespace orvid_tool
