// SPDX-License-Identifier: MIT
//
// What is read, written and read again is the same tree, and writing it again gives the same text.

#include <ko/Orvid.h>

#include <cstddef>
#include <cstdint>
#include <string>

#include "require.h"
#include "SameTree.h"
#include "support/Links.h"

namespace {

using ko::Orvid::DomParser;
using ko::Orvid::Element;
using ko::Orvid::Generator;
using ko::Orvid::ParseException;
using orvid_fuzz::require;

bool isComplete(Element& root, const std::string& text) {
    DomParser parser;
    const bool isMalformed =
        orvid_fuzz::throws<ParseException>([&] { parser.parse(root, text + "\n"); });
    return !isMalformed && parser.state() == 0;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    Element root;
    if (!isComplete(root, std::string(bytes, bytes + size))) {
        return 0;
    }
    Generator generator;
    const std::string written = generator.encode(root);
    if (generator.state() != 0) {
        require(generator.state() == 2,
                "only the depth keeps a tree that was read from being written");
        return 0;
    }
    Element again;
    require(isComplete(again, written), "what is written is complete JSON");
    orvid_fuzz::requireNone(orvid_test::brokenLink(again));
    require(orvid_fuzz::SameTree::compare(root, again), "what is written reads back the same");
    require(Generator().encode(again) == written, "it is written the same again");
    require(orvid_fuzz::SameTree::compare(root, Element(root)), "a copy is the same");
    return 0;
}
