// SPDX-License-Identifier: MIT
//
// The bytes are choices of which a document is made, and up to three edits of one kind, as a call
// of the command gives them. Made to excerpts of the text they must leave the bytes that the
// library leaves, edit by edit, or not be made; what the library refuses is never made. The places
// are given as paths, as JSON Pointers and with an index that counts from the end. Inputs that
// begin with a zero byte are a document as they are, and those that begin with 1, 2 or 3 make other
// documents than people write.

#include <ko/Orvid.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include "edit/ExcerptEdit.h"
#include "Input.h"
#include "output/Failure.h"
#include "require.h"
#include "support/CommentedJson.h"
#include "support/PlaceEdits.h"
#include "support/ScatteredJson.h"
#include "support/WideJson.h"

namespace {

using ko::Orvid::Dom;
using ko::Orvid::Element;
using ko::Orvid::ReadOptions;
using orvid_fuzz::Input;
using orvid_fuzz::require;
using orvid_test::Choice;
using orvid_test::PlaceChange;
using orvid_tool::Bytes;

/// What the library makes of the text; nothing where it refuses the edit.
std::optional<std::string> editedWhole(const std::string& text, const PlaceChange& edit) {
    Dom document = Dom::parse(text);
    try {
        edit(*document, edit.path);
        return document.text();
    } catch (const ko::Exception&) {
        return std::nullopt;
    } catch (const orvid_tool::Failure&) {
        return std::nullopt;
    }
}

/// The same for several, each in the text that the one before it leaves.
std::optional<std::string> editedWhole(std::string text, const std::vector<PlaceChange>& edits) {
    for (const PlaceChange& edit : edits) {
        std::optional<std::string> next = editedWhole(text, edit);
        if (!next) {
            return std::nullopt;
        }
        text = std::move(*next);
    }
    return text;
}

/// How a call names the place.
enum class Notation { path, pointer, fromEnd };

std::string pointerOf(const std::string& path) {
    ko::Orvid::JsonPointer pointer;
    for (const orvid_tool::ValueStep& step : orvid_tool::stepsOf(path)) {
        pointer.push_back(step.isKey                           ? step.key
                          : step.index == ko::Orvid::k_noIndex ? "-"
                                                               : std::to_string(step.index));
    }
    return pointer.str();
}

/// The path with its first index counted from the end, where an item is there.
std::string fromEnd(std::string_view text, const std::string& path) {
    const orvid_tool::ValueSteps steps = orvid_tool::stepsOf(path);
    const auto isIndex = [](const orvid_tool::ValueStep& step) { return !step.isKey; };
    const auto first = std::find_if(steps.begin(), steps.end(), isIndex);
    if (first == steps.end()) {
        return path;
    }
    const std::string holder = orvid_tool::pathOf({steps.begin(), first});
    const Dom document = Dom::parse(text);
    const std::size_t size =
        (*document).pathExists(holder) ? (*document).get(holder).size() : std::size_t{0};
    if (first->index >= size) {
        return path;
    }
    const std::string rest = orvid_tool::pathOf({first + 1, steps.end()});
    return holder + "[-" + std::to_string(size - first->index) + "]" +
           (rest.empty() || rest.front() == '[' ? "" : ".") + rest;
}

bool editExcerpts(const std::string& text, const std::vector<PlaceChange>& edits, Notation notation,
                  Bytes& out) {
    const auto edit = [&](std::string_view before, std::size_t index) {
        const PlaceChange& change = edits[index];
        const orvid_tool::CallPath path(notation == Notation::pointer ? pointerOf(change.path)
                                        : notation == Notation::fromEnd
                                            ? fromEnd(before, change.path)
                                            : change.path);
        return orvid_tool::editExcerpt(before, path, change.inExcerpt(), ReadOptions::jsonc());
    };
    return orvid_tool::editInTurn(text, edits.size(), edit, out);
}

/// Edits of one kind, each for the text that the one before it leaves; the last may be refused.
std::vector<PlaceChange> makeEdits(std::string text, const Choice& choose) {
    constexpr unsigned most = 3;
    const orvid_test::PlaceEdits places(choose);
    const orvid_tool::PlaceEdit kind = places.anyKind();
    std::vector<PlaceChange> edits;
    for (unsigned left = 1 + choose(most); left > 0; --left) {
        Dom document = Dom::parse(text);
        const PlaceChange change = places.next(*document, kind);
        if (change.kind != kind) {
            break;
        }
        edits.push_back(change);
        std::optional<std::string> next = editedWhole(text, change);
        if (!next) {
            break;
        }
        text = std::move(*next);
    }
    return edits;
}

std::string documentOf(Input& input, unsigned firstByte, const Choice& choose) {
    if (firstByte > 3) {
        return orvid_test::makeCommentedJson(choose).text;
    }
    input.byte();
    switch (firstByte) {
        case 0:
            return input.textUntil('\0');
        case 1:
            return orvid_test::makeScatteredJson(choose);
        case 2:
            return orvid_test::makeWideJson(choose);
        default:
            return orvid_test::makeRows(choose, choose(2) == 0);
    }
}

bool isContainer(const std::string& text) {
    bool is = false;
    orvid_fuzz::throws<ko::Orvid::ParseException>([&] {
        const Dom document = Dom::parse(text);
        is = (*document).isObject() || (*document).isArray();
    });
    return is;
}

void checkExcerpts(const std::string& text, const std::vector<PlaceChange>& edits,
                   Notation notation, const std::optional<std::string>& whole) {
    Bytes out;
    const bool isMade = editExcerpts(text, edits, notation, out);
    require(!isMade || whole, "what the library refuses is not made");
    if (isMade && out.view() != *whole) {
        std::string problem = "the excerpts give other bytes:\n" + text + "\n--\n";
        for (const PlaceChange& edit : edits) {
            problem += std::to_string(static_cast<int>(edit.kind)) + " " + edit.path + " " +
                       edit.value + "\n";
        }
        orvid_fuzz::fail(problem + "-- excerpts:\n" + std::string(out.view()) + "\n-- whole:\n" +
                         *whole);
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    Input input(bytes, size);
    // Choices that the input does not make are made at random, or they might never come to an end.
    std::minstd_rand random(1);
    const Choice choose = [&](unsigned count) {
        constexpr unsigned mostOfByte = 256;
        if (input.left() == 0) {
            return static_cast<unsigned>(random() % count);
        }
        return count <= mostOfByte ? input.below(count)
                                   : (input.byte() * mostOfByte + input.byte()) % count;
    };
    const std::string text = documentOf(input, size > 0 ? bytes[0] : 4U, choose);
    if (!isContainer(text)) {
        return 0;
    }
    const std::vector<PlaceChange> edits = makeEdits(text, choose);
    if (edits.empty()) {
        return 0;
    }
    const std::optional<std::string> whole = editedWhole(text, edits);
    checkExcerpts(text, edits, Notation::path, whole);
    if (whole) {
        checkExcerpts(text, edits, Notation::pointer, whole);
        checkExcerpts(text, edits, Notation::fromEnd, whole);
    }
    return 0;
}
