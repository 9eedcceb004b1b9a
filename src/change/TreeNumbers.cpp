// SPDX-License-Identifier: MIT
//
// Numbering from the leaves up: a container is the list of the numbers of what it holds, those of
// an object in a fixed order.

#include "change/TreeNumbers.h"

#include <ko/Orvid/Array.h>
#include <ko/Orvid/Object.h>

#include <algorithm>
#include <string>
#include <utility>

#include "tree/Tree.h"

namespace ko::Orvid {

namespace {

std::uint64_t escapedLength(char c) {
    constexpr std::string_view shortEscapes = "\"\\\b\f\n\r\t";
    constexpr std::uint64_t shortEscape = 2;
    constexpr std::uint64_t longEscape = 6;
    constexpr unsigned char firstPlain = 0x20;
    if (shortEscapes.find(c) != std::string_view::npos) {
        return shortEscape;
    }
    return static_cast<unsigned char>(c) < firstPlain ? longEscape : 1;
}

std::uint64_t lengthOf(EType type, std::string_view text) {
    return type == etString ? quotedLength(text) : text.size();
}

/// The containers of a tree, each before those within it.
std::vector<const Element*> containersOf(const Element& root) {
    std::vector<const Element*> containers;
    const auto enter = [&](const Element& element) {
        if (isContainer(element.data())) {
            containers.push_back(&element);
        }
    };
    enter(root);
    for (std::size_t i = 0; i < containers.size(); ++i) {
        const Element& element = *containers[i];
        if (element.isArray()) {
            for (const Element& item : element.array()) {
                enter(item);
            }
        } else {
            for (const auto& member : element.object()) {
                enter(member.second);
            }
        }
    }
    return containers;
}

/// Two brackets, and a comma between each two of so many.
std::uint64_t punctuationLength(std::size_t count) { return 2 + (count > 1 ? count - 1 : 0); }

}  // namespace

std::uint64_t quotedLength(std::string_view text) {
    std::uint64_t length = 2;
    for (const char c : text) {
        length += escapedLength(c);
    }
    return length;
}

std::size_t TreeNumbers::Hasher::operator()(const Scalar& scalar) const noexcept {
    return static_cast<std::size_t>(hash.of(scalar.text));
}

std::size_t TreeNumbers::Hasher::operator()(const Numbers& numbers) const noexcept {
    const auto* const bytes = static_cast<const char*>(static_cast<const void*>(numbers.data()));
    return static_cast<std::size_t>(hash.of({bytes, numbers.size() * sizeof(std::size_t)}));
}

TreeNumbers::TreeNumbers() : m_scalars(0, m_hasher), m_contents(0, m_hasher) {}

void TreeNumbers::add(const Element& root) {
    if (!isContainer(root.data())) {
        numberOf(scalarOf(root));
        return;
    }
    const std::vector<const Element*> containers = containersOf(root);
    for (auto container = containers.rbegin(); container != containers.rend(); ++container) {
        const Element& element = **container;
        m_containers[&element] =
            element.isArray() ? numberOfArray(element.array()) : numberOfObject(element.object());
    }
}

std::size_t TreeNumbers::of(const Element& element) const {
    return isContainer(element.data()) ? m_containers.at(&element)
                                       : m_scalars.at(scalarOf(element));
}

TreeNumbers::Numbers TreeNumbers::ofItems(const Element::TArray& items) const {
    Numbers numbers;
    numbers.reserve(items.size());
    for (const Element& item : items) {
        numbers.push_back(of(item));
    }
    return numbers;
}

TreeNumbers::Scalar TreeNumbers::scalarOf(const Element& element) {
    switch (element.type()) {
        case etBoolean:
            return {etBoolean, element.boolean() ? "true" : "false"};
        case etNumber:
            return {etNumber, element.number().toString()};
        case etString:
            return {etString, element.string()};
        case etNull:
            return {etNull, "null"};
        default:
            return {element.type(), ""};
    }
}

std::size_t TreeNumbers::numberOf(const Scalar& scalar) {
    const auto [found, isNew] = m_scalars.try_emplace(scalar, m_lengths.size());
    if (isNew) {
        m_lengths.push_back(lengthOf(scalar.type, scalar.text));
    }
    return found->second;
}

std::size_t TreeNumbers::numberOf(const Element& child) {
    return isContainer(child.data()) ? m_containers.at(&child) : numberOf(scalarOf(child));
}

std::size_t TreeNumbers::numberOf(Numbers&& content, std::uint64_t length) {
    const auto [found, isNew] = m_contents.try_emplace(std::move(content), m_lengths.size());
    if (isNew) {
        m_lengths.push_back(length);
    }
    return found->second;
}

std::size_t TreeNumbers::numberOfObject(const Element::TObject& object) {
    std::vector<std::pair<std::size_t, std::size_t>> members;
    members.reserve(object.size());
    std::uint64_t length = punctuationLength(object.size()) + object.size();
    for (const auto& [key, value] : object) {
        members.emplace_back(numberOf(Scalar{etString, key}), numberOf(value));
        length += m_lengths[members.back().first] + m_lengths[members.back().second];
    }
    std::sort(members.begin(), members.end());
    Numbers content{etObject};
    content.reserve(1 + 2 * members.size());
    for (const auto& [key, value] : members) {
        content.push_back(key);
        content.push_back(value);
    }
    return numberOf(std::move(content), length);
}

std::size_t TreeNumbers::numberOfArray(const Element::TArray& array) {
    Numbers content{etArray};
    content.reserve(1 + array.size());
    std::uint64_t length = punctuationLength(array.size());
    for (const Element& item : array) {
        content.push_back(numberOf(item));
        length += m_lengths[content.back()];
    }
    return numberOf(std::move(content), length);
}

}  // namespace ko::Orvid
