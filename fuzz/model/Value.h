// SPDX-License-Identifier: MIT
//
// Value, a plain model of a JSON value made of standard containers, and the operations by path that
// the tree has, written in the simplest way: no links, no addresses, a copy for every argument.

#pragma once

#include <ko/Orvid.h>

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

namespace orvid_fuzz {

/// A step of a path: a key, or an index, which may be Path::k_noIndex.
struct Step {
    bool isItem = false;
    std::string key;
    unsigned int index = 0;
};

using Steps = std::vector<Step>;

/// The steps as path text.
std::string pathText(const Steps& steps);

struct Value {
    ko::Orvid::EType type = ko::Orvid::etNull;
    std::string key;   ///< under which this is a member; empty elsewhere
    std::string text;  ///< of a string, a number, or a boolean ("true" and "false")
    std::vector<Value> children;

    Value() = default;
    Value(ko::Orvid::EType valueType, std::string valueText)
        : type(valueType), text(std::move(valueText)) {}

    bool isObject() const { return type == ko::Orvid::etObject; }
    bool isArray() const { return type == ko::Orvid::etArray; }
    bool isEmpty() const { return type == ko::Orvid::etEmpty; }

    /// How many values there are in it, itself counted.
    std::size_t size() const;
    std::size_t depth() const;

    Value* member(const std::string& wanted);
    /// The member with the key, appended with an empty value when it is not there.
    Value& memberOrNew(const std::string& wanted);
    void append(const Value& value);
    /// Takes the other's value and keeps its own key. `other` must not be part of this value.
    void take(const Value& other);

    /// The value at the path, or null.
    Value* get(const Steps& steps);
    /// Makes the path and sets its end to the value. False where a step cannot be made; what was
    /// made before stays.
    bool create(const Steps& steps, const Value& value);
    /// Removes equal items; the one that follows a removed item is skipped.
    void removeItems(const Value& value, const Steps& itemPath);
    /// The position of the first equal item, or the number of items.
    std::size_t findItem(const Value& value, const Steps& itemPath);

    /// Whether the tree's comparison calls the two equal. Numbers must be among those of
    /// k_numbers.
    bool equals(const Value& other) const;
    bool hasEmpty() const;
    /// The value as JSON text; it must not hold empty values.
    std::string json() const;
};

/// Numbers whose comparison is that of their values.
extern const std::vector<std::string> k_numbers;

/// What differs between the value and the element, or nothing.
std::string difference(const Value& value, const ko::Orvid::Element& element);

}  // namespace orvid_fuzz
