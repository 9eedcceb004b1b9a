// SPDX-License-Identifier: MIT
//
// The representation of a number. What the two sides mean to each other is in Number.cpp.

#include <ko/Orvid/detail/NumberStore.h>

#include <ko/Orvid/Number.h>

#include <memory>
#include <utility>

#include "number/NumberText.h"

namespace ko::Orvid {

namespace {

using Binary = NumberStore::Binary;

// A packed binary value: from the lowest bit on two bits of kind, one that says whether the text
// is whole, and the value. Of a double that is the sign, eight bits of exponent and the fraction,
// all zero for a positive zero.

constexpr unsigned int k_wholeBit = 2;
constexpr unsigned int k_valueBit = 3;
constexpr std::uint64_t k_kindMask = 3;
constexpr unsigned int k_fractionBits = 52;
constexpr unsigned int k_exponentBits = 8;
constexpr std::uint64_t k_fraction = (std::uint64_t{1} << k_fractionBits) - 1;
constexpr std::uint64_t k_exponents = (std::uint64_t{1} << k_exponentBits) - 1;
constexpr std::uint64_t k_doubleExponents = 0x7FF;
constexpr std::uint64_t k_firstExponent = 1023 - 128;  // -128 is 0 in packed form
constexpr std::uint64_t k_topOfValue = std::uint64_t{1} << (63 - k_valueBit);

/// Returns whether the bits of a double fit.
bool packDouble(std::uint64_t bits, std::uint64_t& value) noexcept {
    const std::uint64_t exponent = (bits >> k_fractionBits & k_doubleExponents) - k_firstExponent;
    const std::uint64_t sign = bits >> 63U;
    value = bits == 0 ? 0
                      : sign << (k_fractionBits + k_exponentBits) | exponent << k_fractionBits |
                            (bits & k_fraction);
    return bits == 0 || (exponent > 0 && exponent <= k_exponents);
}

std::uint64_t unpackDouble(std::uint64_t value) noexcept {
    if (value == 0) {
        return 0;
    }
    const std::uint64_t exponent = (value >> k_fractionBits & k_exponents) + k_firstExponent;
    const std::uint64_t sign = value >> (k_fractionBits + k_exponentBits);
    return sign << 63U | exponent << k_fractionBits | (value & k_fraction);
}

/// Zero where the value does not fit.
std::uint64_t packed(const Binary& binary) noexcept {
    std::uint64_t value = binary.bits;
    bool fits = false;
    switch (binary.kind) {
        case Number::ebLongLong:
            fits = value + k_topOfValue < 2 * k_topOfValue;
            break;
        case Number::ebULongLong:
            fits = value < 2 * k_topOfValue;
            break;
        case Number::ebDouble:
            fits = packDouble(binary.bits, value);
            break;
        default:
            break;
    }
    const std::uint64_t whole = binary.isWhole ? 1 : 0;
    return fits ? value << k_valueBit | whole << k_wholeBit | binary.kind : 0;
}

Binary unpacked(std::uint64_t word) noexcept {
    const auto kind = static_cast<unsigned char>(word & k_kindMask);
    std::uint64_t value = word >> k_valueBit;
    if (kind == Number::ebDouble) {
        value = unpackDouble(value);
    } else if (kind == Number::ebLongLong) {
        value = (value ^ k_topOfValue) - k_topOfValue;  // extends the sign
    }
    return {value, kind, (word >> k_wholeBit & 1U) != 0};
}

/// Whether converting the text may leave the bits from before: it is refused, or there is nothing
/// to convert.
bool mayKeepBits(std::string_view text) {
    constexpr std::size_t checkedLength = 19;
    constexpr std::string_view beginnings = "-.0123456789";
    return text.empty() || text.size() >= checkedLength ||
           beginnings.find(text.front()) == std::string_view::npos ||
           text.find_first_of("eE") != std::string_view::npos;
}

/// Whether a binary value that cannot be packed would be missed.
bool isNeeded(const Binary& binary, std::string_view text) {
    return binary.kind == Number::ebNone ? binary.bits != 0 && mayKeepBits(text) : !binary.isWhole;
}

}  // namespace

void NumberStore::release(Heap* heap) noexcept {
    while (heap != nullptr) {
        delete std::exchange(heap, heap->former);
    }
}

std::string_view NumberStore::givenOnHeap(const Heap* heap, std::string_view otherwise) noexcept {
    while (heap != nullptr && heap->isDerived) {
        heap = heap->former;
    }
    return heap == nullptr ? otherwise : std::string_view(heap->text);
}

NumberStore::NumberStore(std::string_view text, const Binary& binary) { construct(text, binary); }

void NumberStore::construct(std::string_view text, const Binary& binary) {
    if (text.size() <= k_small) {
        layOut(nullptr, binary, static_cast<unsigned char>(text.size()));
        copyBytes(text);
    } else {
        constructLong(text, binary);
    }
}

void NumberStore::constructLong(std::string_view text, const Binary& binary) {
    if (text.size() <= k_capacity && binary.kind == Number::ebNone && binary.bits == 0) {
        return layOutWide(text);
    }
    const std::uint64_t word = packed(binary);
    if (text.size() > k_capacity || (word == 0 && isNeeded(binary, text))) {
        layOut(new Heap(text, false, nullptr), binary, 0);
        return;
    }
    layOutWide(text);
    m_word.store(word, std::memory_order_relaxed);
}

/// A text on the heap, or one that came there just now: most often a copy of the one in here, made
/// by string(), of which the new number needs none.
void NumberStore::constructLike(const NumberStore& other, detail::NumberPlace place) {
    if (place == detail::NumberPlace::arena) {
        SlabArena::mark(this);
    }
    const Binary binary = other.binary();
    if (other.m_length - 1U < k_small && !other.heap()->isDerived) {
        layOut(nullptr, binary, other.m_length);
        std::memcpy(m_bytes + k_textOffset, other.m_bytes + k_textOffset, k_small);
        return;
    }
    NumberStore made(other.givenText(), binary);
    if (!other.hasGivenText()) {
        made.m_length = k_noText;
    } else if (const Heap* const held = other.heap();
               held != nullptr && held->isDerived && !held->isLost) {
        made.replaceText(binary);
    }
    steal(made);
}

NumberStore::NumberStore(NumberStore&& other) noexcept { steal(other); }

/// This store holds nothing that needs to be released.
void NumberStore::steal(NumberStore& other) noexcept {
    other.markPage();
    m_length = other.m_length;
    m_word.store(other.m_word.load(std::memory_order_relaxed), std::memory_order_relaxed);
    if (isWide()) {
        std::memcpy(m_bytes, other.m_bytes, sizeof m_bytes);
    } else {
        ::new (m_bytes) HeapPointer(other.heap());
        std::memcpy(m_bytes + k_textOffset, other.m_bytes + k_textOffset, k_small);
    }
    m_kind.store(placed(other.m_kind.load(std::memory_order_relaxed), {}),
                 std::memory_order_relaxed);
    other.layOut(nullptr, {}, k_noText);
}

/// The string that stays as long as the number does.
NumberStore::Heap* NumberStore::keptHeap() const noexcept {
    Heap* kept = heap();
    while (kept != nullptr && !kept->isKept) {
        kept = kept->former;
    }
    return kept;
}

/// From now on `kept`, to which the text was assigned already, alone holds the number's text.
void NumberStore::useHeap(Heap& kept, const Binary& binary, bool isDerived) noexcept {
    Heap* next = heap();
    while (next != nullptr) {
        Heap* const held = std::exchange(next, next->former);
        if (held != &kept) {
            delete held;
        }
    }
    kept.former = nullptr;
    kept.isDerived = isDerived;
    kept.isLost = false;
    layOut(&kept, binary, isDerived ? k_noText : 0);
}

void NumberStore::assign(std::string_view text, const Binary& binary) {
    markPage();
    if (Heap* const kept = keptHeap()) {
        kept->text.assign(text);
        useHeap(*kept, binary, false);
    } else {
        NumberStore made(text, binary);
        steal(made);
    }
}

void NumberStore::assign(const Binary& binary) {
    markPage();
    if (Heap* const kept = keptHeap()) {
        NumberBuffer buffer;
        kept->text.assign(derivedText(binary, buffer));
        useHeap(*kept, binary, true);
    } else {
        layOut(nullptr, binary, k_noText);
    }
}

void NumberStore::assignDerived(std::string_view given, const Binary& binary) {
    markPage();
    Heap* const kept = keptHeap();
    if (kept == nullptr) {
        NumberStore made(given, binary);
        made.replaceText(binary);
        return steal(made);
    }
    auto beside = std::make_unique<Heap>(given, false, nullptr);
    NumberBuffer buffer;
    kept->text.assign(derivedText(binary, buffer));
    useHeap(*kept, binary, true);
    putBeside(*kept, beside.release());
}

/// Of a store that nobody else has seen: the string with the derived text is its first one.
void NumberStore::replaceText(const Binary& binary) {
    NumberBuffer buffer;
    auto* const kept = new Heap(derivedText(binary, buffer), true, nullptr);
    kept->keep(binary.bits, kindByte(binary));
    if (Heap* const given = heap()) {
        putBeside(*kept, given);
    }
    if (isWide()) {
        m_word.store(wordOf(*kept), std::memory_order_relaxed);
    } else {
        pointer().store(kept, std::memory_order_relaxed);
    }
}

// Beside a heap text there is room for any binary value.
void NumberStore::derive(const Binary& binary) const {
    static_cast<void>(string());
    keep(binary);
    derive();
}

/// The derived text is in `kept`, and `given` holds the one that was given; null for an empty one.
void NumberStore::putBeside(Heap& kept, Heap* given) noexcept {
    if (given != nullptr) {
        given->isKept = false;
        given->isDerived = false;
        given->former = nullptr;
    }
    kept.former = given;
    m_length = 0;
}

void NumberStore::take(NumberStore& other) noexcept {
    markPage();
    Heap* const kept = keptHeap();
    Heap* const theirs = other.heap();
    if (kept == nullptr) {
        steal(other);
    } else if (theirs == nullptr || theirs->isLost) {
        takeWithoutString(*kept, other);
    } else {
        takeString(*kept, *theirs, other);
    }
}

void NumberStore::takeWithoutString(Heap& kept, const NumberStore& other) noexcept {
    try {
        if (other.hasGivenText()) {
            assign(other.heldText(), other.binary());
        } else {
            assign(other.binary());
        }
    } catch (const std::bad_alloc&) {
        // There is no memory for a text in `kept`, which is empty from now on: string() makes
        // another one.
        kept.text.clear();
        takeBytes(kept, other);
        kept.isLost = true;
    }
}

/// `theirs` holds the other number's text, given or derived; that may be empty.
void NumberStore::takeString(Heap& kept, Heap& theirs, NumberStore& other) noexcept {
    kept.text.swap(theirs.text);
    if (!theirs.isDerived || !other.hasGivenText()) {
        useHeap(kept, other.binary(), theirs.isDerived);
    } else if (other.m_length != 0) {
        takeBytes(kept, other);
    } else {
        const Binary binary = other.binary();
        Heap* const given = other.takeGiven();
        useHeap(kept, binary, true);
        putBeside(kept, given);
    }
}

/// Takes the bytes of the other one, beside `kept`.
void NumberStore::takeBytes(Heap& kept, const NumberStore& other) noexcept {
    const Binary binary = other.binary();
    useHeap(kept, binary, true);
    m_length = other.m_length;
    if (isWide()) {
        std::memcpy(m_bytes, other.m_bytes, sizeof m_bytes);
        kept.keep(binary.bits, kindByte(binary));
        m_word.store(wordOf(kept), std::memory_order_relaxed);
    } else {
        std::memcpy(m_bytes + k_textOffset, other.m_bytes + k_textOffset, k_small);
    }
}

/// Takes a string with the given text out of those on the heap, of which a derived one is the
/// first. The one that is kept stays. Null if there is none, since the given text is empty.
NumberStore::Heap* NumberStore::takeGiven() noexcept {
    Heap* const first = heap();
    Heap* before = first;
    while (before->former != nullptr && before->former->isDerived) {
        before = before->former;
    }
    Heap* const given = before->former;
    if (given == nullptr) {
        return nullptr;
    }
    if (!given->isKept) {
        before->former = given->former;
        return given;
    }
    first->text.swap(given->text);
    pointer().store(first->former, std::memory_order_relaxed);
    return first;
}

NumberStore::Binary NumberStore::wideBinary() const noexcept {
    const std::uint64_t word = m_word.load(std::memory_order_acquire);
    const Heap* const held = heapOf(word);
    if (held == nullptr) {
        return unpacked(word);
    }
    const unsigned char kind = held->kind.load(std::memory_order_acquire);
    return {held->bits.load(std::memory_order_relaxed), static_cast<unsigned char>(kind & k_kinds),
            (kind & k_whole) != 0};
}

void NumberStore::keepWide(const Binary& binary) const noexcept {
    std::uint64_t word = m_word.load(std::memory_order_acquire);
    if (Heap* const held = heapOf(word)) {
        held->keep(binary.bits, kindByte(binary));
        return;
    }
    // The place may become the pointer's at any time.
    if (const std::uint64_t value = packed(binary); value != 0 && word == 0) {
        m_word.compare_exchange_strong(word, value, std::memory_order_release,
                                       std::memory_order_relaxed);
    }
}

/// Takes the binary value along, whose place the pointer takes.
inline bool NumberStore::publishWide(Heap& made) const noexcept {
    Heap* const former = made.former;
    std::uint64_t word = m_word.load(std::memory_order_acquire);
    while (heapOf(word) == former) {
        if (word != 0) {
            const Binary binary = former == nullptr ? unpacked(word) : wideBinary();
            made.keep(binary.bits, kindByte(binary));
        }
        if (m_word.compare_exchange_weak(word, wordOf(made), std::memory_order_acq_rel,
                                         std::memory_order_acquire)) {
            return true;
        }
    }
    return false;
}

/// Puts `made` in the place of the one before it. Where another thread came first, deletes `made`
/// and returns false.
inline bool NumberStore::publish(Heap* made) const noexcept {
    markPage();
    Heap* former = made->former;
    const bool isPublished =
        isWide() ? publishWide(*made)
                 : pointer().compare_exchange_strong(former, made, std::memory_order_acq_rel,
                                                     std::memory_order_acquire);
    if (!isPublished) {
        delete made;
    }
    return isPublished;
}

/// Whether the heap text is the number's. One that was given empty gives way to a derived one as
/// soon as the binary value has a kind.
bool NumberStore::isCurrent(const Heap& held) const noexcept {
    return !held.text.empty() ||
           (!held.isLost && (held.isDerived || binary().kind == Number::ebNone));
}

// The common case: the first string of a text in here, which takes one allocation, and a second
// one for a wide text. Rare cases are kept out of these functions.

[[gnu::noinline]] const std::string& NumberStore::copySmall() const {
    auto* const made = new Heap(m_bytes + k_textOffset, Heap::RoomFor<k_small>{m_length});
    markPage();
    Heap* former = nullptr;
    if (pointer().compare_exchange_strong(former, made, std::memory_order_acq_rel,
                                          std::memory_order_acquire)) {
        return made->text;
    }
    return publishedAfterAll(made);
}

[[gnu::noinline]] const std::string& NumberStore::copyWide() const {
    if (m_length == k_inString) {
        return makeString();  // where one request is enough
    }
    auto* const made = new Heap(m_bytes, Heap::RoomFor<k_capacity>{m_length});
    markPage();
    std::uint64_t word = 0;
    if (m_word.compare_exchange_strong(word, wordOf(*made), std::memory_order_acq_rel,
                                       std::memory_order_acquire)) {
        return made->text;
    }
    return publishedAfterAll(made);
}

/// There is a binary value, or another thread came first.
[[gnu::noinline]] const std::string& NumberStore::publishedAfterAll(Heap* made) const {
    return publish(made) ? made->text : makeString();
}

const std::string& NumberStore::makeString() const {
    for (;;) {
        Heap* const held = heap();
        if (held != nullptr && isCurrent(*held)) {
            return held->text;
        }
        const std::string_view given = held == nullptr ? heldText() : givenOnHeap(held);
        Heap* const made = given.empty() ? newDerived(held) : new Heap(given, false, held);
        if (publish(made)) {
            return made->text;
        }
    }
}

/// There is no given text, or an empty one.
NumberStore::Heap* NumberStore::newDerived(Heap* former) const {
    NumberBuffer buffer;
    const Binary value = binary();
    const bool isDerived = value.kind != Number::ebNone || !hasGivenText();
    return new Heap(derivedText(value, buffer), isDerived, former);
}

std::string_view NumberStore::textIn(NumberBuffer& buffer) const noexcept {
    const Heap* const held = heap();
    if (held != nullptr && isCurrent(*held)) {
        return held->text;
    }
    const std::string_view given = givenText();
    return given.empty() ? derivedText(binary(), buffer) : given;
}

void NumberStore::derive() const {
    NumberBuffer derivedBuffer;
    NumberBuffer buffer;
    for (;;) {
        Heap* const held = heap();
        const std::string_view derived = derivedText(binary(), derivedBuffer);
        if (textIn(buffer) == derived || publish(new Heap(derived, true, held))) {
            return;
        }
    }
}

}  // namespace ko::Orvid
