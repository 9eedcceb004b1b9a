// SPDX-License-Identifier: MIT
//
// Cutting at the last newline that has arrived. What stands behind it is kept for the next batch.

#include "LineReader.h"

#include <algorithm>
#include <utility>

#include "Input.h"

namespace orvid_tool {

namespace {

constexpr std::size_t k_block = std::size_t(1) << 20;

}  // namespace

bool LineReader::next(LineBatch& batch) {
    batch.isFirst = std::exchange(m_isFirst, false);
    try {
        return !m_isAtEnd && fill(batch);
    } catch (const Failure& failure) {
        m_isAtEnd = true;
        batch.text.clear();
        batch.readFailure = failure;
        return true;
    }
}

bool LineReader::fill(LineBatch& batch) {
    std::string& text = batch.text;
    text = std::move(m_rest);
    m_rest.clear();
    // Behind a long line the rest may hold whole lines.
    if (!m_isInLong && cutLines(text)) {
        return true;
    }
    while (true) {
        if (m_isInLong && !text.empty()) {
            return cutLong(batch);
        }
        if (m_input.readSome(text, k_block) == 0) {
            return end(batch);
        }
        if (!m_isInLong && cutLines(text)) {
            return true;
        }
        if (!m_isInLong && text.length() > m_longest) {
            batch.kind = LineBatch::head;
            m_isInLong = true;
            return true;
        }
    }
}

bool LineReader::cutLines(std::string& text) {
    const std::size_t last = text.rfind('\n');
    if (last == std::string::npos) {
        return false;
    }
    m_rest.assign(text, last + 1);
    text.resize(last + 1);
    return true;
}

bool LineReader::cutLong(LineBatch& batch) {
    batch.kind = LineBatch::part;
    const std::size_t end = batch.text.find('\n');
    if (end != std::string::npos) {
        m_rest.assign(batch.text, end + 1);
        batch.text.resize(end + 1);
        m_isInLong = false;
    }
    return true;
}

bool LineReader::end(LineBatch& batch) {
    m_isAtEnd = true;
    if (m_isInLong) {
        batch.kind = LineBatch::part;
        batch.text = "\n";
    } else if (!batch.text.empty()) {
        batch.text += '\n';
    }
    return !batch.text.empty();
}

}  // namespace orvid_tool
