// SPDX-License-Identifier: MIT
//
// Steps whose meaning depends on the text, looked up in it.

#include "edit/StepsInText.h"

#include <algorithm>
#include <cstddef>
#include <string>
#include <utility>
#include <vector>

#include "edit/ChildSink.h"
#include "output/Failure.h"
#include "text/scanWhole.h"
#include "text/TextLookup.h"

namespace orvid_tool {

namespace {

using ko::Orvid::JsonPointer;
using ko::Orvid::ReadOptions;

/// How many times the text is looked through for one path; each costs a pass. A tree, which the
/// caller falls back on, is cheaper than more.
constexpr std::ptrdiff_t k_mostLookups = 8;

struct ItemCounter : ChildSink<ItemCounter> {};

class Resolver {
public:
    Resolver(std::string_view text, const ReadOptions& options)
        : m_text(text), m_options(options) {}

    std::optional<ValueSteps> stepsOf(const JsonPointer& pointer) const {
        const std::vector<std::string>& words = pointer.steps();
        if (std::count_if(words.begin(), words.end(), mayBeIndex) > k_mostLookups) {
            return std::nullopt;
        }
        ValueSteps steps;
        for (const std::string& word : words) {
            std::optional<ValueStep> step = ValueStep{true, word, 0};
            if (mayBeIndex(word)) {
                step = stepBelow(steps, word);
            }
            if (word.empty() || !step) {
                return std::nullopt;
            }
            steps.push_back(std::move(*step));
        }
        return steps;
    }

    /// How many items the array at the path has.
    std::optional<std::size_t> itemsAt(const std::string& path) const {
        const auto array = ko::Orvid::text::lookUp(m_text, orvid_tool::stepsOf(path), m_options);
        ItemCounter counter;
        if (!array || array->front() != '[' ||
            !ko::Orvid::text::scanWhole(*array, m_options, counter)) {
            return std::nullopt;
        }
        return counter.count();
    }

private:
    static bool mayBeIndex(const std::string& word) { return word == "-" || isIndex(word); }

    /// A step that may be an index is one below an array, and a key below an object.
    std::optional<ValueStep> stepBelow(const ValueSteps& holder, const std::string& word) const {
        const auto value = ko::Orvid::text::lookUp(m_text, holder, m_options);
        if (!value || (value->front() != '[' && value->front() != '{')) {
            return std::nullopt;
        }
        if (value->front() == '{') {
            return ValueStep{true, word, 0};
        }
        return ValueStep{
            false,
            {},
            word == "-" ? ko::Orvid::k_noIndex : static_cast<unsigned int>(std::stoul(word))};
    }

    std::string_view m_text;
    const ReadOptions& m_options;
};

}  // namespace

std::optional<ValueSteps> stepsInText(std::string_view text, const CallPath& path,
                                      const ReadOptions& options) {
    const Resolver resolver(text, options);
    if (path.pointer() != nullptr) {
        return resolver.stepsOf(*path.pointer());
    }
    try {
        std::ptrdiff_t lookups = 0;
        const auto itemsAt = [&](const std::string& before) {
            return ++lookups > k_mostLookups ? std::nullopt : resolver.itemsAt(before);
        };
        const std::optional<std::string> plain = path.withCounts(itemsAt);
        return plain ? std::optional<ValueSteps>(stepsOf(*plain)) : std::nullopt;
    } catch (const Failure&) {
        return std::nullopt;
    }
}

ValueSteps plainSteps(const CallPath& path) {
    if (!path.isPlain() || path.word().substr(0, 1) == "$") {
        return {};
    }
    try {
        return stepsOf(path.word());
    } catch (const Failure&) {
        return {};
    }
}

}  // namespace orvid_tool
