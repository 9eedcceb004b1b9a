// SPDX-License-Identifier: MIT
//
// The operations are undone from the last to the first, not in the tree but in the steps to the
// element alone. As long as nothing above it was put there, what is above it stays the same.

#include "change/PlaceBefore.h"

#include <ko/Orvid/Array.h>
#include <ko/Orvid/Object.h>

#include <string>
#include <vector>

#include "change/PointerStep.h"

namespace ko::Orvid {

namespace {

/// One step to the element, and what it leads on from.
struct Level {
    std::string key;        ///< in an object
    bool isItem;            ///< in an array
    std::size_t index;      ///< in the array
    std::size_t arraySize;  ///< of the array
};

class StepsBack {
public:
    StepsBack(const Element& target, const std::vector<std::string>& steps) {
        const Element* container = &target;
        for (const std::string& step : steps) {
            const bool isItem = container->isArray();
            m_levels.push_back({step, isItem, isItem ? *pointerIndex(step) : 0,
                                isItem ? container->array().size() : 0});
            container = childAtStep(*container, step);
        }
    }

    /// Returns false where the operation put the element there, or something that it lies in.
    bool undo(const Element& operation) {
        const std::string& name = operation.object().at("op").string();
        const JsonPointer path = pointerAt(operation, "path");
        if (name == "test") {
            return true;
        }
        if (name == "remove") {
            undoTake(path);
            return true;
        }
        if (name == "replace") {
            return !begins(path, path.steps().size());
        }
        return name == "move" ? undoMove(pointerAt(operation, "from"), path) : undoPut(path);
    }

    void undoTake(const JsonPointer& path) {
        Level* const level = besides(path);
        if (level == nullptr || !level->isItem) {
            return;
        }
        ++level->arraySize;
        if (*pointerIndex(path.steps().back()) <= level->index) {
            ++level->index;
        }
    }

    void appendTo(JsonPointer& pointer) const {
        for (const Level& level : m_levels) {
            pointer.push_back(level.isItem ? std::to_string(level.index) : level.key);
        }
    }

private:
    static JsonPointer pointerAt(const Element& operation, const char* key) {
        return JsonPointer(operation.object().at(key).string());
    }

    /// Whether the first `count` steps of the pointer are those to the element, or to what is
    /// above.
    bool begins(const JsonPointer& pointer, std::size_t count) const {
        if (count > m_levels.size()) {
            return false;
        }
        for (std::size_t i = 0; i < count; ++i) {
            const std::string& step = pointer.steps()[i];
            const Level& level = m_levels[i];
            if (level.isItem ? pointerIndex(step) != level.index : step != level.key) {
                return false;
            }
        }
        return true;
    }

    /// The step to the element from the container that the pointer's last step leads on from; null
    /// where the element is not in that.
    Level* besides(const JsonPointer& pointer) {
        const std::size_t last = pointer.steps().size() - 1;
        return last < m_levels.size() && begins(pointer, last) ? &m_levels[last] : nullptr;
    }

    bool undoMove(const JsonPointer& from, const JsonPointer& path) {
        if (from == path) {
            return true;
        }
        const bool wasThere = undoPut(path);
        undoTake(from);
        return wasThere;
    }

    bool undoPut(const JsonPointer& path) {
        Level* const level = path.empty() ? nullptr : besides(path);
        if (level == nullptr) {
            return !path.empty();
        }
        const std::string& step = path.steps().back();
        if (!level->isItem) {
            return step != level->key;
        }
        --level->arraySize;
        const std::size_t put = step == k_afterLast ? level->arraySize : *pointerIndex(step);
        if (put < level->index) {
            --level->index;
            return true;
        }
        return put != level->index;
    }

    std::vector<Level> m_levels;
};

}  // namespace

std::optional<JsonPointer> placeBefore(const Element& element, const Element& target,
                                       const Element& patch, std::size_t done) {
    JsonPointer place = JsonPointer::of(target);
    const JsonPointer now = JsonPointer::of(element);
    const auto depth = static_cast<std::ptrdiff_t>(place.steps().size());
    StepsBack steps(target, {now.steps().begin() + depth, now.steps().end()});
    for (std::size_t i = done; i > 0; --i) {
        if (!steps.undo(patch.array()[i - 1])) {
            return std::nullopt;
        }
    }
    steps.appendTo(place);
    return place;
}

JsonPointer placeBeforeTaking(const Element& element, const Element& target,
                              const JsonPointer& taken) {
    StepsBack steps(target, JsonPointer::of(element, &target).steps());
    steps.undoTake(taken);
    JsonPointer place;
    steps.appendTo(place);
    return place;
}

}  // namespace ko::Orvid
