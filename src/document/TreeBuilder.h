// SPDX-License-Identifier: MIT
//
// TreeBuilder: the tokens of a text become an element tree. A pointer to the open container goes
// down at an opening and up, by the parent link, at a closing.

#pragma once

#include <ko/Orvid/Array.h>
#include <ko/Orvid/Element.h>
#include <ko/Orvid/Object.h>
#include <ko/Orvid/ReadOptions.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <limits>
#include <string>
#include <string_view>

#include "text/TextScanner.h"
#include "tree/OpenKeys.h"
#include "tree/Place.h"
#include "tree/StringNode.h"
#include "tree/Tree.h"
#include "tree/WideKeys.h"

namespace ko::Orvid {

class TreeBuilder : public TokenSink {
public:
    explicit TreeBuilder(RepeatedKeys repeatedKeys)
        : m_rejectsRepeated(repeatedKeys == RepeatedKeys::reject) {}

    /// The next value becomes that of `root`, whose place stays.
    void begin(Element& root) noexcept {
        resume();
        m_keys.clear();
        m_wideKeys.clear();
        m_value = &root;
        m_container = root.parent();
        m_depth = 0;
        m_hasRepeated = false;
    }

    /// The text goes on, in the present scope of node memory. The tree is as it was left, which is
    /// what DomParser asks of its callers: so what is known of the keys stays known.
    void resume() noexcept { m_nodes = SlabArena::current(); }

    // Each of them returns the element that took the value.
    Element& null(TokenSpan /*span*/) { return next(); }
    Element& boolean(bool value, TokenSpan /*span*/) {
        Element& element = next();
        element.data().value.boolean = value;
        element.data().type = etBoolean;
        return element;
    }
    [[gnu::always_inline]] Element& number(std::string_view text, TokenSpan /*span*/) {
        Element& element = next();
        static_cast<void>(lengthOf(text));
        const detail::JsonNumber number{text};
        element.data().value.number =
            m_nodes == nullptr ? newNumber(text)
                               : newIn<Number>(*m_nodes, number, detail::NumberPlace::arena);
        element.data().type = etNumber;
        return element;
    }
    Element& string(std::string_view text, TokenSpan /*span*/) {
        Element& element = next();
        static_cast<void>(lengthOf(text));
        element.data().value.string = newString(m_nodes, text);
        element.data().type = etString;
        return element;
    }
    bool key(std::string_view text, TokenSpan /*span*/) {
        static_cast<void>(lengthOf(text));
        Element::TObject& object = *m_container->data().value.object;
        if (object.size() >= OpenWideKeys::k_least) {
            return wideKey(object, text);
        }
        if (OpenKeys::Member* const present = m_keys.find(object, text)) {
            return expectAgain(present->second);
        }
        return expect(Place::append(object, text).second);
    }
    Element& openObject(TokenSpan /*span*/) {
        m_keys.open();
        return open(etObject);
    }
    void closeObject(TokenSpan /*span*/) {
        m_keys.close();
        m_wideKeys.close(*m_container->data().value.object);
        close();
    }
    Element& openArray(TokenSpan /*span*/) { return open(etArray); }
    void closeArray(TokenSpan /*span*/) {
        noteLength(m_container->data().value.array->size());
        close();
    }

    /// Whether a member's value has taken the place of one with the same key.
    bool hasRepeated() const noexcept { return m_hasRepeated; }

    /// What the next token applies to: the container, or the member whose value is missing.
    Element* current() const noexcept { return m_value == nullptr ? m_container : m_value; }

private:
    /// Null yet.
    Element& next() {
        if (m_value == nullptr) {
            return Place::append(*m_container->data().value.array);
        }
        Element& value = *m_value;
        m_value = nullptr;
        if (!value.isNull()) {
            value.setNull();
        }
        return value;
    }

    /// Out of the loop over the tokens, whose functions must stay small enough to become part of
    /// it.
    [[gnu::noinline]] static Number* newNumber(std::string_view text) {
        return new Number(detail::JsonNumber{text});
    }

    [[gnu::noinline]] bool wideKey(Element::TObject& object, std::string_view text) {
        WideKeys<>* const keys = m_wideKeys.of(object);
        OpenKeys::Member* const present = keys == nullptr ? nullptr : keys->find(text);
        if (present != nullptr) {
            return expectAgain(present->second);
        }
        if (keys == nullptr || keys->hasGivenUp()) {
            const auto [member, isNew] = object.try_emplace(text);
            return isNew ? expect(member->second) : expectAgain(member->second);
        }
        OpenKeys::Member& member = Place::append(object, text);
        keys->add(member);
        return expect(member.second);
    }

    bool expect(Element& value) noexcept {
        m_value = &value;
        return true;
    }
    /// Of a member that is there already.
    bool expectAgain(Element& value) {
        if (m_rejectsRepeated) {
            return false;
        }
        value.setNull();
        m_hasRepeated = true;
        return expect(value);
    }

    Element& open(EType type) {
        Element& container = next();
        Element::SData& data = container.data();
        if (type == etObject) {
            data.value.object = make<Element::TObject>(container);
        } else {
            data.value.array = make<Element::TArray>(container);
        }
        data.type = type;
        if (type == etArray) {
            data.value.array->reserve(likelyLength());
        }
        m_container = &container;
        ++m_depth;
        return container;
    }

    /// A container's payload.
    template<class T>
    T* make(Element& container) {
        return m_nodes == nullptr ? new T(&container) : newIn<T>(*m_nodes, &container);
    }

    void close() noexcept {
        m_container = m_container->parent();
        m_depth -= m_depth == 0 ? 0 : 1;
    }

    /// Of an array that is opened: most have as many items as the last one at the same depth. Deep
    /// down, where text is mostly brackets, one: so each of them takes less than 100 bytes.
    std::size_t likelyLength() const noexcept {
        return m_depth < k_depths ? m_lengths[m_depth] : 1;
    }
    /// Of the array that is closed.
    void noteLength(std::size_t length) noexcept {
        if (m_depth != 0 && m_depth <= k_depths) {
            m_lengths[m_depth - 1] = static_cast<unsigned char>(std::min(length, k_longest));
        }
    }

    /// Throws Exception for what the events of a listener could not report either.
    static unsigned int lengthOf(std::string_view text) {
        if (text.size() > std::numeric_limits<unsigned int>::max()) {
            failLength();
        }
        return static_cast<unsigned int>(text.size());
    }
    [[noreturn]] static void failLength();

    static constexpr std::size_t k_depths = 16;
    static constexpr std::size_t k_longest = 8;

    const bool m_rejectsRepeated;
    bool m_hasRepeated = false;
    Element* m_value = nullptr;      ///< becomes the next value; null where that is a new item
    Element* m_container = nullptr;  ///< the innermost one that is open
    SlabArena* m_nodes = nullptr;    ///< of the present scope; null outside of any
    OpenKeys m_keys;
    OpenWideKeys m_wideKeys;
    std::size_t m_depth = 0;  ///< how many were opened and not closed
    /// Of the last array at each depth, up to k_longest.
    std::array<unsigned char, k_depths> m_lengths{};
};

}  // namespace ko::Orvid
