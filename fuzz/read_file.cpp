// SPDX-License-Identifier: MIT
//
// As read_both, for a file: a text that lies where a DomParser's pieces of a file end, which inputs
// of a fuzzer would be too short for. Before it stand the beginning of a document and a filler.

#include <ko/Orvid.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <string>

#include "Input.h"
#include "require.h"
#include "support/FileReaders.h"
#include "support/ScratchFolder.h"

namespace {

using ko::Orvid::ReadOptions;
using orvid_fuzz::Input;

/// How much a std::filebuf of libstdc++ reads at once.
constexpr std::size_t k_buffer = 8191;
/// The shortest file that is read by long pieces.
constexpr std::size_t k_least = 32768;
/// The ends of the first buffer, of a short file's long piece, of a piece that is read strictly,
/// and of a long file's long piece.
constexpr std::array<std::size_t, 8> k_ends = {k_buffer,     k_buffer,     k_buffer, k_buffer,
                                               4 * k_buffer, 4 * k_buffer, 65536,    16 * k_buffer};

ReadOptions chooseOptions(Input& input) {
    switch (input.below(4)) {
        case 1:
            return ReadOptions::strict();
        case 2:
            return ReadOptions::jsonc();
        default:
            return {};
    }
}

std::string chooseText(Input& input) {
    const std::size_t end = k_ends[input.below(k_ends.size())];
    const std::size_t before = input.byte();
    const char filler = " \na1["[input.below(5)];
    std::string text = input.textUntil('\n');
    const std::string rest = input.rest();
    const std::size_t at = end - std::min(before, rest.size());
    text.resize(std::max(at, text.size()), filler);
    text += rest;
    text.resize(std::max(text.size(), k_least), ' ');
    return text;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    static const orvid_test::ScratchFolder folder;
    Input input(bytes, size);
    const ReadOptions options = chooseOptions(input);
    const std::string file = folder.makeFile("a.json", chooseText(input));
    orvid_fuzz::requireNone(orvid_test::fileReadersDiffer(options, file));
    return 0;
}
