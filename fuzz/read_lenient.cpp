// SPDX-License-Identifier: MIT
//
// Reading hostile text as leniently as the library does. Whatever the text is, there is a tree or a
// ParseException, and all links hold; text that is fed in pieces gives the same events and the same
// tree as text that is fed whole.

#include <ko/Orvid.h>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <sstream>
#include <string>

#include "Input.h"
#include "require.h"
#include "support/Links.h"
#include "support/RecordingListener.h"

namespace {

using ko::Orvid::CallbackParser;
using ko::Orvid::DomParser;
using ko::Orvid::Element;
using ko::Orvid::Exception;
using ko::Orvid::Generator;
using ko::Orvid::ParseException;
using orvid_fuzz::require;
using orvid_fuzz::requireNone;
using orvid_fuzz::throws;
using orvid_test::RecordingListener;

/// What a parser says of a text.
struct Outcome {
    std::string events;
    int state = 0;
    unsigned long long position = 0;
    bool isMalformed = false;
};

/// `sizes` gives the length of each piece in turn; empty feeds the text whole.
Outcome eventsOf(const std::string& text, const std::string& sizes, bool numbersAsText) {
    RecordingListener listener;
    listener.numbersAsText = numbersAsText;
    CallbackParser parser(&listener);
    Outcome outcome;
    outcome.isMalformed = throws<Exception>([&] {
        std::size_t piece = 0;
        for (std::size_t fed = 0; fed < text.size();) {
            const auto wanted =
                sizes.empty()
                    ? text.size()
                    : static_cast<unsigned char>(sizes[piece++ % sizes.size()]) + std::size_t{1};
            const std::size_t length = std::min(wanted, text.size() - fed);
            // A copy of its own, so that reading beyond the piece shows.
            const std::unique_ptr<char[]> copy(new char[length]);
            text.copy(copy.get(), length, fed);
            parser.parse(copy.get(), static_cast<unsigned int>(length));
            fed += length;
        }
    });
    outcome.events = listener.words;
    outcome.state = parser.state();
    outcome.position = parser.position();
    return outcome;
}

void comparePieces(const std::string& text, const std::string& sizes, bool numbersAsText) {
    const Outcome whole = eventsOf(text, "", numbersAsText);
    const Outcome pieces =
        eventsOf(text, sizes.empty() ? std::string(1, '\0') : sizes, numbersAsText);
    require(whole.events == pieces.events, "pieces give the events of the whole text");
    require(whole.state == pieces.state, "pieces give the state of the whole text");
    require(whole.isMalformed == pieces.isMalformed, "pieces are malformed when the whole text is");
    require(whole.isMalformed || whole.position == pieces.position,
            "pieces stop where the whole text does");
}

void readTree(const std::string& text, Element& root) {
    DomParser parser;
    const bool isMalformed = throws<ParseException>([&] { parser.parse(root, text); });
    require(isMalformed == (parser.state() == 3), "only text that is no JSON is refused");
    require((parser.openElement() != nullptr) == (parser.state() == 2),
            "the open element is known when the text ends early");
    requireNone(orvid_test::brokenLink(root));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    orvid_fuzz::Input input(bytes, size);
    const bool numbersAsText = !input.flag();
    const std::string sizes = input.textUntil('\n');
    const std::string text = input.rest();
    comparePieces(text, sizes, numbersAsText);

    Element whole;
    readTree(text, whole);
    Element streamed;
    std::istringstream in(text);
    const bool isMalformed = throws<ParseException>([&] { DomParser().parse(streamed, in); });
    requireNone(orvid_test::brokenLink(streamed));
    require(Generator().encode(whole) == Generator().encode(streamed),
            "a stream gives the tree of the text");
    require(isMalformed == throws<ParseException>([&] { DomParser().parse(whole, text); }),
            "a stream is malformed when its text is");
    return 0;
}
