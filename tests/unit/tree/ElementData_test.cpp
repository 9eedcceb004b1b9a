// SPDX-License-Identifier: MIT
//
// The payload records of elements: making, copying and releasing them, and making null elements.

#include <ko/Orvid/Element.h>

#include <gtest/gtest.h>
#include <ko/Orvid/Array.h>
#include <ko/Orvid/Object.h>

#include <array>
#include <cstring>
#include <memory>
#include <string>
#include <utility>

#include "support/Document.h"
#include "support/NumberProbe.h"

namespace {

using ko::Orvid::Element;
using ko::Orvid::EType;
using ko::Orvid::Number;
using ko::Orvid::NumberProbe;
using orvid_test::compact;
using orvid_test::Document;

constexpr EType k_types[] = {ko::Orvid::etEmpty,  ko::Orvid::etNull,   ko::Orvid::etBoolean,
                             ko::Orvid::etNumber, ko::Orvid::etString, ko::Orvid::etObject,
                             ko::Orvid::etArray};

/// A payload record that is released at the end of the scope.
struct Record {
    Record() = default;
    Record(EType type, Element* owner) { Element::create(data, type, owner); }
    explicit Record(const Element& source, Element* owner = nullptr) {
        Element::copy(data, source.data(), owner);
    }
    Record(const Record&) = delete;
    Record& operator=(const Record&) = delete;
    ~Record() { Element::destroy(data); }

    Element::SData data;
};

/// One value of each type, with children where it is a container.
Element valueOf(EType type) {
    switch (type) {
        case ko::Orvid::etEmpty:
            return Element::k_emptyElement;
        case ko::Orvid::etBoolean:
            return true;
        case ko::Orvid::etNumber:
            return Number("1.50");
        case ko::Orvid::etString:
            return "a text of some length, on the heap";
        case ko::Orvid::etObject:
            return Document(R"({"a":1,"b":[2,{"c":3}]})").root;
        case ko::Orvid::etArray:
            return Document(R"([1,{"a":[2]},"x"])").root;
        default:
            return Element();
    }
}

bool equal(const Element::SData& a, const Element::SData& b) { return Element::compare(a, b) == 0; }

// --- create
// -----------------------------------------------------------------------------------------

TEST(ElementDataCreate, sets_the_tag) {
    for (const EType type : k_types) {
        const Record record(type, nullptr);
        EXPECT_EQ(type, record.data.type);
    }
}

TEST(ElementDataCreate, of_a_number_makes_a_signed_zero_with_text) {
    const Record record(ko::Orvid::etNumber, nullptr);
    EXPECT_EQ(Number::ebLongLong, NumberProbe::heldKind(*record.data.value.number));
    EXPECT_EQ("0", NumberProbe::heldText(*record.data.value.number));
    EXPECT_EQ(0, NumberProbe::heldSigned(*record.data.value.number));
}

TEST(ElementDataCreate, of_a_string_makes_an_empty_string) {
    const Record record(ko::Orvid::etString, nullptr);
    EXPECT_EQ("", *record.data.value.string);
}

TEST(ElementDataCreate, of_containers_makes_them_empty_with_the_owner_as_parent) {
    Element owner;
    const Record object(ko::Orvid::etObject, &owner);
    EXPECT_EQ(0U, object.data.value.object->size());
    EXPECT_EQ(&owner, object.data.value.object->parent());
    const Record array(ko::Orvid::etArray, &owner);
    EXPECT_EQ(0U, array.data.value.array->size());
    EXPECT_EQ(&owner, array.data.value.array->parent());
    EXPECT_EQ(ko::Orvid::etNull, owner.type());
}

TEST(ElementDataCreate, of_a_container_names_the_owner_as_parent_of_later_children) {
    Element owner;
    const Record array(ko::Orvid::etArray, &owner);
    array.data.value.array->push_back(Element(1));
    EXPECT_EQ(&owner, array.data.value.array->front().parent());
}

TEST(ElementDataCreate, leaves_the_payload_word_of_types_without_payload) {
    Element::SData data;
    data.type = ko::Orvid::etBoolean;
    data.value.boolean = true;
    Element::create(data, ko::Orvid::etBoolean, nullptr);
    EXPECT_TRUE(data.value.boolean);
    Element::create(data, ko::Orvid::etEmpty, nullptr);
    EXPECT_EQ(ko::Orvid::etEmpty, data.type);
    Element::create(data, ko::Orvid::etNull, nullptr);
    EXPECT_EQ(ko::Orvid::etNull, data.type);
    Element::create(data, static_cast<EType>(42), nullptr);
    EXPECT_EQ(42, data.type);
    Element::create(data, ko::Orvid::etBoolean, nullptr);
    EXPECT_TRUE(data.value.boolean);
}

TEST(ElementDataCreate, keeps_the_marker_of_a_null) {
    Element::SData data;
    Element::create(data, ko::Orvid::etNull, nullptr);
    EXPECT_EQ(Element::k_null, data.value.null);
}

TEST(ElementDataCreate, does_not_release_the_payload_from_before) {
    Element::SData data;
    Element::create(data, ko::Orvid::etString, nullptr);
    const std::unique_ptr<std::string> before(data.value.string);
    *before = "before";
    Element::create(data, ko::Orvid::etNumber, nullptr);
    EXPECT_EQ("before", *before);
    Element::destroy(data);
}

TEST(ElementDataCreate, leaves_the_place_of_the_element) {
    Document document(R"({"k":[0,null]})");
    Element& item = document.root.get("k[1]");
    Element::create(item.data(), ko::Orvid::etObject, &item);
    EXPECT_EQ(R"({"k": [0,{}]})", compact(document.root));
    CHECK_LINKS(document.root);
}

// --- destroy
// ----------------------------------------------------------------------------------------

TEST(ElementDataDestroy, leaves_the_tag) {
    for (const EType type : k_types) {
        Element::SData data;
        Element::create(data, type, nullptr);
        Element::destroy(data);
        EXPECT_EQ(type, data.type);
    }
}

/// All bytes of the word, also those that the payload does not use.
std::array<unsigned char, sizeof(Element::SData::UValue)> bytesOf(
    const Element::SData::UValue& word) {
    std::array<unsigned char, sizeof word> bytes;
    std::memcpy(bytes.data(), &word, sizeof word);
    return bytes;
}

TEST(ElementDataDestroy, leaves_the_payload_word_of_every_type) {
    for (const EType type : k_types) {
        Element::SData data;
        Element::create(data, type, nullptr);
        const auto before = bytesOf(data.value);
        Element::destroy(data);
        EXPECT_EQ(before, bytesOf(data.value)) << type;
    }
}

TEST(ElementDataDestroy, leaves_the_payload_of_a_boolean_and_a_null) {
    Element::SData data;
    data.type = ko::Orvid::etBoolean;
    data.value.boolean = true;
    Element::destroy(data);
    EXPECT_TRUE(data.value.boolean);
    Element::SData null;
    Element::destroy(null);
    EXPECT_EQ(Element::k_null, null.value.null);
}

TEST(ElementDataDestroy, passes_over_a_payload_that_is_not_there) {
    Element::SData data;
    data.type = ko::Orvid::etNumber;
    data.value.number = nullptr;
    Element::destroy(data);
    data.type = ko::Orvid::etString;
    data.value.string = nullptr;
    Element::destroy(data);
    data.type = ko::Orvid::etObject;
    data.value.object = nullptr;
    Element::destroy(data);
    data.type = ko::Orvid::etArray;
    data.value.array = nullptr;
    Element::destroy(data);
    EXPECT_EQ(nullptr, data.value.array);
}

TEST(ElementDataDestroy, passes_over_what_is_tagged_with_no_type) {
    Element::SData data;
    std::string text("text");
    data.type = static_cast<EType>(42);
    data.value.string = &text;
    Element::destroy(data);
    EXPECT_EQ(&text, data.value.string);
    EXPECT_EQ("text", text);
}

TEST(ElementDestroy, without_argument_has_no_effect) {
    for (const EType type : k_types) {
        Element element(valueOf(type));
        const Element before(element);
        element.destroy();
        EXPECT_EQ(type, element.type());
        EXPECT_TRUE(equal(before.data(), element.data()));
    }
}

// --- copy
// -------------------------------------------------------------------------------------------

TEST(ElementDataCopy, of_every_type_into_every_type_is_equal_and_separate) {
    Element owner;
    for (const EType from : k_types) {
        for (const EType into : k_types) {
            const Element source(valueOf(from));
            Record target(valueOf(into), &owner);
            Element::copy(target.data, source.data(), &owner);
            EXPECT_EQ(from, target.data.type);
            EXPECT_TRUE(equal(source.data(), target.data)) << from << " into " << into;
            EXPECT_EQ(from, source.type());
            EXPECT_TRUE(equal(valueOf(from).data(), source.data())) << from << " into " << into;
        }
    }
}

TEST(ElementDataCopy, into_another_type_gives_containers_the_owner_as_parent) {
    Element owner;
    const Element object(valueOf(ko::Orvid::etObject));
    const Record objectCopy(object, &owner);
    EXPECT_EQ(&owner, objectCopy.data.value.object->parent());
    for (const auto& member : *objectCopy.data.value.object) {
        EXPECT_EQ(&owner, member.second.parent());
        EXPECT_EQ(member.first, member.second.data().type == ko::Orvid::etArray ? "b" : "a");
    }
    const Element array(valueOf(ko::Orvid::etArray));
    const Record arrayCopy(array, &owner);
    EXPECT_EQ(&owner, arrayCopy.data.value.array->parent());
    for (const Element& item : *arrayCopy.data.value.array) {
        EXPECT_EQ(&owner, item.parent());
    }
}

TEST(ElementDataCopy, into_an_array_keeps_the_array_and_its_parent) {
    Element parent;
    Element otherOwner;
    Record target(ko::Orvid::etArray, &parent);
    target.data.value.array->push_back(Element("old"));
    const Element::TArray* const array = target.data.value.array;
    const Element source(valueOf(ko::Orvid::etArray));
    Element::copy(target.data, source.data(), &otherOwner);
    EXPECT_EQ(array, target.data.value.array);
    EXPECT_EQ(&parent, array->parent());
    EXPECT_EQ(3U, array->size());
    for (const Element& item : *array) {
        EXPECT_EQ(&parent, item.parent());
    }
    EXPECT_TRUE(equal(source.data(), target.data));
}

TEST(ElementDataCopy, into_an_object_keeps_the_object_and_its_parent) {
    Element parent;
    Element otherOwner;
    Record target(ko::Orvid::etObject, &parent);
    target.data.value.object->insert({"old", Element(1)});
    const Element::TObject* const object = target.data.value.object;
    const Element source(valueOf(ko::Orvid::etObject));
    Element::copy(target.data, source.data(), &otherOwner);
    EXPECT_EQ(object, target.data.value.object);
    EXPECT_EQ(&parent, object->parent());
    EXPECT_EQ(2U, object->size());
    for (const auto& member : *object) {
        EXPECT_EQ(&parent, member.second.parent());
    }
    EXPECT_TRUE(equal(source.data(), target.data));
}

TEST(ElementDataCopy, into_a_number_or_a_string_keeps_the_payload_object) {
    Record number(Element(1));
    const Number* const numberBefore = number.data.value.number;
    Element::copy(number.data, Element(Number("1.50")).data(), nullptr);
    EXPECT_EQ(numberBefore, number.data.value.number);
    EXPECT_EQ("1.50", numberBefore->toString());
    Record text(Element("before"));
    const std::string* const textBefore = text.data.value.string;
    Element::copy(text.data, Element("after").data(), nullptr);
    EXPECT_EQ(textBefore, text.data.value.string);
    EXPECT_EQ("after", *textBefore);
}

TEST(ElementDataCopy, of_a_number_takes_over_both_sides_as_they_are) {
    const Element source(Number("1.50"));
    const Record fresh(source);
    EXPECT_EQ(Number::ebNone, NumberProbe::heldKind(*fresh.data.value.number));
    EXPECT_EQ("1.50", NumberProbe::heldText(*fresh.data.value.number));
    EXPECT_EQ(Number::ebNone, NumberProbe::heldKind(source.number()));
}

TEST(ElementDataCopy, of_a_record_to_itself_changes_nothing) {
    for (const EType type : k_types) {
        Element owner;
        Record record(valueOf(type), &owner);
        Element::copy(record.data, record.data, nullptr);
        EXPECT_EQ(type, record.data.type);
        EXPECT_TRUE(equal(valueOf(type).data(), record.data)) << type;
    }
}

TEST(ElementDataCopy, of_what_is_tagged_with_no_type_changes_nothing) {
    for (const int tag : {6, 42, -2}) {
        Element::SData source;
        source.type = static_cast<EType>(tag);
        for (const EType type : k_types) {
            Record target{valueOf(type)};
            const Element::SData before = target.data;
            Element::copy(target.data, source, nullptr);
            EXPECT_EQ(type, target.data.type);
            if (type >= ko::Orvid::etNumber) {
                EXPECT_EQ(before.value.string, target.data.value.string)
                    << "not the payload before";
            }
            EXPECT_TRUE(equal(valueOf(type).data(), target.data)) << type;
        }
    }
}

TEST(ElementDataCopy, overwrites_what_is_tagged_with_no_type) {
    Record target;
    target.data.type = static_cast<EType>(42);
    Element::copy(target.data, Element("text").data(), nullptr);
    EXPECT_EQ(ko::Orvid::etString, target.data.type);
    EXPECT_EQ("text", *target.data.value.string);
}

TEST(ElementDataCopy, copies_the_values_and_markers_of_small_types) {
    Record target{Element(true)};
    Element::copy(target.data, Element(false).data(), nullptr);
    EXPECT_FALSE(target.data.value.boolean);
    Element::copy(target.data, Element().data(), nullptr);
    EXPECT_EQ(Element::k_null, target.data.value.null);
    Element::copy(target.data, Element(true).data(), nullptr);
    EXPECT_TRUE(target.data.value.boolean);
}

TEST(ElementDataCopy, of_an_empty_leaves_the_payload_word) {
    Record target{Element(true)};
    Element::copy(target.data, Element::k_emptyElement.data(), nullptr);
    EXPECT_EQ(ko::Orvid::etEmpty, target.data.type);
    EXPECT_TRUE(target.data.value.boolean);
}

TEST(ElementDataCopy, leaves_the_place_of_the_target) {
    for (const EType type : k_types) {
        Document document(R"({"k":[0,{"m":1}]})");
        for (const char* const place : {"k[1].m", "k[1]", "k"}) {
            Element& target = document.root.get(place);
            Element* const parent = target.parent();
            Element::copy(target.data(), valueOf(type).data(), &target);
            EXPECT_EQ(parent, target.parent());
            EXPECT_EQ(place, target.path());
            CHECK_LINKS_AFTER_COPY(document.root);
        }
    }
}

TEST(ElementDataCopy, takes_a_source_that_lies_in_the_target) {
    Document document(R"({"a":[{"b":1},2]})");
    Element::copy(document.root.data(), document.root.get("a").data(), &document.root);
    EXPECT_EQ(R"([{"b": 1},2])", compact(document.root));
    Element::copy(document.root.data(), document.root.get("[0]").data(), &document.root);
    EXPECT_EQ(R"({"b": 1})", compact(document.root));
    CHECK_LINKS_AFTER_COPY(document.root);
}

// --- construct and clone
// --------------------------------------------------------------------------------

/// Destroys what construct() made in storage of the test's own.
struct Destroy {
    void operator()(Element* element) const { element->~Element(); }
};

TEST(ElementConstruct, makes_a_null_in_the_given_storage_whatever_the_element_is) {
    for (const EType type : k_types) {
        alignas(Element) unsigned char storage[sizeof(Element)];
        std::memset(storage, 0xA5, sizeof storage);
        auto* const where = reinterpret_cast<Element*>(storage);
        const Element model(valueOf(type));
        const std::unique_ptr<Element, Destroy> made(model.construct(where));
        EXPECT_EQ(where, made.get());
        EXPECT_EQ(ko::Orvid::etNull, made->type());
        EXPECT_EQ(Element::k_null, made->data().value.null);
        EXPECT_EQ(nullptr, made->parent());
        EXPECT_EQ("", made->key());
        EXPECT_EQ(type, model.type());
    }
}

TEST(ElementConstruct, without_storage_makes_a_null_on_the_heap) {
    const Document document(R"({"a":["text"]})");
    const std::unique_ptr<Element> made(document.root.get("a[0]").construct(nullptr));
    EXPECT_EQ(ko::Orvid::etNull, made->type());
    EXPECT_EQ(nullptr, made->parent());
    EXPECT_EQ("", made->key());
}

TEST(ElementClone, is_a_null_and_not_a_copy) {
    for (const EType type : k_types) {
        const Element element(valueOf(type));
        const std::unique_ptr<Element> clone(element.clone());
        EXPECT_NE(&element, clone.get());
        EXPECT_EQ(ko::Orvid::etNull, clone->type());
        EXPECT_EQ(nullptr, clone->parent());
    }
}

}  // namespace
