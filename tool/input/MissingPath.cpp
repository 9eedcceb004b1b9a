// SPDX-License-Identifier: MIT
//
// Hints for the notations of other tools, for misspelt keys, and for steps below what has none.

#include "input/MissingPath.h"

#include <algorithm>
#include <optional>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "input/PathSteps.h"
#include "output/phrases.h"
#include "output/placeWord.h"
#include "output/shellWord.h"
#include "output/Similar.h"
#include "text/whitespace.h"

namespace orvid_tool {

namespace {

using ko::Orvid::Element;
using ko::Orvid::PathNotFound;
using ko::Orvid::text::k_whitespace;

/// The element at which the walk stopped; null where it is in no part of this document.
const Element* holderIn(const Element& root, const PathNotFound& error) {
    if (error.elementPath() == nullptr) {
        return nullptr;
    }
    try {
        if (error.elementPointer() != nullptr) {
            return ko::Orvid::JsonPointer(*error.elementPointer()).find(root);
        }
        return &root.get(*error.elementPath());
    } catch (const ko::Exception&) {
        return nullptr;
    }
}

std::vector<std::string> keysOf(const Element& object) {
    constexpr std::size_t most = 1000;
    std::vector<std::string> keys;
    for (const auto& member : object.object()) {
        if (keys.size() == most) {
            break;
        }
        keys.push_back(member.first);
    }
    return keys;
}

bool isNumber(const std::string& step) {
    return !step.empty() && step.find_first_not_of("0123456789") == std::string::npos;
}

/// The text as a key of a path.
std::string keyText(const std::string& key) {
    std::ostringstream text;
    ko::Orvid::PathGenerator(text).genObjectProperty(key);
    return text.str();
}

/// Whether the path goes on with the key as it is, and is at a next step after it.
bool goesOnWith(const std::string& path, std::size_t start, const std::string& key) {
    const std::size_t end = start + key.length();
    return path.compare(start, key.length(), key) == 0 &&
           (end == path.length() || path[end] == '.' || path[end] == '[');
}

/// Where a key of the object has dots or brackets in it that the path has without backslashes: how
/// to write the path. What is below the object begins at `start` of the path.
std::string escapeHint(const Element& object, const std::string& path, std::size_t start) {
    for (const std::string& key : keysOf(object)) {
        if (key.find_first_of(".[") != std::string::npos && goesOnWith(path, start, key)) {
            return "; for the key \"" + key + "\" write " +
                   shellWord(path.substr(0, start) + keyText(key) +
                             path.substr(start + key.length()));
        }
    }
    return "";
}

/// The same for the object at which the walk stopped or, where it went astray, the root.
std::string escapeHint(const Element& root, const Element& holder, const std::string& holderPath,
                       const std::string& path) {
    std::string hint;
    if (holder.isObject() && path.compare(0, holderPath.length() + 1, holderPath + ".") == 0) {
        hint = escapeHint(holder, path, holderPath.length() + 1);
    }
    return hint.empty() && root.isObject() ? escapeHint(root, path, 0) : hint;
}

/// Why a value of another type has no such step.
std::string mismatch(const Element& holder, const std::string& holderPath, bool isPointer,
                     const std::string& step) {
    const std::string text = placePhrase(holderPath) + " is " + typePhrase(holder);
    if (step == "length" && !isPointer && hasLength(holder)) {
        return lengthOf(holder, holderPath);
    }
    return holder.isArray() && isNumber(step) && !isPointer
               ? text + "; write " + shellWord(holderPath + "[" + step + "]")
               : text;
}

/// What writes the step below all items, where the array has items with such a member.
std::string itemsHint(const Element& array, const std::string& holderPath, const std::string& step,
                      const std::string& path) {
    const bool isBelow = path.compare(0, holderPath.length(), holderPath) == 0;
    if (!array.isArray() || array.size() == 0 || !isBelow || !array.item(0)->isObject() ||
        (step != "*" && !array.item(0)->contains(step))) {
        return "";
    }
    std::string rest = path.substr(holderPath.length());
    if (step == "*") {
        rest.erase(0, rest.find('*') + 1);
    } else if (rest.front() != '.') {
        rest.insert(0, ".");
    }
    const std::string call = queryCall(holderPath + "[*]" + rest);
    return call.empty() ? call : "; for all items: " + call;
}

/// Why an array has no such step of a JSON Pointer.
std::string noItem(const std::string& step) {
    if (step == "-") {
        return "\"-\" is the place after the last item";
    }
    const bool isIndex = isNumber(step) && (step.length() == 1 || step.front() != '0');
    return isIndex ? "there is no item " + step : "\"" + step + "\" is no index of an array";
}

/// The reason with the mark before it that a sentence has there.
std::string afterMark(const std::string& reason) {
    return (reason.rfind("there is no", 0) == 0 ? ", " : ": ") + reason;
}

/// Whether the words between the commas, of which there is one, are all keys of the object.
bool areKeysOf(const Element& object, const std::string& words) {
    std::size_t begin = 0;
    std::size_t count = 0;
    for (std::size_t end = 0; end != std::string::npos; begin = end + 1) {
        end = words.find(',', begin);
        if (!object.object().contains(words.substr(begin, end - begin))) {
            return false;
        }
        ++count;
    }
    return count > 1;
}

/// What to write in place of a path with a slash; the word to write follows.
constexpr const char* k_slashHint = "; steps are separated by dots, or all begin with a slash: ";

/// Whether a key that the object lacks seems to be several steps of a JSON Pointer. Keys with
/// slashes are common, and mostly there are several in an object.
bool seemsPointer(const Element& object, const std::string& key) {
    const std::string first = key.substr(0, key.find('/'));
    const std::string rest = key.substr(std::min(first.length() + 1, key.length()));
    const Element* const part = object.isObject() ? object.member(first) : nullptr;
    if (part == nullptr || rest.empty() || first == "." || first == "..") {
        return false;
    }
    const std::string step = rest.substr(0, rest.find('/'));
    const bool isStep = part->isArray() ? step == "-" || isIndex(step) : part->isObject();
    const std::vector<std::string> keys = keysOf(object);
    return isStep && std::none_of(keys.begin(), keys.end(), [](const std::string& other) {
               return other.find('/') != std::string::npos;
           });
}

/// What may have been meant by a key that is not there.
std::string hint(const Element& object, const std::string& holderPath, const std::string& step,
                 const std::string& path) {
    if (step == "$" && holderPath.empty() && path.size() > 1 && path.front() == '$') {
        return "; a path has no $, write " + shellWord(path.substr(path[1] == '.' ? 2 : 1));
    }
    if (step == "$" && path == step) {
        return "; for the whole document write ''";
    }
    if (step == "*") {
        const std::string call = queryCall(path);
        return call.empty() ? call : "; for all members: " + call;
    }
    if (areKeysOf(object, step)) {
        return "; each path is a word: get and remove have --also for further ones";
    }
    std::string similar = suggestion(step, keysOf(object));
    const bool isPointer = similar.empty() || seemsPointer(object, step);
    if (isPointer && step.find('/') != std::string::npos && path.front() != '/') {
        return k_slashHint + shellWord("/" + path);
    }
    const std::size_t dot = step.find('.');
    if (dot != std::string::npos && path.front() == '/' &&
        object.object().contains(step.substr(0, dot))) {
        return "; the steps of a JSON Pointer are separated by slashes";
    }
    return similar;
}

/// The key without whitespace at its beginning and its end.
std::string withoutEdges(const std::string& key) {
    const std::size_t begin = key.find_first_not_of(k_whitespace);
    return begin == std::string::npos
               ? ""
               : key.substr(begin, key.find_last_not_of(k_whitespace) + 1 - begin);
}

std::string pointerTo(const ValueSteps& steps) {
    ko::Orvid::JsonPointer pointer;
    for (const ValueStep& step : steps) {
        const bool isNewItem = !step.isKey && step.index == ko::Orvid::k_noIndex;
        pointer.push_back(step.isKey ? step.key : isNewItem ? "-" : std::to_string(step.index));
    }
    return pointer.str();
}

/// What makes a key that is missing on the way, and how the rest of the path, after what holds the
/// key, is written as one key.
std::string makeHint(const std::string& path, const std::string& holderPath) {
    const std::string before = holderPath.empty() ? "" : holderPath + ".";
    const std::size_t start = before.length();
    const std::string rest = path.compare(0, start, before) == 0 ? path.substr(start) : "";
    const bool mayBeKey = rest.find_first_of("[/\\") == std::string::npos && rest.find('.') != 0 &&
                          rest.find('.') != std::string::npos;
    return "; set makes what is missing" +
           (mayBeKey ? ", and as one key with a dot it is written " +
                           shellWord(path.substr(0, start) + keyText(rest))
                     : "");
}

/// The step from that element as it was typed, where the path is a JSON Pointer.
std::optional<std::string> stepOfPointer(const Element& holder, const std::string& path) {
    if (path.empty() || path.front() != '/') {
        return std::nullopt;
    }
    try {
        const ko::Orvid::JsonPointer pointer(path);
        const std::size_t depth = ko::Orvid::JsonPointer::of(holder).steps().size();
        return depth < pointer.steps().size() ? std::optional(pointer.steps()[depth])
                                              : std::nullopt;
    } catch (const ko::Orvid::ParseException&) {
        return std::nullopt;  // a path, whose first key has a slash
    }
}

/// Whether the step that is missing is an index, and no key or step of a pointer that looks so.
bool isIndexStep(const std::string& step, const std::optional<std::string>& typed) {
    return typed ? step == "[" + *typed + "]"
                 : step.length() > 2 && step.front() == '[' && step.back() == ']';
}

/// What is said beside what is missing, of a path at which something was to be put.
struct PlaceHints {
    std::string item;          ///< of an index
    bool isMadeBySet = false;  ///< of a key: whether another verb would make it
};

Failure missing(Location location, const Element& root, const PathNotFound& error,
                const std::string& path, const PlaceHints& hints) {
    location.setElement(error);
    const std::string holderPath = location.path && error.elementPath() ? *location.path : "";
    const std::string start = "path \"" + path + "\" not found";
    const std::string& step = error.key();
    const Element* const holder = holderIn(root, error);
    const bool isIndex =
        isIndexStep(step, holder == nullptr ? std::nullopt : stepOfPointer(*holder, path));
    std::string text = ", there is no \"" + step + "\"";
    const bool isPointer = !path.empty() && path.front() == '/';
    if (holder != nullptr && holder->isArray() && isPointer) {
        text = isIndex ? afterMark(noItem(step.substr(1, step.length() - 2))) + hints.item
                       : afterMark(noItem(step));
    } else if (holder != nullptr && (isIndex ? !holder->isArray() : !holder->isObject())) {
        text = ": " + mismatch(*holder, holderPath, location.isPointer, step);
        text += hints.item.empty() ? itemsHint(*holder, holderPath, step, path) : "";
    } else if (holder != nullptr && holder->isObject()) {
        text += hint(*holder, holderPath, step, path);
        text += hints.isMadeBySet ? makeHint(path, holderPath) : "";
    } else if (holder != nullptr) {
        text += hints.item;
    }
    const std::string escape =
        holder == nullptr || isPointer ? "" : escapeHint(root, *holder, holderPath, path);
    return {ExitStatus::failed, std::move(location), start + (escape.empty() ? text : escape)};
}

bool lacks(const Element& holder, const std::string& key) {
    return holder.isObject() && !holder.object().contains(key);
}

/// The call that sets what is there at all members and items of the path.
std::string setCall(const std::string& path) {
    return "orvid set --query " + queryWord(path) + " VALUE";
}

/// What the call sets is there already, which a path that goes on after the `*` does not say.
std::string haveIt(bool goesOn) { return goesOn ? " that have it already: " : ": "; }

std::string newItem(const CallPath& path) {
    return path.pointer() != nullptr ? "; the pointer to a new item ends in /-"
                                     : "; a new item is written [*]";
}

}  // namespace

std::string missingStep(const Element& holder, const std::string& step) {
    if (holder.isArray()) {
        return noItem(step);
    }
    return holder.isObject() ? "there is no \"" + step + "\"" + suggestion(step, keysOf(holder))
                             : placePhrase(placeWord(holder)) + " is " + typePhrase(holder);
}

bool hasLength(const Element& value) { return value.isArray() || value.isString(); }

std::string lengthOf(const Element& value, const std::string& path) {
    return placePhrase(path) + " is " + typePhrase(value) + "; its length: orvid length" +
           (path.empty() ? "" : " " + shellWord(path));
}

std::string dottedKeyHint(const Element& root, const std::string& path) {
    try {
        static_cast<void>(root.get(path));
    } catch (const PathNotFound& error) {
        const Element* const holder = holderIn(root, error);
        return holder == nullptr ? "" : escapeHint(root, *holder, *error.elementPath(), path);
    } catch (const ko::Exception&) {
        // It is reported when the path is followed.
    }
    return "";
}

std::string unusualKeyHint(const Element& root, const std::string& path) {
    ValueSteps before;
    bool isNew = false;
    for (const ValueStep& step : stepsOf(path)) {
        before.push_back(step);
        isNew = isNew || (!step.isKey && step.index == ko::Orvid::k_noIndex) ||
                !root.pathExists(pathOf(before));
        const std::string key = step.isKey ? withoutEdges(step.key) : step.key;
        if (isNew && key != step.key) {
            return "; its key \"" + step.key + "\" begins or ends with whitespace" +
                   (key.empty() ? "" : " (did you mean \"" + key + "\"?)");
        }
    }
    const bool isKey = isNew && before.back().isKey && before.back().key.length() > 1;
    const std::string last = isKey ? before.back().key : "";
    if (!last.empty() && (last.back() == '+' || last.back() == '-')) {
        before.back().key.pop_back();
        return !root.pathExists(pathOf(before))
                   ? ""
                   : "; its key ends in " + last.substr(last.length() - 1) + ", and there is \"" +
                         before.back().key + "\": set puts values in, it does not calculate";
    }
    return !last.empty() && last.back() == ':'
               ? "; its key \"" + last + "\" ends in a colon (did you mean \"" +
                     last.substr(0, last.length() - 1) + "\"?)"
               : "";
}

std::string globHint(const Element& root, const std::string& path) {
    const ValueSteps steps = stepsOf(path);
    for (auto step = steps.begin(); step != steps.end(); ++step) {
        const std::string before = pathOf({steps.begin(), step});
        const Element* const holder = ko::Orvid::Path::tryGetElement(before, root);
        const bool isNewItem = !step->isKey && step->index == ko::Orvid::k_noIndex;
        if (step->isKey && step->key == "*" && (holder == nullptr || lacks(*holder, step->key))) {
            const bool areMembers = holder != nullptr && holder->size() > 0;
            return "; its key is \"*\"" +
                   (areMembers
                        ? ", and for all members" + haveIt(step + 1 != steps.end()) + setCall(path)
                        : std::string());
        }
        if (isNewItem) {
            const bool areItems = holder != nullptr && holder->isArray() && holder->size() > 0;
            return areItems && step + 1 != steps.end()
                       ? "; [*] is a new item, and for all items" + haveIt(true) + setCall(path)
                       : "";
        }
    }
    return "";
}

std::string slashedKeyHint(const Element& root, const std::string& path) {
    const ValueSteps steps = stepsOf(path);
    const auto isNew = [&](const ValueStep& step) {
        const ValueSteps before(steps.data(), &step + 1);
        return !step.isKey || !root.pathExists(pathOf(before));
    };
    const auto step = std::find_if(steps.begin(), steps.end(), isNew);
    const ValueSteps before(steps.begin(), step);
    if (step == steps.end() || !step->isKey || !seemsPointer(root.get(pathOf(before)), step->key)) {
        return "";
    }
    return k_slashHint +
           shellWord(pointerTo(before) + "/" + step->key + pointerTo({step + 1, steps.end()}));
}

Failure missingPath(Location location, const Element& root, const PathNotFound& error) {
    return missing(std::move(location), root, error, error.path(), {});
}

Failure missingPlace(Location location, const Element& root, const PathNotFound& error,
                     const CallPath& path) {
    return missing(std::move(location), root, error, path.isPlain() ? error.path() : path.word(),
                   {newItem(path), false});
}

Failure missingHolder(Location location, const Element& root, const PathNotFound& error,
                      const CallPath& path) {
    return missing(std::move(location), root, error, path.isPlain() ? error.path() : path.word(),
                   {newItem(path), true});
}

}  // namespace orvid_tool
