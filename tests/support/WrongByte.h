// SPDX-License-Identifier: MIT
//
// withByteAt() puts a byte where it does not belong, for tests that try each byte at each offset.

#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace orvid_test {

/// The text with the byte inserted before the offset, with the byte in place of the one there, and
/// with what follows the inserted byte cut off.
inline std::vector<std::string> withByteAt(const std::string& text, std::size_t offset, char byte) {
    const std::string before = text.substr(0, offset) + byte;
    const std::string rest = text.substr(offset);
    return {before + rest, before + (rest.empty() ? "" : rest.substr(1)), before};
}

}  // namespace orvid_test
