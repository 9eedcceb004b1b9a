// SPDX-License-Identifier: MIT
//
// Writer: strings and their escapes, numbers, and what is refused. The rules are those of YAJL's
// generator: a complete document takes nothing more; a value that is no string is no key; a
// missing value is not noticed, so that the next key becomes it; a close is not asked what it
// closes.

#include "text/Writer.h"

#include <algorithm>
#include <charconv>
#include <cmath>

#include "text/AsciiText.h"

namespace ko::Orvid::text {

namespace {

constexpr std::size_t k_escapeLength = 6;
/// More than any number needs: twenty digits with a sign, a decimal point and an exponent, or four
/// zeros before.
constexpr std::size_t k_numberRoom = 40;
/// What copyLoosely() reads beyond the end.
constexpr std::size_t k_padding = 16;

std::string acceptedIndent(const std::string& indent) {
    const bool isWhitespace = indent.find_first_not_of(" \t\n\r\v\f") == std::string::npos;
    return isWhitespace ? indent : "  ";
}

/// Copies the block at `text`. Returns whether it is plain; otherwise `text` and `at` are moved to
/// its first special byte and where that would go.
template<class AnyBlock>
inline bool copyBlock(const char*& text, char*& at) noexcept {
    const AnyBlock block(text);
    std::memcpy(at, text, AnyBlock::k_length);
    const auto special = block.special();
    if (special == 0) {
        return true;
    }
    text += AnyBlock::first(special);
    at += AnyBlock::first(special);
    return false;
}

/// Copies a run of fewer bytes than twice a block, but as many as one, in two blocks that overlap.
template<class AnyBlock>
bool copyTwoBlocks(const char*& text, const char* end, char*& at) noexcept {
    if (!copyBlock<AnyBlock>(text, at)) {
        return false;
    }
    const std::ptrdiff_t step = end - text - AnyBlock::k_length;
    text += step;
    at += step;
    if (!copyBlock<AnyBlock>(text, at)) {
        return false;
    }
    text += AnyBlock::k_length;
    at += AnyBlock::k_length;
    return true;
}

/// Copies fewer bytes than a block, but half as many or more, as two halves that overlap. Returns
/// whether they are plain.
template<class AnyBlock>
inline bool copyHalves(char* at, const char* text, std::ptrdiff_t length) noexcept {
    constexpr std::ptrdiff_t k_half = AnyBlock::k_length / 2;
    const char* const last = text + length - k_half;
    const bool isPlain = AnyBlock(text, last).special() == 0;
    std::memcpy(at, text, k_half);
    std::memcpy(at + length - k_half, last, k_half);
    return isPlain;
}

template<class AnyBlock>
inline bool isHalfOf(std::ptrdiff_t length) noexcept {
    return length < AnyBlock::k_length && length >= AnyBlock::k_length / 2;
}

/// Copies fewer bytes than a block, as most keys are. Returns whether all of them stand for
/// themselves; what it has written otherwise is of no use.
inline bool copyIfPlain(char* at, const char* text, std::ptrdiff_t length) noexcept {
    if (isHalfOf<Block>(length)) {
        return copyHalves<Block>(at, text, length);
    }
    if (isHalfOf<PlainBlock>(length)) {
        return copyHalves<PlainBlock>(at, text, length);
    }
    for (; length != 0; --length) {
        if (isSpecial(*text)) {
            return false;
        }
        *at++ = *text++;
    }
    return true;
}

/// Copies the bytes that stand for themselves, up to the first that does not or `end`, where these
/// are fewer than a block.
void copyPlainShort(const char*& text, const char* end, char*& at) noexcept {
    if (copyIfPlain(at, text, end - text)) {
        at += end - text;
        text = end;
        return;
    }
    while (!isSpecial(*text)) {
        *at++ = *text++;
    }
}

/// The same for any number of bytes.
void copyPlain(const char*& text, const char* end, char*& at) noexcept {
    if (end - text < Block::k_length) {
        copyPlainShort(text, end, at);
        return;
    }
    while (end - text >= 2 * Block::k_length) {
        if (!copyBlock<Block>(text, at)) {
            return;
        }
        text += Block::k_length;
        at += Block::k_length;
    }
    copyTwoBlocks<Block>(text, end, at);
}

/// Returns the end of the escape.
char* writeEscape(char* at, unsigned char byte) noexcept {
    constexpr const char* k_digits = "0123456789ABCDEF";
    *at++ = '\\';
    switch (byte) {
        case '"':
        case '\\':
            *at++ = static_cast<char>(byte);
            return at;
        case '\b':
            *at++ = 'b';
            return at;
        case '\f':
            *at++ = 'f';
            return at;
        case '\n':
            *at++ = 'n';
            return at;
        case '\r':
            *at++ = 'r';
            return at;
        case '\t':
            *at++ = 't';
            return at;
        default:
            at[0] = 'u';
            at[1] = at[2] = '0';
            at[3] = k_digits[byte >> 4];
            at[4] = k_digits[byte & 0xF];
            return at + 5;
    }
}

}  // namespace

Writer::Writer(const Layout& layout)
    : m_isIndented(layout.isIndented),
      m_hasFinalNewline(layout.hasFinalNewline),
      m_isAscii(layout.isAscii),
      m_closesEmpty(layout.closesEmpty),
      m_indent(acceptedIndent(layout.indent)),
      m_leadKinds(leadsOf(layout)) {
    restart();
    deepen();
}

const Writer::Lead* Writer::leadsOf(const Layout& layout) noexcept {
    constexpr std::size_t k_deep = ~std::size_t{0};
    constexpr Lead k_none{0, 0, 0};
    constexpr Lead k_next{k_comma, k_deep, 0};
    constexpr Lead k_line{k_comma + 1, k_deep, -1};    // without the comma
    constexpr Lead k_margin{k_comma + 2, k_deep, -2};  // without the newline too
    constexpr Lead k_colon{0, 0, 1};
    constexpr Lead k_colonAndSpace{0, 0, 2};
    static constexpr Lead k_compact[] = {k_none, k_line, k_next, k_colon,
                                         k_line, k_next, k_none, k_none};
    static constexpr Lead k_indented[] = {k_none,   k_margin, k_next, k_colonAndSpace,
                                          k_margin, k_next,   k_none, k_none};
    static constexpr Lead k_closesEmpty[] = {k_none, k_line, k_next, k_colonAndSpace,
                                             k_line, k_next, k_none, k_none};
    return !layout.isIndented ? k_compact : layout.closesEmpty ? k_closesEmpty : k_indented;
}

WriteStatus Writer::integer(long value) {
    char text[k_numberRoom];
    const char* const end = std::to_chars(text, text + sizeof text, value).ptr;
    return literal(text, static_cast<std::size_t>(end - text));
}

WriteStatus Writer::real(double value) {
    if (!std::isfinite(value)) {
        return takesValue() ? keep(WriteStatus::invalidNumber) : refuse();
    }
    constexpr int k_digits = 20;
    char text[k_numberRoom];
    const char* const end =
        std::to_chars(text, text + sizeof text, value, std::chars_format::general, k_digits).ptr;
    return literal(text, static_cast<std::size_t>(end - text));
}

WriteStatus Writer::string(const char* text, std::size_t length) {
    if (m_state == State::complete || m_state == State::broken) {
        return refuse();
    }
    const char* const end = text + length;
    if (m_isAscii && asciiEnd(text, end) != end) {
        return asciiString(text, end);
    }
    char* at = lead(roomFor(length));
    *at++ = '"';
    const bool isShort = length < std::size_t{Block::k_length};
    if (isShort && copyIfPlain(at, text, static_cast<std::ptrdiff_t>(length))) {
        at += length;
    } else {
        at = copyAny(at, text, end);
    }
    *at++ = '"';
    finish(at);
    return WriteStatus::ok;
}

/// Copies what may need escapes, and returns where it ends.
char* Writer::copyAny(char* at, const char* text, const char* end) {
    copyPlain(text, end, at);
    while (text != end) {
        at = roomForEscape(at, static_cast<std::size_t>(end - text));
        at = writeEscape(at, static_cast<unsigned char>(*text++));
        copyPlain(text, end, at);
    }
    return at;
}

void Writer::swapText(Bytes& bytes) noexcept {
    m_bytes.cut(text().size());
    m_bytes.swap(bytes);
    m_at = m_bytes.data() + m_bytes.length();
    m_end = m_at + m_bytes.spare();
}

void Writer::restart() noexcept {
    clear();
    m_outer.clear();
    m_leadLength = m_isIndented ? 2 : 1;
    m_state = State::start;
    m_first = WriteStatus::ok;
}

/// Bytes beyond ASCII stand beside each other in every character, so they can be taken by runs.
WriteStatus Writer::asciiString(const char* text, const char* end) {
    return replaced([&](std::string& ascii) {
        bool isValid = true;
        ascii += '"';
        while (text != end) {
            const char* const high = asciiEnd(text, end);
            for (; text != high; ++text) {
                char escape[k_escapeLength];
                const bool isPlain = !isSpecial(*text);
                const char* const stop =
                    isPlain ? escape : writeEscape(escape, static_cast<unsigned char>(*text));
                ascii.append(isPlain ? text : escape,
                             isPlain ? 1 : static_cast<std::size_t>(stop - escape));
            }
            while (text != end && isHigh(*text)) {
                ++text;
            }
            isValid = appendAscii(ascii, high, static_cast<std::size_t>(text - high)) && isValid;
        }
        ascii += '"';
        return isValid;
    });
}

WriteStatus Writer::asciiNumber(const char* text, std::size_t length) {
    if (!takesValue()) {
        return refuse();
    }
    return replaced([&](std::string& ascii) { return appendAscii(ascii, text, length); });
}

/// Writes what `append` makes of a value, which returns whether ASCII can express it.
template<class Append>
WriteStatus Writer::replaced(const Append& append) {
    std::string ascii;
    bool isExact = true;
    try {
        isExact = append(ascii);
    } catch (...) {
        m_state = State::broken;
        throw;
    }
    char* const at = lead(roomFor(ascii.size()));
    std::copy(ascii.begin(), ascii.end(), at);
    finish(at + ascii.size());
    return isExact ? WriteStatus::ok : keep(WriteStatus::replacedText);
}

WriteStatus Writer::refuse() {
    switch (m_state) {
        case State::complete:
            return keep(WriteStatus::generationComplete);
        case State::mapStart:
        case State::mapKey:
            return keep(WriteStatus::keysMustBeStrings);
        default:
            return keep(WriteStatus::inErrorState);
    }
}

WriteStatus Writer::keep(WriteStatus status) noexcept {
    if (m_first == WriteStatus::ok) {
        m_first = status;
    }
    return status;
}

/// For an escape and `rest` bytes after it; what is written already goes up to `at`.
char* Writer::roomForEscape(char* at, std::size_t rest) {
    const std::size_t needed = rest + k_escapeLength + k_slack;
    return static_cast<std::size_t>(m_end - at) < needed ? grow(at, needed) : at;
}

/// Makes room for `needed` bytes from `at` on, and returns where that is then.
char* Writer::grow(const char* at, std::size_t needed) {
    const std::ptrdiff_t used = at - m_bytes.data();
    const std::ptrdiff_t text = m_at - m_bytes.data();
    m_bytes.cut(static_cast<std::size_t>(used));
    try {
        static_cast<void>(m_bytes.room(needed));
    } catch (...) {
        m_state = State::broken;
        throw;
    }
    m_at = m_bytes.data() + text;
    m_end = m_bytes.data() + used + m_bytes.spare();
    return m_bytes.data() + used;
}

/// Makes room for what one level more needs. Room for levels and their indents comes together: a
/// writer that begins anew after a refusal has as much of both.
void Writer::deepen() {
    try {
        std::vector<State> outer;
        outer.reserve(std::max<std::size_t>(2 * m_outer.size(), k_padding));
        const std::size_t levels = outer.capacity();
        std::string leads = m_isIndented ? ": ,\n" : ": ,";
        leads.reserve(leads.size() + levels * m_indent.size() + k_padding);
        for (std::size_t i = 0; m_isIndented && i < levels; ++i) {
            leads += m_indent;
        }
        leads.append(k_padding, ' ');
        outer.assign(m_outer.begin(), m_outer.end());  // within the capacity
        m_outer.swap(outer);
        m_leads.swap(leads);
    } catch (...) {
        m_state = State::broken;
        throw;
    }
}

}  // namespace ko::Orvid::text
