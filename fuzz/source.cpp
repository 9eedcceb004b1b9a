// SPDX-License-Identifier: MIT
//
// The bytes are choices of which a document with comments is made, and a script of edits. After
// each edit the text reads back as the tree, keeps what it must, and comes to rest: read again and
// written, it is the same. Undone, the edits leave the first bytes. Inputs that begin with a zero
// byte are a document as they are, and those that begin with a 1 make one with comments and
// whitespace in every place.

#include <ko/Orvid.h>

#include <cstddef>
#include <cstdint>
#include <random>
#include <string>

#include "Input.h"
#include "require.h"
#include "SameTree.h"
#include "support/CommentedJson.h"
#include "support/Links.h"
#include "support/RandomEdits.h"
#include "support/ScatteredJson.h"

namespace {

using ko::Orvid::Dom;
using ko::Orvid::Element;
using ko::Orvid::ReadOptions;
using orvid_fuzz::Input;
using orvid_fuzz::require;
using orvid_fuzz::SameTree;

ReadOptions withoutTrailingCommas() {
    ReadOptions options = ReadOptions::jsonc();
    options.allowTrailingCommas = false;
    return options;
}

bool isRead(const std::string& text, const ReadOptions& options) {
    return !orvid_fuzz::throws<ko::Orvid::ParseException>([&] { Dom::parse(text, options); });
}

/// A number keeps the token that has its value, so the letter may differ where the value does not.
void checkText(const Dom& dom, const ReadOptions& options) {
    const std::string text = dom.text();
    const Dom back = Dom::parse(text, options);
    require(SameTree::compare(*back, *dom) || *back == *dom, "the text reads back as the tree");
    require(back.text() == text, "a text without an edit is the same");
}

std::string documentOf(Input& input, unsigned firstByte, const orvid_test::Choice& choose) {
    if (firstByte > 1) {
        return orvid_test::makeCommentedJson(choose).text;
    }
    input.byte();
    return firstByte == 0 ? input.textUntil('\0') : orvid_test::makeScatteredJson(choose);
}

void edit(const std::string& text, Input& input, const ReadOptions& options) {
    constexpr unsigned mostEdits = 6;
    std::minstd_rand random(2);
    const orvid_test::Choice choose = [&](unsigned count) {
        return input.left() > 0 ? input.below(count) : static_cast<unsigned>(random() % count);
    };
    Dom dom = Dom::parse(text, options);
    require(dom.text() == text, "a text without an edit is the same");
    const Element former = *dom;
    orvid_test::RandomEdits edits(choose);
    for (unsigned i = 0; i < mostEdits && input.left() > 0; ++i) {
        edits.run(*dom);
        orvid_fuzz::requireNone(brokenLink(*dom, orvid_test::Indexes::exactOrZero));
        checkText(dom, options);
    }
    *dom = former;
    require(dom.text() == text, "a text with all edits undone is the same");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    Input input(bytes, size);
    // Choices that the input does not make are made at random, or they might never come to an end.
    std::minstd_rand random(1);
    const orvid_test::Choice choose = [&](unsigned count) {
        return input.left() > 0 ? input.below(count) : static_cast<unsigned>(random() % count);
    };
    const std::string text = documentOf(input, size > 0 ? bytes[0] : 2U, choose);
    if (isRead(text, ReadOptions::jsonc())) {
        edit(
            text, input,
            isRead(text, withoutTrailingCommas()) ? withoutTrailingCommas() : ReadOptions::jsonc());
    }
    return 0;
}
