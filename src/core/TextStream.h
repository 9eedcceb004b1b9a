// SPDX-License-Identifier: MIT
//
// TextStream, in which texts of the library are put together. A plain string stream takes lack of
// memory for a failure of its own and goes on without what it could not write: half a text would be
// handed out as the whole.

#pragma once

#include <locale>
#include <sstream>

namespace ko::Orvid {

/// Writes as the classic locale does. Throws std::bad_alloc, as everything else does.
class TextStream : public std::ostringstream {
public:
    TextStream() {
        imbue(std::locale::classic());
        exceptions(std::ios_base::badbit);
    }
};

}  // namespace ko::Orvid
