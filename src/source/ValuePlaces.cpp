// SPDX-License-Identifier: MIT

#include "source/ValuePlaces.h"

#include <ko/Orvid/Exception.h>

namespace ko::Orvid {

void ValuePlaces::addBlock() {
    if (m_size > k_none - 1 - k_blockSize) {
        throw Exception("The text holds too many values to note their places");
    }
    m_blocks.push_back(std::make_unique<ValuePlace[]>(k_blockSize));
}

void ValuePlaces::clear() noexcept {
    m_blocks.clear();
    m_size = 0;
}

}  // namespace ko::Orvid
