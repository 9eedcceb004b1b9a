// SPDX-License-Identifier: MIT
//
// The model's operations. They recurse: a script keeps its trees shallow.

#include "model/Value.h"

#include <algorithm>
#include <cstdlib>
#include <numeric>
#include <sstream>

namespace orvid_fuzz {

using ko::Orvid::Element;
using ko::Orvid::Path;

const std::vector<std::string> k_numbers = {"1", "2", "-1", "1.5", "1.0", "10e-1", "7", "0"};

std::string pathText(const Steps& steps) {
    std::ostringstream out;
    ko::Orvid::PathGenerator generator(out);
    for (const Step& step : steps) {
        step.isItem ? generator.genListItem(step.index) : generator.genObjectProperty(step.key);
    }
    return out.str();
}

std::size_t Value::size() const {
    return std::accumulate(children.begin(), children.end(), std::size_t{1},
                           [](std::size_t sum, const Value& child) { return sum + child.size(); });
}

std::size_t Value::depth() const {
    std::size_t deepest = 0;
    for (const Value& child : children) {
        deepest = std::max(deepest, child.depth());
    }
    return deepest + 1;
}

Value* Value::member(const std::string& wanted) {
    if (!isObject()) {
        return nullptr;
    }
    const auto found = std::find_if(children.begin(), children.end(),
                                    [&](const Value& child) { return child.key == wanted; });
    return found == children.end() ? nullptr : &*found;
}

Value& Value::memberOrNew(const std::string& wanted) {
    Value* const present = member(wanted);
    if (present != nullptr) {
        return *present;
    }
    children.emplace_back(ko::Orvid::etEmpty, "");
    children.back().key = wanted;
    return children.back();
}

void Value::append(const Value& value) {
    const Value copy = value;
    children.emplace_back();
    children.back().take(copy);
}

void Value::take(const Value& other) {
    type = other.type;
    text = other.text;
    children = other.children;
}

Value* Value::get(const Steps& steps) {
    Value* current = this;
    for (const Step& step : steps) {
        if (!step.isItem) {
            current = current->member(step.key);
        } else if (current->isArray() && step.index < current->children.size()) {
            current = &current->children[step.index];
        } else {
            return nullptr;
        }
        if (current == nullptr) {
            return nullptr;
        }
    }
    return current;
}

bool Value::create(const Steps& steps, const Value& value) {
    Value* current = this;
    for (const Step& step : steps) {
        if (current->isEmpty()) {
            current->type = step.isItem ? ko::Orvid::etArray : ko::Orvid::etObject;
        }
        if (current->type != (step.isItem ? ko::Orvid::etArray : ko::Orvid::etObject)) {
            return false;
        }
        if (!step.isItem) {
            current = &current->memberOrNew(step.key);
        } else if (step.index < current->children.size()) {
            current = &current->children[step.index];
        } else if (step.index == Path::k_noIndex) {
            current->children.emplace_back(ko::Orvid::etEmpty, "");
            current = &current->children.back();
        } else {
            return false;
        }
    }
    current->take(value);
    return true;
}

void Value::removeItems(const Value& value, const Steps& itemPath) {
    std::vector<Value> kept;
    bool isUnseen = false;  // the item that follows a removed one
    for (Value& child : children) {
        const Value* const compared = child.get(itemPath);
        const bool isRemoved = !isUnseen && compared != nullptr && value.equals(*compared);
        if (!isRemoved) {
            kept.push_back(child);
        }
        isUnseen = isRemoved;
    }
    children = kept;
}

std::size_t Value::findItem(const Value& value, const Steps& itemPath) {
    std::size_t position = 0;
    for (; position < children.size(); ++position) {
        Value* const compared = children[position].get(itemPath);
        if (compared != nullptr && value.equals(*compared)) {
            break;
        }
    }
    return position;
}

bool Value::equals(const Value& other) const {
    if (type != other.type) {
        return false;
    }
    if (type == ko::Orvid::etNumber) {
        return std::strtod(text.c_str(), nullptr) == std::strtod(other.text.c_str(), nullptr);
    }
    const auto same = [](const Value& a, const Value& b) { return a.key == b.key && a.equals(b); };
    return text == other.text && std::equal(children.begin(), children.end(),
                                            other.children.begin(), other.children.end(), same);
}

bool Value::hasEmpty() const {
    return isEmpty() || std::any_of(children.begin(), children.end(),
                                    [](const Value& child) { return child.hasEmpty(); });
}

namespace {

std::string quoted(const std::string& text) {
    std::string result = "\"";
    for (const char c : text) {
        if (static_cast<unsigned char>(c) < 0x20) {
            constexpr char digits[] = "0123456789abcdef";
            result += "\\u00";
            result += digits[c / 16];
            result += digits[c % 16];
            continue;
        }
        if (c == '"' || c == '\\') {
            result += '\\';
        }
        result += c;
    }
    return result + '"';
}

}  // namespace

std::string Value::json() const {
    switch (type) {
        case ko::Orvid::etObject:
        case ko::Orvid::etArray: {
            std::string result;
            for (const Value& child : children) {
                result += result.empty() ? "" : ",";
                result += (isObject() ? quoted(child.key) + ":" : "") + child.json();
            }
            return isObject() ? "{" + result + "}" : "[" + result + "]";
        }
        case ko::Orvid::etString:
            return quoted(text);
        case ko::Orvid::etNull:
            return "null";
        default:
            return text;
    }
}

namespace {

std::string scalarText(const Element& element) {
    switch (element.type()) {
        case ko::Orvid::etBoolean:
            return element.boolean() ? "true" : "false";
        case ko::Orvid::etNumber:
            return element.number().toString();
        case ko::Orvid::etString:
            return element.string();
        default:
            return "";
    }
}

std::string differenceAt(const Element& element, const std::string& what) {
    return what + " at \"" + element.path() + "\"";
}

std::string differenceOfMembers(const Value& value, const Element& element) {
    auto child = value.children.begin();
    for (const auto& member : element.object()) {
        if (member.first != child->key) {
            return differenceAt(member.second, "another key \"" + child->key + "\" in the model");
        }
        const std::string found = difference(*child++, member.second);
        if (!found.empty()) {
            return found;
        }
    }
    return "";
}

std::string differenceOfItems(const Value& value, const Element& element) {
    auto child = value.children.begin();
    for (const Element& item : element.array()) {
        const std::string found = difference(*child++, item);
        if (!found.empty()) {
            return found;
        }
    }
    return "";
}

}  // namespace

std::string difference(const Value& value, const Element& element) {
    if (element.type() != value.type) {
        return differenceAt(element, "another type in the model");
    }
    if (value.isObject()) {
        return element.object().size() == value.children.size()
                   ? differenceOfMembers(value, element)
                   : differenceAt(element, "another number of members in the model");
    }
    if (value.isArray()) {
        return element.array().size() == value.children.size()
                   ? differenceOfItems(value, element)
                   : differenceAt(element, "another number of items in the model");
    }
    return scalarText(element) == value.text ? ""
                                             : differenceAt(element, "another value in the model");
}

}  // namespace orvid_fuzz
