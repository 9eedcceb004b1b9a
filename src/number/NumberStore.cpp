// SPDX-License-Identifier: MIT
//
// The representation of a number. What the two sides mean to each other is in Number.cpp.

#include <ko/Orvid/detail/NumberStore.h>

#include <ko/Orvid/Number.h>

#include <utility>

#include "number/NumberText.h"

namespace ko::Orvid {

struct NumberStore::Heap {
    Heap(std::string_view content, bool derived, Heap* before)
        : text(content), former(before), isDerived(derived) {}

    void keep(const Binary& binary) noexcept {
        bits.store(binary.bits, std::memory_order_relaxed);
        kind.store(kindByte(binary), std::memory_order_release);
    }

    std::string text;
    Heap* former;  ///< what was handed out before this text took its place
    // Of the wide layout, which has no other place for them.
    std::atomic<std::uint64_t> bits{0};
    std::atomic<unsigned char> kind{0};
    bool isDerived;
    bool isLost = false;  ///< empty for want of memory
};

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
void NumberStore::constructLike(const NumberStore& other) {
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
        static_cast<void>(made.string());  // beside a heap text there is room for any value
        made.keep(binary);
        made.derive();
    }
    steal(made);
}

NumberStore::NumberStore(NumberStore&& other) noexcept { steal(other); }

/// This store holds nothing that needs to be released.
void NumberStore::steal(NumberStore& other) noexcept {
    m_length = other.m_length;
    m_word.store(other.m_word.load(std::memory_order_relaxed), std::memory_order_relaxed);
    if (isWide()) {
        std::memcpy(m_bytes, other.m_bytes, sizeof m_bytes);
    } else {
        ::new (m_bytes) HeapPointer(other.heap());
        std::memcpy(m_bytes + k_textOffset, other.m_bytes + k_textOffset, k_small);
    }
    m_kind.store(other.m_kind.load(std::memory_order_relaxed), std::memory_order_relaxed);
    other.layOut(nullptr, {}, k_noText);
}

/// The number's text is on the heap from now on, where it was assigned already.
void NumberStore::useHeap(Heap& heap, const Binary& binary, bool isDerived) noexcept {
    release(std::exchange(heap.former, nullptr));
    heap.isDerived = isDerived;
    heap.isLost = false;
    layOut(&heap, binary, isDerived ? k_noText : 0);
}

void NumberStore::assign(std::string_view text, const Binary& binary) {
    if (Heap* const held = heap()) {
        const Binary kept = binary;
        held->text.assign(text);
        useHeap(*held, kept, false);
    } else {
        NumberStore made(text, binary);
        steal(made);
    }
}

void NumberStore::assign(const Binary& binary) {
    if (Heap* const held = heap()) {
        NumberBuffer buffer;
        held->text.assign(derivedText(binary, buffer));
        useHeap(*held, binary, true);
    } else {
        layOut(nullptr, binary, k_noText);
    }
}

void NumberStore::take(NumberStore& other) noexcept {
    Heap* const held = heap();
    if (held == nullptr) {
        steal(other);
        return;
    }
    const bool isGiven = other.hasGivenText();
    Heap* theirs = other.heap();
    while (isGiven && theirs != nullptr && theirs->isDerived) {
        theirs = theirs->former;
    }
    if (theirs != nullptr && !theirs->text.empty()) {
        held->text.swap(theirs->text);
        useHeap(*held, other.binary(), !isGiven);
        return;
    }
    try {
        if (isGiven) {
            assign(other.heldText(), other.binary());
        } else {
            assign(other.binary());
        }
    } catch (const std::bad_alloc&) {
        takeBeside(*held, other);
    }
}

/// There is no memory for a text in `held`, which is empty from now on: string() makes another one.
void NumberStore::takeBeside(Heap& held, const NumberStore& other) noexcept {
    const Binary binary = other.binary();
    held.text.clear();
    useHeap(held, binary, true);
    held.isLost = true;
    m_length = other.m_length;
    if (isWide()) {
        std::memcpy(m_bytes, other.m_bytes, sizeof m_bytes);
        held.keep(binary);
        m_word.store(wordOf(held), std::memory_order_relaxed);
    } else {
        std::memcpy(m_bytes + k_textOffset, other.m_bytes + k_textOffset, k_small);
    }
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
        held->keep(binary);
        return;
    }
    // The place may become the pointer's at any time.
    if (const std::uint64_t value = packed(binary); value != 0 && word == 0) {
        m_word.compare_exchange_strong(word, value, std::memory_order_release,
                                       std::memory_order_relaxed);
    }
}

/// Takes the binary value along, whose place the pointer takes.
bool NumberStore::publishWide(Heap& made, Heap* former) const noexcept {
    std::uint64_t word = m_word.load(std::memory_order_acquire);
    while (heapOf(word) == former) {
        if (word != 0) {
            made.keep(former == nullptr ? unpacked(word) : wideBinary());
        }
        if (m_word.compare_exchange_weak(word, wordOf(made), std::memory_order_acq_rel,
                                         std::memory_order_acquire)) {
            return true;
        }
    }
    return false;
}

/// Null if another thread came first.
inline const std::string* NumberStore::publish(std::string_view text, bool isDerived,
                                               Heap* former) const {
    Heap* const made = new Heap(text, isDerived, former);
    const bool isPublished =
        isWide() ? publishWide(*made, former)
                 : pointer().compare_exchange_strong(former, made, std::memory_order_acq_rel,
                                                     std::memory_order_acquire);
    if (!isPublished) {
        delete made;
        return nullptr;
    }
    return &made->text;
}

/// Whether the heap text is the number's. One that was given empty gives way to a derived one as
/// soon as the binary value has a kind.
bool NumberStore::isCurrent(const Heap& held) const noexcept {
    return !held.text.empty() ||
           (!held.isLost && (held.isDerived || binary().kind == Number::ebNone));
}

const std::string& NumberStore::string() const {
    const Heap* const held = heap();
    if (held == nullptr) {
        return firstString();
    }
    return held->text.empty() ? makeString() : held->text;
}

/// Most often a copy of a text in here. Not compiled into string(), which would save registers for
/// its calls then.
[[gnu::noinline]] const std::string& NumberStore::firstString() const {
    if (const std::string_view given = heldText(); !given.empty()) {
        if (const std::string* const made = publish(given, false, nullptr)) {
            return *made;
        }
    }
    return makeString();
}

const std::string& NumberStore::makeString() const {
    for (;;) {
        Heap* const held = heap();
        if (held != nullptr && isCurrent(*held)) {
            return held->text;
        }
        const std::string_view given = held == nullptr ? heldText() : givenOnHeap(held);
        const std::string* const made =
            given.empty() ? publishDerived(held) : publish(given, false, held);
        if (made != nullptr) {
            return *made;
        }
    }
}

/// There is no given text, or an empty one.
const std::string* NumberStore::publishDerived(Heap* former) const {
    NumberBuffer buffer;
    const Binary value = binary();
    const bool isDerived = value.kind != Number::ebNone || !hasGivenText();
    return publish(derivedText(value, buffer), isDerived, former);
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
        if (textIn(buffer) == derived || publish(derived, true, held) != nullptr) {
            return;
        }
    }
}

}  // namespace ko::Orvid
