// SPDX-License-Identifier: MIT
//
// The bytes are a script of operations on two trees. Each operation is done to a tree and to its
// plain model; then all links of both trees hold and both trees agree with their models. Arguments
// lie in either tree as often as outside of both.

#include <cstddef>
#include <cstdint>

#include "edit/EditScript.h"
#include "Input.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    orvid_fuzz::Input input(bytes, size);
    orvid_fuzz::EditScript(input).run();
    return 0;
}
