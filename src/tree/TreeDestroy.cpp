// SPDX-License-Identifier: MIT
//
// Destroying a tree: the first levels by recursion, and what lies below without.

#include <ko/Orvid/Array.h>
#include <ko/Orvid/Object.h>

#include <algorithm>
#include <cstddef>
#include <utility>

#include "tree/Place.h"
#include "tree/Tree.h"

namespace ko::Orvid {

namespace {

/// Whether this is a container, and one that was not lost when memory ran out.
bool hasPayload(const Element::SData& data) noexcept {
    return (data.type == etArray && data.value.array != nullptr) ||
           (data.type == etObject && data.value.object != nullptr);
}

/// Of any depth. The way back up is kept in the containers themselves: what a container that is
/// being emptied names as its parent is the element to go on with after it.
class DeepDemolition {
public:
    void run(Element& root) noexcept {
        enter(root, nullptr);
        while (m_current != nullptr) {
            if (m_current->type() == etArray) {
                goOn(*m_current->data().value.array);
            } else {
                goOn(*m_current->data().value.object);
            }
        }
    }

private:
    /// `element` is a container whose payload is there.
    void enter(Element& element, Element* after) noexcept {
        if (element.type() == etArray) {
            Place::moveTo(*element.data().value.array, after);
        } else {
            Place::moveTo(*element.data().value.object, after);
        }
        m_current = &element;
    }

    template<class Container>
    void goOn(Container& container) noexcept {
        if (Element* const child = releaseScalars(container)) {
            enter(*child, m_current);
        } else {
            leave(container);
        }
    }

    /// Up to a container, which is returned; null where there is none. What was before it is gone.
    static Element* releaseScalars(Element::TArray& array) noexcept {
        for (std::size_t size = array.size(); size != 0; --size) {
            const auto items = Place::stretchAt(array, size - 1);
            Element* const item = items.first + (size - 1 - items.begin);
            if (hasPayload(item->data())) {
                Place::shorten(array, size);
                return item;
            }
            releaseLeaf(item->data());
            item->data() = Element::SData();
        }
        Place::shorten(array, 0);
        return nullptr;
    }

    static Element* releaseScalars(Element::TObject& object) noexcept {
        for (; !object.empty(); Place::removeFirst(object)) {
            Element& value = Place::firstOf(object);
            if (hasPayload(value.data())) {
                return &value;
            }
        }
        return nullptr;
    }

    template<class Container>
    void leave(Container& container) noexcept {
        Element* const after = container.parent();
        delete &container;
        m_current->data() = Element::SData();
        m_current = after;
    }

    Element* m_current = nullptr;
};

/// From the first child on, which is the order in memory of what was read or copied: so the
/// processor has fetched most of it before it is needed, and the heap can give it out again in that
/// order. Recurses for the first k_levels levels.
class Demolition {
public:
    explicit Demolition(SlabArena::Freeing& freeing) : m_freeing(freeing) {}
    ~Demolition() { releasePage(); }
    Demolition(const Demolition&) = delete;
    Demolition& operator=(const Demolition&) = delete;

    /// `data` is a container whose payload is there.
    void run(const Element::SData& data) noexcept { releaseContainer(data, k_levels); }

private:
    /// The record stays as it is.
    [[gnu::always_inline]] void release(const Element::SData& data, unsigned levels) noexcept {
        if (data.type == etNumber) {
            releaseNumber(data.value.number);
        } else if (data.type == etString) {
            deleteString(data.value.string, m_freeing);
        } else if (hasPayload(data)) {
            releaseContainer(data, levels);
        }
    }

    /// Where its page is quiet, the number owns nothing and need not be fetched from memory.
    [[gnu::always_inline]] void releaseNumber(Number* number) noexcept {
        if (m_page.has(number)) {
            ++m_numbers;
        } else {
            releaseElsewhere(number);
        }
    }

    [[gnu::noinline]] void releaseElsewhere(Number* number) noexcept {
        if (const auto page = SlabArena::QuietPage::of(number)) {
            releasePage();
            m_page = page;
            m_numbers = 1;
            m_first = number;
        } else if (number != nullptr) {
            number->~Number();
            m_freeing.release(number, sizeof(Number));
        }
    }

    /// The number at `item`, and those after it in m_page. Returns the item after them.
    [[gnu::always_inline]] const Element* releaseNumbers(const Element* item,
                                                         const Element* end) noexcept {
        const auto page = m_page;
        const Element* const first = item;
        while (item != end && item->type() == etNumber && page.has(item->data().value.number)) {
            ++item;
        }
        m_numbers += static_cast<std::size_t>(item - first);
        if (item == first) {
            releaseElsewhere(item->data().value.number);
            ++item;
        }
        return item;
    }

    void releasePage() noexcept {
        if (m_page) {
            m_freeing.releaseInPage(m_first, m_numbers);
        }
    }

    void releaseContainer(const Element::SData& data, unsigned levels) noexcept {
        if (levels == 0) {
            Element root;
            root.data() = data;
            DeepDemolition().run(root);
        } else if (data.type == etArray) {
            releaseArray(data.value.array, levels - 1);
        } else {
            releaseObject(data.value.object, levels - 1);
        }
    }

    void releaseArray(Element::TArray* array, unsigned levels) noexcept {
        const std::size_t size = array->size();
        for (std::size_t position = 0; position != size;) {
            const auto items = Place::stretchAt(*array, position);
            const Element* const end = items.first + (std::min(items.end, size) - items.begin);
            const Element* item = items.first + (position - items.begin);
            while (item != end) {
                if (item->type() == etNumber) {
                    item = releaseNumbers(item, end);
                } else {
                    release((item++)->data(), levels);
                }
            }
            position = std::min(items.end, size);
        }
        forgetItems(*array);
        delete array;
    }

    static void forgetItems(Element::TArray& array) noexcept {
        if (Place::isLoose(array)) {
            for (Element& item : array) {
                item.data() = Element::SData();
            }
        }
        Place::shorten(array, 0);
    }

    void releaseObject(Element::TObject* object, unsigned levels) noexcept {
        if (object->size() > k_manyMembers) {
            releaseMany(*object, levels);
        } else {
            for (auto& [key, value] : *object) {
                release(value.data(), levels);
                value.data() = Element::SData();
            }
        }
        delete object;
    }

    /// Each member goes at once, while it is in the processor's cache.
    void releaseMany(Element::TObject& object, unsigned levels) noexcept {
        for (; !object.empty(); Place::removeFirst(object)) {
            Element& value = Place::firstOf(object);
            release(value.data(), levels);
            value.data() = Element::SData();
        }
    }

    static constexpr unsigned k_levels = 32;
    static constexpr std::size_t k_manyMembers = 256;
    SlabArena::Freeing& m_freeing;
    // Numbers that are not counted yet; they keep their slab until then.
    SlabArena::QuietPage m_page;
    std::size_t m_numbers = 0;
    const Number* m_first = nullptr;  ///< the first of them
};

}  // namespace

void destroyTree(Element::SData& data) noexcept {
    if (hasPayload(data)) {
        SlabArena::Freeing freeing;
        Demolition(freeing).run(std::exchange(data, Element::SData()));
    }
}

}  // namespace ko::Orvid
