// SPDX-License-Identifier: MIT
//
// Cutting at the last newline that has arrived. What stands after it is kept for the next batch.

#include "lines/LineReader.h"

#include <new>
#include <string_view>
#include <utility>

#include "input/Input.h"

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
        batch.text.cut(0);
        batch.readFailure = failure;
        return true;
    } catch (const std::bad_alloc&) {
        m_isAtEnd = true;
        batch.text = Bytes();
        m_rest = Bytes();
        batch.readFailure = memoryFailure({m_input.name(), 0, 0, {}});
        return true;
    }
}

bool LineReader::fill(LineBatch& batch) {
    Bytes& text = batch.text;
    text.append(m_rest.view());
    m_rest.cut(0);
    // After a long line the rest may hold whole lines.
    if (!m_isInLong && cutLines(text, 0)) {
        return true;
    }
    while (true) {
        if (m_isInLong && !text.isEmpty()) {
            return cutLong(batch);
        }
        const std::size_t known = text.length();
        if (m_input.readSome(text, k_block) == 0) {
            return end(batch);
        }
        if (!m_isInLong && cutLines(text, known)) {
            return true;
        }
        if (!m_isInLong && text.length() > m_longest) {
            batch.kind = LineBatch::head;
            m_isInLong = true;
            return true;
        }
    }
}

bool LineReader::cutLines(Bytes& text, std::size_t from) {
    const std::size_t last = text.view().substr(from).rfind('\n');
    if (last == std::string_view::npos) {
        return false;
    }
    keepRest(text, from + last + 1);
    return true;
}

void LineReader::keepRest(Bytes& text, std::size_t start) {
    m_rest.cut(0);
    m_rest.append(text.view().substr(start));
    text.cut(start);
}

bool LineReader::cutLong(LineBatch& batch) {
    batch.kind = LineBatch::part;
    const std::size_t end = batch.text.view().find('\n');
    if (end != std::string_view::npos) {
        keepRest(batch.text, end + 1);
        m_isInLong = false;
    }
    return true;
}

bool LineReader::end(LineBatch& batch) {
    m_isAtEnd = true;
    if (m_isInLong) {
        batch.kind = LineBatch::part;
    }
    if (m_isInLong || !batch.text.isEmpty()) {
        batch.text.append("\n");
        batch.isOpen = m_keepsEnd;
    }
    return !batch.text.isEmpty();
}

}  // namespace orvid_tool
