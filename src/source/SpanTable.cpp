// SPDX-License-Identifier: MIT

#include "source/SpanTable.h"

#include <ko/Orvid/Exception.h>

#include <algorithm>
#include <utility>

namespace ko::Orvid {

void SpanTable::grow() {
    if (m_size == 0) {
        m_blocks.push_back(std::make_unique<ValueSpan[]>(k_firstSize));
        m_capacity = k_firstSize;
        return;
    }
    if (m_size == k_firstSize) {
        auto block = std::make_unique<ValueSpan[]>(k_blockSize);
        std::copy_n(m_blocks.front().get(), k_firstSize, block.get());
        m_blocks.front() = std::move(block);
        m_capacity = k_blockSize;
        return;
    }
    if (m_size > k_none - 1 - k_blockSize) {
        throw Exception("The text holds too many values to note their places");
    }
    m_blocks.push_back(std::make_unique<ValueSpan[]>(k_blockSize));
    m_capacity += k_blockSize;
}

void SpanTable::clear() noexcept {
    m_blocks.clear();
    m_size = 0;
    m_capacity = 0;
}

}  // namespace ko::Orvid
