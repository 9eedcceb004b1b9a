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

// Create.

TEST(ElementDataCreate, sets_the_tag) {
    for (const EType type : k_types) {
        const Record record(type, nullptr);
        EXPECT_EQ(record.data.type, type);
    }
}

TEST(ElementDataCreate, of_a_number_makes_a_signed_zero_with_text) {
    const Record record(ko::Orvid::etNumber, nullptr);
    EXPECT_EQ(NumberProbe::heldKind(*record.data.value.number), Number::ebLongLong);
    EXPECT_EQ(NumberProbe::heldText(*record.data.value.number), "0");
    EXPECT_EQ(NumberProbe::heldSigned(*record.data.value.number), 0);
}

TEST(ElementDataCreate, of_a_string_makes_an_empty_string) {
    const Record record(ko::Orvid::etString, nullptr);
    EXPECT_EQ(*record.data.value.string, "");
}

TEST(ElementDataCreate, of_containers_makes_them_empty_with_the_owner_as_parent) {
    Element owner;
    const Record object(ko::Orvid::etObject, &owner);
    EXPECT_EQ(object.data.value.object->size(), 0U);
    EXPECT_EQ(object.data.value.object->parent(), &owner);
    const Record array(ko::Orvid::etArray, &owner);
    EXPECT_EQ(array.data.value.array->size(), 0U);
    EXPECT_EQ(array.data.value.array->parent(), &owner);
    EXPECT_EQ(owner.type(), ko::Orvid::etNull);
}

TEST(ElementDataCreate, of_a_container_names_the_owner_as_parent_of_later_children) {
    Element owner;
    const Record array(ko::Orvid::etArray, &owner);
    array.data.value.array->push_back(Element(1));
    EXPECT_EQ(array.data.value.array->front().parent(), &owner);
}

TEST(ElementDataCreate, leaves_the_payload_word_of_types_without_payload) {
    Element::SData data;
    data.type = ko::Orvid::etBoolean;
    data.value.boolean = true;
    Element::create(data, ko::Orvid::etBoolean, nullptr);
    EXPECT_TRUE(data.value.boolean);
    Element::create(data, ko::Orvid::etEmpty, nullptr);
    EXPECT_EQ(data.type, ko::Orvid::etEmpty);
    Element::create(data, ko::Orvid::etNull, nullptr);
    EXPECT_EQ(data.type, ko::Orvid::etNull);
    Element::create(data, static_cast<EType>(42), nullptr);
    EXPECT_EQ(data.type, 42);
    Element::create(data, ko::Orvid::etBoolean, nullptr);
    EXPECT_TRUE(data.value.boolean);
}

TEST(ElementDataCreate, keeps_the_marker_of_a_null) {
    Element::SData data;
    Element::create(data, ko::Orvid::etNull, nullptr);
    EXPECT_EQ(data.value.null, Element::k_null);
}

TEST(ElementDataCreate, does_not_release_the_payload_from_before) {
    Element::SData data;
    Element::create(data, ko::Orvid::etString, nullptr);
    const std::unique_ptr<std::string> before(data.value.string);
    *before = "before";
    Element::create(data, ko::Orvid::etNumber, nullptr);
    EXPECT_EQ(*before, "before");
    Element::destroy(data);
}

TEST(ElementDataCreate, leaves_the_place_of_the_element) {
    Document document(R"({"k":[0,null]})");
    Element& item = document.root.get("k[1]");
    Element::create(item.data(), ko::Orvid::etObject, &item);
    EXPECT_EQ(compact(document.root), R"({"k": [0,{}]})");
    CHECK_LINKS(document.root);
}

// Destroy.

TEST(ElementDataDestroy, leaves_the_tag) {
    for (const EType type : k_types) {
        Element::SData data;
        Element::create(data, type, nullptr);
        Element::destroy(data);
        EXPECT_EQ(data.type, type);
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
        EXPECT_EQ(bytesOf(data.value), before) << type;
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
    EXPECT_EQ(null.value.null, Element::k_null);
}

TEST(ElementDataDestroy, skips_a_payload_that_is_not_there) {
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
    EXPECT_EQ(data.value.array, nullptr);
}

TEST(ElementDataDestroy, skips_what_is_tagged_with_no_type) {
    Element::SData data;
    std::string text("text");
    data.type = static_cast<EType>(42);
    data.value.string = &text;
    Element::destroy(data);
    EXPECT_EQ(data.value.string, &text);
    EXPECT_EQ(text, "text");
}

TEST(ElementDestroy, without_argument_has_no_effect) {
    for (const EType type : k_types) {
        Element element(valueOf(type));
        const Element before(element);
        element.destroy();
        EXPECT_EQ(element.type(), type);
        EXPECT_TRUE(equal(before.data(), element.data()));
    }
}

// Copy.

TEST(ElementDataCopy, of_every_type_into_every_type_is_equal_and_separate) {
    Element owner;
    for (const EType from : k_types) {
        for (const EType into : k_types) {
            const Element source(valueOf(from));
            Record target(valueOf(into), &owner);
            Element::copy(target.data, source.data(), &owner);
            EXPECT_EQ(target.data.type, from);
            EXPECT_TRUE(equal(source.data(), target.data)) << from << " into " << into;
            EXPECT_EQ(source.type(), from);
            EXPECT_TRUE(equal(valueOf(from).data(), source.data())) << from << " into " << into;
        }
    }
}

TEST(ElementDataCopy, into_another_type_gives_containers_the_owner_as_parent) {
    Element owner;
    const Element object(valueOf(ko::Orvid::etObject));
    const Record objectCopy(object, &owner);
    EXPECT_EQ(objectCopy.data.value.object->parent(), &owner);
    for (const auto& member : *objectCopy.data.value.object) {
        EXPECT_EQ(member.second.parent(), &owner);
        EXPECT_EQ(member.second.data().type == ko::Orvid::etArray ? "b" : "a", member.first);
    }
    const Element array(valueOf(ko::Orvid::etArray));
    const Record arrayCopy(array, &owner);
    EXPECT_EQ(arrayCopy.data.value.array->parent(), &owner);
    for (const Element& item : *arrayCopy.data.value.array) {
        EXPECT_EQ(item.parent(), &owner);
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
    EXPECT_EQ(target.data.value.array, array);
    EXPECT_EQ(array->parent(), &parent);
    EXPECT_EQ(array->size(), 3U);
    for (const Element& item : *array) {
        EXPECT_EQ(item.parent(), &parent);
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
    EXPECT_EQ(target.data.value.object, object);
    EXPECT_EQ(object->parent(), &parent);
    EXPECT_EQ(object->size(), 2U);
    for (const auto& member : *object) {
        EXPECT_EQ(member.second.parent(), &parent);
    }
    EXPECT_TRUE(equal(source.data(), target.data));
}

TEST(ElementDataCopy, into_a_number_or_a_string_keeps_the_payload_object) {
    Record number(Element(1));
    const Number* const numberBefore = number.data.value.number;
    Element::copy(number.data, Element(Number("1.50")).data(), nullptr);
    EXPECT_EQ(number.data.value.number, numberBefore);
    EXPECT_EQ(numberBefore->toString(), "1.50");
    Record text(Element("before"));
    const std::string* const textBefore = text.data.value.string;
    Element::copy(text.data, Element("after").data(), nullptr);
    EXPECT_EQ(text.data.value.string, textBefore);
    EXPECT_EQ(*textBefore, "after");
}

TEST(ElementDataCopy, of_a_number_takes_over_both_sides_as_they_are) {
    const Element source(Number("1.50"));
    const Record fresh(source);
    EXPECT_EQ(NumberProbe::heldKind(*fresh.data.value.number), Number::ebNone);
    EXPECT_EQ(NumberProbe::heldText(*fresh.data.value.number), "1.50");
    EXPECT_EQ(NumberProbe::heldKind(source.number()), Number::ebNone);
}

TEST(ElementDataCopy, of_a_record_to_itself_changes_nothing) {
    for (const EType type : k_types) {
        Element owner;
        Record record(valueOf(type), &owner);
        Element::copy(record.data, record.data, nullptr);
        EXPECT_EQ(record.data.type, type);
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
            EXPECT_EQ(target.data.type, type);
            if (type >= ko::Orvid::etNumber) {
                EXPECT_EQ(target.data.value.string, before.value.string)
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
    EXPECT_EQ(target.data.type, ko::Orvid::etString);
    EXPECT_EQ(*target.data.value.string, "text");
}

TEST(ElementDataCopy, copies_the_values_and_markers_of_small_types) {
    Record target{Element(true)};
    Element::copy(target.data, Element(false).data(), nullptr);
    EXPECT_FALSE(target.data.value.boolean);
    Element::copy(target.data, Element().data(), nullptr);
    EXPECT_EQ(target.data.value.null, Element::k_null);
    Element::copy(target.data, Element(true).data(), nullptr);
    EXPECT_TRUE(target.data.value.boolean);
}

TEST(ElementDataCopy, of_an_empty_leaves_the_payload_word) {
    Record target{Element(true)};
    Element::copy(target.data, Element::k_emptyElement.data(), nullptr);
    EXPECT_EQ(target.data.type, ko::Orvid::etEmpty);
    EXPECT_TRUE(target.data.value.boolean);
}

TEST(ElementDataCopy, leaves_the_place_of_the_target) {
    for (const EType type : k_types) {
        Document document(R"({"k":[0,{"m":1}]})");
        for (const char* const place : {"k[1].m", "k[1]", "k"}) {
            Element& target = document.root.get(place);
            Element* const parent = target.parent();
            Element::copy(target.data(), valueOf(type).data(), &target);
            EXPECT_EQ(target.parent(), parent);
            EXPECT_EQ(target.path(), place);
            CHECK_LINKS_AFTER_COPY(document.root);
        }
    }
}

TEST(ElementDataCopy, takes_a_source_that_lies_in_the_target) {
    Document document(R"({"a":[{"b":1},2]})");
    Element::copy(document.root.data(), document.root.get("a").data(), &document.root);
    EXPECT_EQ(compact(document.root), R"([{"b": 1},2])");
    Element::copy(document.root.data(), document.root.get("[0]").data(), &document.root);
    EXPECT_EQ(compact(document.root), R"({"b": 1})");
    CHECK_LINKS_AFTER_COPY(document.root);
}

// Construct and clone.

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
        EXPECT_EQ(made.get(), where);
        EXPECT_EQ(made->type(), ko::Orvid::etNull);
        EXPECT_EQ(made->data().value.null, Element::k_null);
        EXPECT_EQ(made->parent(), nullptr);
        EXPECT_EQ(made->key(), "");
        EXPECT_EQ(model.type(), type);
    }
}

TEST(ElementConstruct, without_storage_makes_a_null_on_the_heap) {
    const Document document(R"({"a":["text"]})");
    const std::unique_ptr<Element> made(document.root.get("a[0]").construct(nullptr));
    EXPECT_EQ(made->type(), ko::Orvid::etNull);
    EXPECT_EQ(made->parent(), nullptr);
    EXPECT_EQ(made->key(), "");
}

TEST(ElementClone, is_a_null_and_not_a_copy) {
    for (const EType type : k_types) {
        const Element element(valueOf(type));
        const std::unique_ptr<Element> clone(element.clone());
        EXPECT_NE(clone.get(), &element);
        EXPECT_EQ(clone->type(), ko::Orvid::etNull);
        EXPECT_EQ(clone->parent(), nullptr);
    }
}

}  // namespace
