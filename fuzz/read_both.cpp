// SPDX-License-Identifier: MIT
//
// The same text for a DomParser, whose scanner builds the tree, and for a subclass, which gets the
// events of YAJL's reader: whole, in a stream and fed in pieces, with any options, nobody may see a
// difference.

#include <ko/Orvid.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "Input.h"
#include "require.h"
#include "support/BothReaders.h"

namespace {

using ko::Orvid::ReadOptions;
using orvid_fuzz::Input;

ReadOptions chooseOptions(Input& input) {
    const unsigned preset = input.below(4);
    ReadOptions options = preset == 1   ? ReadOptions::strict()
                          : preset == 2 ? ReadOptions::jsonc()
                                        : ReadOptions();
    if (preset == 3) {
        const unsigned bits = input.byte();
        options.requireWholeDocument = (bits & 1U) != 0;
        options.validateUtf8 = (bits & 2U) != 0;
        options.rejectLoneSurrogates = (bits & 4U) != 0;
        options.allowComments = (bits & 8U) != 0;
        options.allowTrailingCommas = (bits & 16U) != 0;
        options.allowOtherWhitespace = (bits & 32U) != 0;
        options.repeatedKeys =
            (bits & 64U) != 0 ? ko::Orvid::RepeatedKeys::reject : ko::Orvid::RepeatedKeys::replace;
        options.maxDepth = (bits & 128U) != 0 ? input.byte() : 0;
        options.maxLength = (bits & 128U) != 0 ? input.byte() : 0;
        options.maxLineLength = (bits & 128U) != 0 ? input.byte() : 0;
    }
    return options;
}

std::vector<std::string> cut(const std::string& text, const std::string& sizes) {
    std::vector<std::string> pieces;
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t size =
            sizes.empty() ? text.size()
                          : static_cast<unsigned char>(sizes[pieces.size() % sizes.size()]);
        pieces.push_back(text.substr(at, size));
        // An empty piece changes nothing, but two in a row would never end.
        at += pieces.back().size();
        if (size == 0) {
            pieces.push_back(text.substr(at++, 1));
        }
    }
    return pieces;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    Input input(bytes, size);
    const ReadOptions options = chooseOptions(input);
    const std::string more = input.textUntil('\n').substr(0, 4);
    const std::string sizes = input.textUntil('\n');
    orvid_fuzz::requireNone(orvid_test::readersDiffer(options, cut(input.rest(), sizes), more));
    return 0;
}
