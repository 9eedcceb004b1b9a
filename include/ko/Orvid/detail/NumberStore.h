// SPDX-License-Identifier: MIT
//
// NumberStore, what a Number holds: its text, its binary value and, once somebody asked for it, the
// text as a std::string. Private: it is here because a Number has one as its member.

#pragma once

#include <ko/detail/copyShort.h>
#include <ko/detail/sameBytes.h>
#include <ko/detail/SlabArena.h>
#include <ko/export.h>
#include <ko/Orvid/detail/NumberHeap.h>

#include <array>
#include <atomic>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <new>
#include <string>
#include <string_view>
#include <type_traits>

namespace ko::Orvid {

/// Room for the text of any binary value.
using NumberBuffer = std::array<char, 32>;

namespace detail {

/// Where a number is made: in a block that SlabArena::cut() gave out, or in another.
enum class NumberPlace : bool { anywhere, arena };

/// A text that is known to be a JSON number.
struct JsonNumber {
    std::string_view text;
};

}  // namespace detail

/// Both sides of a number. A text was given, and then the binary value is a cache; or the binary
/// value was set, and then the text is derived from it.
///
/// Const operations may run in any number of threads at once: what they add is published by one
/// atomic store, and nothing that they handed out before is ever changed by them. The other
/// operations need the store for themselves.
///
/// The usual layout: the bits of the binary value in m_word, its kind in m_kind, and in m_bytes a
/// pointer to the heap text and then the text itself, of up to k_small bytes. A wide text, of up to
/// k_capacity bytes, fills the place of the pointer too. Then m_word holds either the binary value,
/// packed, or the pointer, and on the heap there is room for bits and kind. Where there is a heap
/// text, it is the number's text. The bytes of m_bytes that a text does not fill are zero. In both
/// layouts m_kind also says whether the text in m_bytes is known to be a JSON number.
///
/// A store that was made in node memory without a heap text says so in m_kind, and marks its page
/// before it changes, gets a heap text, or goes: in a page without a mark no store owns anything.
class KO_API NumberStore {
public:
    /// The kind is a Number::EBinaryType. Without a kind, the bits are those of the binary value
    /// that the number had before its present text.
    struct Binary {
        std::uint64_t bits = 0;
        unsigned char kind = 0;
        /// Whether the text is a number as a whole, and not only up to some place.
        bool isWhole = false;
    };

    /// In bytes. Every 64-bit integer has a text that fits, and nearly every double.
    static constexpr std::size_t k_capacity = 22;

    /// A given text. Throws std::bad_alloc.
    explicit NumberStore(std::string_view text) {
        if (text.size() <= k_small) {
            layOut(nullptr, {}, static_cast<unsigned char>(text.size()));
            copyBytes(text);
        } else if (text.size() <= k_capacity) {
            layOutWide(text);
        } else {
            constructLong(text, {});
        }
    }
    /// The same. Remembers that it is a JSON number, if the text is not too long for that.
    [[gnu::always_inline]] explicit NumberStore(detail::JsonNumber number,
                                                detail::NumberPlace place = {})
        : NumberStore(number.text) {
        if (number.text.size() <= k_capacity) {
            m_kind.store(placed(k_json, place), std::memory_order_relaxed);
        } else if (place == detail::NumberPlace::arena) {
            SlabArena::mark(this);
        }
    }
    NumberStore(std::string_view text, const Binary& binary);
    /// Without a given text.
    explicit NumberStore(const Binary& binary) noexcept { layOut(nullptr, binary, k_noText); }
    [[gnu::always_inline]] NumberStore(const NumberStore& other, detail::NumberPlace place = {}) {
        // Each word is read once: another thread may add a heap text meanwhile.
        if (other.isWide()) {
            const std::uint64_t word = other.m_word.load(std::memory_order_acquire);
            if (heapOf(word) == nullptr) {
                std::memcpy(m_bytes, other.m_bytes, sizeof m_bytes);
                const unsigned char kind = other.m_kind.load(std::memory_order_relaxed);
                layOutAs(word, placed(kind, place), other.m_length);
                return;
            }
        } else if (other.heap() == nullptr) {
            const unsigned char kind = other.m_kind.load(std::memory_order_acquire);
            ::new (m_bytes) HeapPointer(nullptr);
            std::memcpy(m_bytes + k_textOffset, other.m_bytes + k_textOffset, k_small);
            layOutAs(other.m_word.load(std::memory_order_relaxed), placed(kind, place),
                     other.m_length);
            return;
        }
        constructLike(other, place);
    }
    /// `other` is left with neither text nor kind.
    NumberStore(NumberStore&& other) noexcept;
    NumberStore& operator=(const NumberStore&) = delete;
    NumberStore& operator=(NumberStore&&) = delete;
    ~NumberStore() {
        markPage();
        if (Heap* const held = heap()) {
            release(held);
        }
    }

    // The heap text that was made first stays the same object in all of these, and has the number's
    // text afterwards.

    ///@{
    /// `text` may lie within the present one. Without a heap text, a binary value needs no memory.
    /// Throw std::bad_alloc, leaving everything unchanged.
    void assign(std::string_view text, const Binary& binary);
    void assign(const Binary& binary);
    /// Assigns both, and makes the text that is derived from the binary value the number's text.
    void assignDerived(std::string_view given, const Binary& binary);
    ///@}
    /// Takes over what the other holds, which is left with any value. Where memory is refused, the
    /// heap text is left empty, and string() returns another one until the next change.
    void take(NumberStore& other) noexcept;

    bool hasGivenText() const noexcept { return m_length != k_noText; }
    bool hasHeapText() const noexcept { return heap() != nullptr; }
    /// Empty where none was given. Lives until the next change.
    std::string_view givenText() const noexcept {
        const Heap* const held = heap();
        return held == nullptr ? heldText() : givenOnHeap(held);
    }
    /// The number's text where it was given as a JSON number; empty where it is another one, or
    /// where that is not known. Lives until the next change.
    std::string_view jsonText() const noexcept {
        const bool isKnown = (m_kind.load(std::memory_order_relaxed) & k_json) != 0;
        return isKnown && heap() == nullptr ? heldText() : std::string_view();
    }
    Binary binary() const noexcept {
        if (isWide()) {
            return wideBinary();
        }
        const unsigned char kind = m_kind.load(std::memory_order_acquire);
        return {m_word.load(std::memory_order_relaxed), static_cast<unsigned char>(kind & k_kinds),
                (kind & k_whole) != 0};
    }
    /// Whether both were given the same text, and have it in here. False means undecided. A heap
    /// text besides does not matter: it is a copy, or derived, and the value is that of the given
    /// text even then.
    bool hasSameTextAs(const NumberStore& other) const noexcept {
        if (m_length != other.m_length || m_length - 1U >= k_capacity) {
            return false;
        }
        const std::uint64_t beginning =
            m_length > k_small ? wordAt(0) ^ other.wordAt(0) : std::uint64_t{0};
        return (beginning | (wordAt(k_textOffset) ^ other.wordAt(k_textOffset)) |
                (wordAt(k_lastWord) ^ other.wordAt(k_lastWord))) == 0;
    }

    /// Keeps the binary value of a given text, if there is room for it.
    void keep(const Binary& binary) const noexcept {
        if (isWide()) {
            keepWide(binary);
        } else {
            m_word.store(binary.bits, std::memory_order_relaxed);
            const unsigned char rest = m_kind.load(std::memory_order_relaxed) & (k_json | k_arena);
            m_kind.store(static_cast<unsigned char>(kindByte(binary) | rest),
                         std::memory_order_release);
        }
    }

    /// The number's text: the given one or, where that is missing or empty, the one derived from
    /// the binary value, if that has a kind. Throws std::bad_alloc.
    const std::string& string() const {
        if (isWide()) {
            const Heap* const held = heapOf(m_word.load(std::memory_order_acquire));
            return held == nullptr ? copyWide() : textOf(*held);
        }
        const Heap* const held = pointer().load(std::memory_order_acquire);
        if (held != nullptr) {
            return textOf(*held);
        }
        return m_length - 1U < k_small ? copySmall() : makeString();
    }
    /// The same where it is, or in `buffer`.
    std::string_view textIn(NumberBuffer& buffer) const noexcept;
    /// Makes the text that is derived from the binary value the number's text, even where another
    /// one was given; that remains givenText(). Throws std::bad_alloc.
    void derive() const;
    /// The same after keeping the binary value, to which the given text converts.
    void derive(const Binary& binary) const;

private:
    using Heap = detail::NumberHeap;
    using HeapPointer = std::atomic<Heap*>;

    static constexpr std::size_t k_textOffset = 8;
    static constexpr std::size_t k_small = k_capacity - k_textOffset;
    static constexpr std::size_t k_inString = 15;  ///< bytes that need no memory in a std::string
    static constexpr std::size_t k_lastWord = k_capacity - sizeof(std::uint64_t);
    static constexpr unsigned char k_noText = 0xFF;
    static constexpr unsigned char k_whole = 0x80;  ///< in m_kind
    static constexpr unsigned char k_json = 0x40;   ///< in m_kind
    static constexpr unsigned char k_arena = 0x20;  ///< in m_kind: see markPage()
    static constexpr unsigned char k_kinds = 0x1F;
    static constexpr std::uint64_t k_tag = 3;  ///< in m_word: the packed kind, 0 for a pointer

    static void release(Heap* heap) noexcept;
    static std::string_view givenOnHeap(const Heap* heap, std::string_view otherwise) noexcept;

    bool isWide() const noexcept { return m_length > k_small && m_length <= k_capacity; }
    HeapPointer& pointer() const noexcept {
        return *std::launder(reinterpret_cast<HeapPointer*>(m_bytes));
    }
    static Heap* heapOf(std::uint64_t word) noexcept {
        if ((word & k_tag) != 0) {
            return nullptr;
        }
        // A tag in the word distinguishes it from a binary value.
        // NOLINTNEXTLINE(performance-no-int-to-ptr)
        return reinterpret_cast<Heap*>(addressIn(word));
    }
    /// Without a cast where the types are one, which some compilers are asked to report.
    template<class Word>
    static std::uintptr_t addressIn(Word word) noexcept {
        if constexpr (std::is_same_v<Word, std::uintptr_t>) {
            return word;
        } else {
            return static_cast<std::uintptr_t>(word);
        }
    }
    static std::uint64_t wordOf(const Heap& heap) noexcept {
        return static_cast<std::uint64_t>(reinterpret_cast<std::uintptr_t>(&heap));
    }
    Heap* heap() const noexcept {
        return isWide() ? heapOf(m_word.load(std::memory_order_acquire))
                        : pointer().load(std::memory_order_acquire);
    }
    /// The given text where it is not on the heap.
    std::string_view heldText() const noexcept {
        return m_length == k_noText ? std::string_view() : std::string_view(heldBytes(), m_length);
    }
    const char* heldBytes() const noexcept {
        return reinterpret_cast<const char*>(m_bytes) + (isWide() ? 0 : k_textOffset);
    }
    std::string_view givenOnHeap(const Heap* held) const noexcept {
        return givenOnHeap(held, heldText());
    }

    void layOut(Heap* heap, const Binary& binary, unsigned char length) noexcept {
        ::new (m_bytes) HeapPointer(heap);
        m_word.store(binary.bits, std::memory_order_relaxed);
        m_kind.store(kindByte(binary), std::memory_order_relaxed);
        m_length = length;
    }
    static unsigned char kindByte(const Binary& binary) noexcept {
        return static_cast<unsigned char>(binary.kind | (binary.isWhole ? k_whole : 0U));
    }
    std::uint64_t wordAt(std::size_t at) const noexcept {
        return ko::detail::wordAt<std::uint64_t>(reinterpret_cast<const char*>(m_bytes) + at);
    }
    void clearWord(std::size_t at) noexcept { std::memset(m_bytes + at, 0, sizeof(std::uint64_t)); }
    void layOutAs(std::uint64_t word, unsigned char kind, unsigned char length) noexcept {
        m_word.store(word, std::memory_order_relaxed);
        m_kind.store(kind, std::memory_order_relaxed);
        m_length = length;
    }
    /// The kind with k_arena as the place says.
    static unsigned char placed(unsigned char kind, detail::NumberPlace place) noexcept {
        return place == detail::NumberPlace::arena ? kind | k_arena
                                                   : kind & static_cast<unsigned char>(~k_arena);
    }
    /// To be called before each of the changes that the class comment names.
    void markPage() const noexcept {
        if ((m_kind.load(std::memory_order_relaxed) & k_arena) != 0) {
            SlabArena::mark(this);
        }
    }
    /// At most k_small bytes.
    void copyBytes(std::string_view text) noexcept {
        clearWord(k_textOffset);
        clearWord(k_lastWord);
        ko::detail::copyShort(m_bytes + k_textOffset, text);
    }
    /// A wide text without a binary value.
    void layOutWide(std::string_view text) noexcept {
        m_length = static_cast<unsigned char>(text.size());
        m_kind.store(0, std::memory_order_relaxed);
        m_word.store(0, std::memory_order_relaxed);
        clearWord(k_lastWord);
        // Both halves of at most 16 bytes, which overlap.
        std::memcpy(m_bytes, text.data(), k_small);
        std::memcpy(m_bytes + text.size() - k_small, text.data() + text.size() - k_small, k_small);
    }
    void construct(std::string_view text, const Binary& binary);
    void constructLong(std::string_view text, const Binary& binary);
    void constructLike(const NumberStore& other, detail::NumberPlace place);
    void steal(NumberStore& other) noexcept;
    void takeWithoutString(Heap& kept, const NumberStore& other) noexcept;
    void takeString(Heap& kept, Heap& theirs, NumberStore& other) noexcept;
    void takeBytes(Heap& kept, const NumberStore& other) noexcept;
    Heap* takeGiven() noexcept;
    Heap* keptHeap() const noexcept;
    void putBeside(Heap& kept, Heap* given) noexcept;
    void replaceText(const Binary& binary);
    void useHeap(Heap& kept, const Binary& binary, bool isDerived) noexcept;
    Binary wideBinary() const noexcept;
    void keepWide(const Binary& binary) const noexcept;
    bool isCurrent(const Heap& held) const noexcept;
    const std::string& textOf(const Heap& held) const {
        return held.text.empty() ? makeString() : held.text;
    }
    const std::string& copySmall() const;
    const std::string& copyWide() const;
    const std::string& publishedAfterAll(Heap* made) const;
    const std::string& makeString() const;
    Heap* newDerived(Heap* former) const;
    bool publish(Heap* made) const noexcept;
    bool publishWide(Heap& made) const noexcept;

    mutable std::atomic<std::uint64_t> m_word;
    alignas(8) mutable unsigned char m_bytes[k_capacity];
    mutable std::atomic<unsigned char> m_kind;  ///< in the wide layout only k_json counts
    unsigned char m_length;                     ///< of the text in here; k_noText if none was given
};

static_assert(sizeof(NumberStore) == 32);

}  // namespace ko::Orvid
