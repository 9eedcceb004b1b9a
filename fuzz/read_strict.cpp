// SPDX-License-Identifier: MIT
//
// Reading under options. What they refuse, they refuse in the same place with the same message
// whether the text comes whole or from a stream in pieces; what the strict preset takes, the
// lenient reading takes to the same tree.

#include <ko/Orvid.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <sstream>
#include <string>

#include "Input.h"
#include "require.h"
#include "SameTree.h"
#include "support/Links.h"

namespace {

using ko::Orvid::DomParser;
using ko::Orvid::Element;
using ko::Orvid::ParseException;
using ko::Orvid::ReadOptions;
using orvid_fuzz::Input;
using orvid_fuzz::require;
using orvid_fuzz::requireNone;
using orvid_fuzz::SameTree;

struct Outcome {
    std::string error;  ///< with its place; empty when the text was taken
    unsigned long long position = 0;
    int state = 0;
};

/// The outcome of an action that feeds the parser.
template<class Feed>
Outcome read(Element& root, const ReadOptions& options, const Feed& feed) {
    DomParser parser(options);
    Outcome outcome;
    try {
        feed(parser);
    } catch (const ParseException& error) {
        outcome.error = error.message() + " at " + std::to_string(error.firstLine()) + "," +
                        std::to_string(error.firstColumn());
    }
    outcome.position = parser.position();
    outcome.state = parser.state();
    requireNone(orvid_test::brokenLink(root));
    return outcome;
}

Outcome readWhole(Element& root, const ReadOptions& options, const std::string& text) {
    return read(root, options, [&](DomParser& parser) { parser.parse(root, text); });
}

Outcome readStream(Element& root, const ReadOptions& options, const std::string& text) {
    std::istringstream in(text);
    return read(root, options, [&](DomParser& parser) { parser.parse(root, in); });
}

Outcome readPieces(Element& root, const ReadOptions& options, const std::string& text,
                   const std::string& sizes) {
    return read(root, options, [&](DomParser& parser) {
        parser.begin(root);
        std::size_t piece = 0;
        for (std::size_t fed = 0; fed < text.size();) {
            const char size = sizes.empty() ? '\0' : sizes[piece++ % sizes.size()];
            const std::size_t length =
                std::min(static_cast<unsigned char>(size) + std::size_t{1}, text.size() - fed);
            // A copy of its own, so that reading beyond the piece shows.
            parser.feed(std::string(text, fed, length));
            fed += length;
        }
        parser.finish();
    });
}

void compare(const Outcome& whole, const Outcome& pieces, bool comparesText) {
    if (comparesText ? whole.error != pieces.error : whole.error.empty() != pieces.error.empty()) {
        orvid_fuzz::fail("pieces give another error:\n" + whole.error + "\n" + pieces.error);
    }
    require(whole.state == pieces.state, "pieces give the state of the whole text");
    require(!whole.error.empty() || whole.position == pieces.position,
            "pieces stop where the whole text does");
}

ReadOptions chooseOptions(Input& input) {
    ReadOptions options = input.flag() ? ReadOptions::strict() : ReadOptions();
    const unsigned bits = input.byte();
    options.requireWholeDocument ^= (bits & 1U) != 0;
    options.validateUtf8 ^= (bits & 2U) != 0;
    options.rejectLoneSurrogates ^= (bits & 4U) != 0;
    options.allowComments ^= (bits & 8U) != 0;
    options.allowOtherWhitespace ^= (bits & 16U) != 0;
    options.allowTrailingCommas = options.requireWholeDocument && (bits & 24U) == 24U;
    if ((bits & 32U) != 0) {
        options.repeatedKeys = ko::Orvid::RepeatedKeys::reject;
    }
    options.maxDepth = (bits & 64U) != 0 ? input.byte() : 0;
    options.maxLength = (bits & 128U) != 0 ? input.byte() : 0;
    options.maxLineLength = (bits & 128U) != 0 ? input.byte() : 0;
    return options;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    if (size == 0) {
        return 0;
    }
    Input input(bytes, size);
    const ReadOptions options = chooseOptions(input);
    const std::string sizes = input.textUntil('\n');
    const std::string text = input.rest();

    // Without options an error is reported by what the reader saw of the piece.
    const bool comparesText = bytes[0] % 2 != 0 || (size > 1 && bytes[1] != 0);

    Element whole;
    const Outcome fromText = readWhole(whole, options, text);
    Element streamed;
    compare(fromText, readStream(streamed, options, text), comparesText);
    require(SameTree::compare(whole, streamed), "a stream gives the tree of the text");
    Element pieced;
    const Outcome fromPieces = readPieces(pieced, options, text, sizes);
    // finish() ends a number that the end of a text leaves open otherwise.
    if (options.requireWholeDocument) {
        compare(fromText, fromPieces, comparesText);
        require(SameTree::compare(whole, pieced), "pieces give the tree of the whole text");
    }

    // Lenient reading knows no trailing commas; all else that options take, it takes too.
    if (fromText.error.empty() && !options.allowTrailingCommas) {
        Element lenient;
        // The newline ends a number, which no later text would do.
        const std::string end = options.requireWholeDocument ? "\n" : "";
        const Outcome again = readWhole(lenient, ReadOptions(), text + end);
        require(again.error.empty(), "what is taken under options is taken leniently");
        require(!options.requireWholeDocument || SameTree::compare(whole, lenient),
                "a whole document reads the same leniently");
    }
    return 0;
}
