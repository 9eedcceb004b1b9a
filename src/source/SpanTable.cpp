// SPDX-License-Identifier: MIT

#include "source/SpanTable.h"

#include <ko/Orvid/Exception.h>

#include <algorithm>
#include <utility>

namespace ko::Orvid {

void SpanTable::grow() {
    const std::uint32_t size = this->size();
    if (size > k_none - 1 - k_blockSize) {
        throw Exception("The text holds too many values to note their places");
    }
    const std::uint32_t length = size == 0 ? k_firstSize : k_blockSize;
    Block block(new ValueSpan[length]);
    ValueSpan* const rows = block.get();
    std::uint32_t used = 0;
    if (size == k_firstSize) {
        used = k_firstSize;
        std::copy_n(m_blocks.front().get(), used, rows);
        m_blocks.front() = std::move(block);
    } else {
        m_blocks.push_back(std::move(block));
    }
    m_row = rows + used;
    m_blockEnd = rows + length;
    m_blockEndNumber = size - used + length;
}

void SpanTable::clear() noexcept {
    m_blocks.clear();
    m_row = m_blockEnd = nullptr;
    m_blockEndNumber = 0;
}

}  // namespace ko::Orvid
