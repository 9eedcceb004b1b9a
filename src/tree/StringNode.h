// SPDX-License-Identifier: MIT
//
// The strings of elements: in a cell of the node memory where a tree is read or copied, else on the
// heap, as a caller's own are. Their addresses say which it was.

#pragma once

#include <ko/detail/SlabArena.h>

#include <cstddef>
#include <new>
#include <string>
#include <string_view>

namespace ko::Orvid {

constexpr bool k_hasStringCells = SlabArena::k_hasCells && sizeof(std::string) == SlabArena::k_cell;

/// For an element; `nodes` may be null. Throws std::bad_alloc.
inline std::string* newString(SlabArena* nodes, std::string_view text) {
    void* const cell = k_hasStringCells && nodes != nullptr ? nodes->cutCell() : nullptr;
    if (cell == nullptr) {
        return new std::string(text);
    }
    try {
        return new (cell) std::string(text);
    } catch (...) {
        SlabArena::releaseCell(cell);
        throw;
    }
}

/// As `new T(sources...)` in a Scope of that memory, for a T that is InSlabArena. The page is not
/// marked.
template<class T, class... Sources>
[[gnu::always_inline]] inline T* newIn(SlabArena& nodes, const Sources&... sources) {
    static_assert(sizeof(T) <= SlabArena::k_largestCut);
    void* const block = nodes.cut(sizeof(T));
    try {
        return new (block) T(sources...);
    } catch (...) {
        SlabArena::release(block, sizeof(T));
        throw;
    }
}

inline void deleteString(std::string* text, SlabArena::Freeing& freeing) noexcept {
    if (k_hasStringCells && SlabArena::isCell(text)) {
        text->~basic_string();
        freeing.releaseCell(text);
    } else {
        delete text;
    }
}

/// Whether it came from newString() or from `new`; null is none.
inline void deleteString(std::string* text) noexcept {
    if (k_hasStringCells && SlabArena::isCell(text)) {
        text->~basic_string();
        SlabArena::releaseCell(text);
    } else {
        delete text;
    }
}

}  // namespace ko::Orvid
