// SPDX-License-Identifier: MIT
//
// Tests of ORVID_FIELDS: where it may stand, what becomes of fields that are missing, and the
// defaults that a document's own schema gives them.

#include <ko/Orvid/convert.h>

#include <gtest/gtest.h>
#include <ko/Orvid/PathException.h>
#include <ko/Orvid/TypeException.h>

#include <map>
#include <optional>
#include <string>
#include <tuple>
#include <utility>
#include <variant>
#include <vector>

#include "support/Document.h"

namespace described {

struct Server {
    std::string host;
    int port = 0;
    std::optional<std::vector<std::string>> tags;
};
ORVID_FIELDS(Server, host, port, tags)

/// Described within its body, with private fields, in a private section.
class Account {
public:
    Account() = default;
    Account(int number, std::string name) : m_number(number), m_name(std::move(name)) {}
    int number() const { return m_number; }
    const std::string& name() const { return m_name; }

private:
    int m_number = 0;
    std::string m_name;
    ORVID_FIELDS(Account, m_number, m_name)
};

struct Outer {
    struct Inner {
        double x = 0;
    };
    struct Own {
        bool is = false;
        ORVID_FIELDS(Own, is);
    };
    std::vector<Inner> inner;
    std::map<std::string, Own> own;
    ORVID_FIELDS(Outer, inner, own);
};
ORVID_FIELDS(Outer::Inner, x);

template<class T>
struct Box {
    T value{};
    ORVID_FIELDS(Box, value)
};

/// A tree of the program's own.
struct Node {
    int id = 0;
    std::vector<Node> children;
    ORVID_FIELDS(Node, id, children)
};

struct Base {
    int inherited = 0;
};
struct Derived : Base {
    int own = 0;
};
ORVID_FIELDS(Derived, inherited, own)

/// Described on one line, as classes of two headers may be.
struct Small {
    int id = 0;
    int size = 0;
};
struct Placed {
    int id = 0;
    int place = 0;
};
// clang-format off
ORVID_FIELDS(Small, id, size) ORVID_FIELDS(Placed, id, place)
    // clang-format on

    struct Config {
    Server server;
    std::vector<Server> more;
    double ratio = 0;
};
ORVID_FIELDS(Config, server, more, ratio)

struct Wide {
    int f1, f2, f3, f4, f5, f6, f7, f8, f9, f10, f11, f12, f13, f14, f15, f16, f17, f18, f19, f20,
        f21, f22, f23, f24, f25, f26, f27, f28, f29, f30, f31, f32, f33, f34, f35, f36, f37, f38,
        f39, f40, f41, f42, f43, f44, f45, f46, f47, f48, f49, f50, f51, f52, f53, f54, f55, f56,
        f57, f58, f59, f60, f61, f62, f63, f64, f65, f66, f67, f68, f69, f70, f71, f72, f73, f74,
        f75, f76, f77, f78, f79, f80, f81, f82, f83, f84, f85, f86, f87, f88, f89, f90, f91, f92,
        f93, f94, f95, f96, f97, f98, f99, f100;
};
ORVID_FIELDS(Wide, f1, f2, f3, f4, f5, f6, f7, f8, f9, f10, f11, f12, f13, f14, f15, f16, f17, f18,
             f19, f20, f21, f22, f23, f24, f25, f26, f27, f28, f29, f30, f31, f32, f33, f34, f35,
             f36, f37, f38, f39, f40, f41, f42, f43, f44, f45, f46, f47, f48, f49, f50, f51, f52,
             f53, f54, f55, f56, f57, f58, f59, f60, f61, f62, f63, f64, f65, f66, f67, f68, f69,
             f70, f71, f72, f73, f74, f75, f76, f77, f78, f79, f80, f81, f82, f83, f84, f85, f86,
             f87, f88, f89, f90, f91, f92, f93, f94, f95, f96, f97, f98, f99, f100)

}  // namespace described

namespace orvid_test {
namespace {

using described::Account;
using described::Config;
using described::Server;
using ko::Orvid::Element;
using ko::Orvid::Exception;
using ko::Orvid::parse;
using ko::Orvid::PathNotFound;
using ko::Orvid::serialize;

template<class T>
std::string through(const std::string& text) {
    const Element made = Element::from(parse(text).to<T>());
    CHECK_LINKS(made);
    return serialize(made);
}

TEST(convertFields, are_read_by_name_and_written_in_their_order) {
    EXPECT_EQ(through<Server>(R"({"tags":["x","y"],"other":{},"port":80,"host":"a"})"),
              R"({"host":"a","port":80,"tags":["x","y"]})");
}

TEST(convertFields, may_be_private_and_described_in_a_private_section) {
    const auto account = parse(R"({"m_name":"n","m_number":7})").to<Account>();
    EXPECT_EQ(account.number(), 7);
    EXPECT_EQ(account.name(), "n");
    EXPECT_EQ(serialize(Element::from(Account(8, "o"))), R"({"m_number":8,"m_name":"o"})");
}

TEST(convertFields, are_described_for_nested_local_and_derived_classes_and_templates) {
    constexpr const char* k_outer = R"({"inner":[{"x":0.5},{"x":2}],"own":{"a":{"is":true}}})";
    EXPECT_EQ(through<described::Outer>(k_outer), k_outer);
    EXPECT_EQ((through<described::Box<described::Box<std::string>>>(R"({"value":{"value":"x"}})")),
              R"({"value":{"value":"x"}})");
    EXPECT_EQ(through<described::Derived>(R"({"own":2,"inherited":1})"),
              R"({"inherited":1,"own":2})");
    struct Local {
        int q = 0;
        ORVID_FIELDS(Local, q)
    };
    EXPECT_EQ(through<Local>(R"({"q":3})"), R"({"q":3})");
}

TEST(convertFields, may_be_described_on_the_same_line_of_two_headers) {
    EXPECT_EQ(through<described::Small>(R"({"id":1,"size":2})"), R"({"id":1,"size":2})");
    EXPECT_EQ(through<described::Placed>(R"({"id":1,"place":2})"), R"({"id":1,"place":2})");
}

TEST(convertFields, may_be_a_hundred) {
    std::string text = "{";
    for (int i = 1; i <= 100; ++i) {
        text += "\"f" + std::to_string(i) + "\":" + std::to_string(i) + (i < 100 ? "," : "}");
    }
    EXPECT_EQ(through<described::Wide>(text), text);
}

TEST(convertFields, may_hold_their_own_class) {
    constexpr const char* k_tree =
        R"({"id":1,"children":[{"id":2,"children":[]},{"id":3,"children":[]}]})";
    EXPECT_EQ(through<described::Node>(k_tree), k_tree);
}

TEST(convertFields, are_set_in_place_of_whatever_was_there) {
    Document doc(R"({"a":{"host":"old","other":1}})");
    Server server;
    server.host = "new";
    doc.root.get("a").set(server);
    EXPECT_EQ(serialize(doc.root), R"({"a":{"host":"new","port":0,"tags":null}})");
    CHECK_LINKS(doc.root);
}

TEST(convertFields, take_null_where_they_are_optional_and_missing) {
    const auto server = parse(R"({"host":"a","port":1})").to<Server>();
    EXPECT_FALSE(server.tags.has_value());
    EXPECT_FALSE(parse(R"({"host":"a","port":1,"tags":null})").to<Server>().tags.has_value());
}

TEST(convertFields, that_are_missing_are_named_with_their_path_from_the_root) {
    const Element root = parse(R"({"list":[{"host":"a","port":1},{"host":"b"}]})");
    const auto error = thrownBy<PathNotFound>([&] { root.get("list").to<std::vector<Server>>(); });
    EXPECT_EQ(error.path(), "list[1].port");
    EXPECT_EQ(error.key(), "port");
    EXPECT_EQ(*error.elementPath(), "list[1]");
    const auto atRoot = thrownBy<PathNotFound>([] { parse("{}").to<Server>(); });
    EXPECT_EQ(atRoot.path(), "host");
}

TEST(convertFields, of_the_wrong_type_are_named) {
    const auto error = thrownBy<Exception>(
        [] { parse(R"([{"host":"a","port":"x"}])").to<std::vector<Server>>(); });
    EXPECT_EQ(*error.elementPath(), "[0].port");
    const auto whole = thrownBy<ko::Orvid::TypeException<ko::Orvid::EType>>(
        [] { parse("[[]]").to<std::vector<Server>>(); });
    EXPECT_EQ(*whole.elementPath(), "[0]");
}

/// A document whose schema knows defaults for a server, and has these data besides.
std::string withSchema(const std::string& data) {
    return R"({"meta":{"schema":{"properties":{
        "ratio":{"default":0.5},
        "server":{"properties":{"host":{"default":"localhost"},"port":{"default":80}}},
        "more":{"default":[],"items":{"properties":{"port":{"default":81},
                                                    "tags":{"default":["t"]}}}},
        "host":{"default":"by default"},
        "given":{"default":{"host":"of the object"},"properties":{"port":{"default":82}}},
        "wrong":{"default":"no object"}
    }}})" + data +
           "}";
}

TEST(convertFields, that_are_missing_take_the_default_of_the_documents_own_schema) {
    const Document doc(withSchema(R"(,"server":{"port":8080})"));
    const auto config = doc.root.to<Config>();
    EXPECT_EQ(config.server.host, "localhost");
    EXPECT_EQ(config.server.port, 8080);
    EXPECT_EQ(config.ratio, 0.5);
    EXPECT_TRUE(config.more.empty());
}

TEST(convertFields, take_the_defaults_of_the_items_of_arrays) {
    const Document doc(withSchema(R"(,"more":[{"host":"a"},{"host":"b","port":1,"tags":null}])"));
    const auto config = doc.root.to<Config>();
    ASSERT_EQ(config.more.size(), 2U);
    EXPECT_EQ(config.more[0].port, 81);
    EXPECT_EQ(config.more[0].tags, (std::vector<std::string>{"t"}));
    EXPECT_EQ(config.more[1].port, 1);
    EXPECT_FALSE(config.more[1].tags) << "null is there, so nothing is missing";
    EXPECT_EQ(doc.root.get("more[0]").to<Server>().port, 81) << "read alone";
}

TEST(convertFields, of_an_object_that_is_missing_take_their_own_defaults) {
    const Document doc(withSchema(""));
    const auto config = doc.root.to<Config>();
    EXPECT_EQ(config.server.host, "localhost");
    EXPECT_EQ(config.server.port, 80);
    EXPECT_FALSE(config.server.tags);
}

struct Given {
    Server given;
};
ORVID_FIELDS(Given, given)

TEST(convertFields, complete_the_default_of_an_object) {
    const auto value = Document(withSchema("")).root.to<Given>();
    EXPECT_EQ(value.given.host, "of the object");
    EXPECT_EQ(value.given.port, 82);
}

struct Missing {
    described::Derived server;
};
ORVID_FIELDS(Missing, server)
struct Wrong {
    Server wrong;
};
ORVID_FIELDS(Wrong, wrong)

struct Part {
    int id = 0;
    int size = 0;
    std::optional<std::string> note;
};
ORVID_FIELDS(Part, id, size, note)
bool operator==(const Part& a, const Part& b) {
    return a.id == b.id && a.size == b.size && a.note == b.note;
}

struct Machine {
    std::optional<Part> engine;
    std::optional<Part> horn;
    std::vector<Part> wheels;
    std::map<std::string, Part> doors;
    std::pair<int, Part> spare{};
    std::variant<std::string, Part> seat;
    std::optional<std::vector<std::optional<Part>>> extras;
};
ORVID_FIELDS(Machine, engine, horn, wheels, doors, spare, seat, extras)
bool operator==(const Machine& a, const Machine& b) {
    const auto fields = [](const Machine& m) {
        return std::tie(m.engine, m.horn, m.wheels, m.doors, m.spare, m.seat, m.extras);
    };
    return fields(a) == fields(b);
}

constexpr const char* k_machine = R"({"meta":{"schema":{"properties":{
    "engine":{"properties":{"id":{"default":1},"size":{"default":2}}},
    "horn":{"properties":{"id":{},"size":{"type":"integer"}}},
    "wheels":{"default":[{"id":3},{"size":4,"note":"n"}],"items":{"properties":{
        "id":{"default":5},"size":{"default":6}}}},
    "doors":{"default":{"left":{"id":7},"right":{}},"properties":{
        "left":{"properties":{"size":{"default":8}}},
        "right":{"properties":{"id":{"default":9},"size":{"default":10}}}}},
    "spare":{"default":[11,{"id":12}],"items":{"properties":{"size":{"default":13}}}},
    "seat":{"default":{"size":14},"properties":{"id":{"default":15}}},
    "extras":{"default":[null,{}],"items":{"properties":{"id":{"default":16},"size":{"default":17},
                                                         "note":{"default":"d"}}}}
}}}})";

TEST(convertFields, are_completed_in_whatever_holds_them) {
    const Document doc(k_machine);
    const auto machine = doc.root.to<Machine>();
    EXPECT_EQ(machine.engine, (Part{1, 2, std::nullopt}));
    EXPECT_FALSE(machine.horn) << "nothing in it has a default";
    EXPECT_EQ(machine.wheels, (std::vector<Part>{{3, 6, std::nullopt}, {5, 4, "n"}}));
    EXPECT_EQ(machine.doors, (std::map<std::string, Part>{{"left", {7, 8, std::nullopt}},
                                                          {"right", {9, 10, std::nullopt}}}));
    EXPECT_EQ(machine.spare, (std::pair<int, Part>{11, {12, 13, std::nullopt}}));
    EXPECT_EQ(std::get<Part>(machine.seat), (Part{15, 14, std::nullopt}));
    ASSERT_TRUE(machine.extras && machine.extras->size() == 2);
    EXPECT_FALSE((*machine.extras)[0]);
    EXPECT_EQ((*machine.extras)[1], (Part{16, 17, "d"}));
}

TEST(convertFields, are_those_that_filling_the_defaults_gives) {
    for (const char* const data :
         {"{}", R"({"engine":{"size":20}})", R"({"engine":null,"wheels":[{},{"id":21}]})",
          R"({"doors":{"left":{"id":1}},"spare":[1,{"id":2}],"extras":[{},null]})"}) {
        Document doc(k_machine);
        Element values = parse(data);
        for (auto& value : values.object()) {
            doc.root.object().insert_or_assign(value.first, std::move(value.second));
        }
        const auto read = doc.root.to<Machine>();
        const auto readAsCopy = Element(doc.root).to<Machine>();
        fillDefaults(doc.root);
        if (data == std::string("{}")) {
            EXPECT_TRUE(read == doc.root.to<Machine>()) << data;
        }
        EXPECT_TRUE(read.engine == doc.root.to<Machine>().engine) << data;
        EXPECT_TRUE(read.wheels == doc.root.to<Machine>().wheels) << data;
        EXPECT_TRUE(read == readAsCopy) << data;
    }
}

TEST(convertFields, name_the_place_in_the_data_also_in_what_a_default_holds) {
    const Document doc(R"({"meta":{"schema":{"properties":{"list":{"items":{"properties":{
        "doors":{"default":{"a.b":[{"id":1,"size":1},{"id":2}]}}}}}}}},"list":[{}]})");
    using Doors = std::map<std::string, std::vector<Part>>;
    struct House {
        Doors doors;
        ORVID_FIELDS(House, doors)
    };
    const auto error =
        thrownBy<PathNotFound>([&] { doc.root.get("list").to<std::vector<House>>(); });
    EXPECT_EQ(error.path(), "list[0].doors.a\\.b[1].size");
    EXPECT_EQ(error.key(), "doors");
    EXPECT_EQ(*error.elementPath(), "list[0]");
}

TEST(convertFields, complete_a_default_that_is_read_by_itself) {
    const Document doc(k_machine);
    const Element& wheels = doc.root.getUsingDefault("wheels");
    EXPECT_EQ(wheels.to<std::vector<Part>>(),
              (std::vector<Part>{{3, 6, std::nullopt}, {5, 4, "n"}}));
    EXPECT_EQ(doc.root.getDefault("doors").get("right").to<Part>(), (Part{9, 10, std::nullopt}));
}

/// Each level doubles: two items, of which each has such a default.
struct Doubling {
    std::vector<Doubling> a;
    ORVID_FIELDS(Doubling, a)
};

TEST(convertFields, do_not_follow_defaults_that_multiply_without_end) {
    std::string schema = R"({"default":[]})";
    for (int i = 0; i < 40; ++i) {
        schema = R"({"default":[{},{}],"items":{"properties":{"a":)" + schema + "}}}";
    }
    const Document doc(R"({"meta":{"schema":{"properties":{"a":)" + schema + "}}}}");
    const auto error =
        thrownBy<ko::Orvid::LimitExceeded>([&] { static_cast<void>(doc.root.to<Doubling>()); });
    EXPECT_EQ(error.option(), "maxElements");
    EXPECT_LE(1U << 18U, error.limit());
}

TEST(convertFields, name_the_place_in_the_data_where_neither_has_a_value) {
    const Document doc(withSchema(""));
    const auto error = thrownBy<PathNotFound>([&] { doc.root.to<Missing>(); });
    EXPECT_EQ(error.path(), "server.inherited");
    EXPECT_EQ(error.key(), "server");
    EXPECT_EQ(*error.elementPath(), "");
}

struct Note {
    std::optional<std::string> text;
    ORVID_FIELDS(Note, text)
};
struct Labelled {
    std::variant<std::monostate, int, Note, Part> label;
    ORVID_FIELDS(Labelled, label)
};

Labelled labelledBy(const std::string& description) {
    return Document(R"({"meta":{"schema":{"properties":{"label":)" + description + "}}}}")
        .root.to<Labelled>();
}

TEST(convertFields, are_made_of_their_members_defaults_in_a_variant_too) {
    const Labelled note = labelledBy(R"({"properties":{"text":{"default":"n"}}})");
    ASSERT_TRUE(std::holds_alternative<Note>(note.label));
    EXPECT_EQ(std::get<Note>(note.label).text, "n");

    struct Chosen {
        std::variant<int, Part> label;
        ORVID_FIELDS(Chosen, label)
    };
    const Document doc(R"({"meta":{"schema":{"properties":{"label":{"properties":{
        "id":{"default":1},"size":{"default":2}}}}}}})");
    EXPECT_EQ(std::get<Part>(doc.root.to<Chosen>().label), (Part{1, 2, std::nullopt}));

    const Document lacksOne(R"({"meta":{"schema":{"properties":{"label":{"properties":{
        "id":{"default":1}}}}}}})");
    const auto error = thrownBy<PathNotFound>([&] { lacksOne.root.to<Chosen>(); });
    EXPECT_EQ(error.path(), "label") << "no alternative can be made";
}

TEST(convertFields, are_missed_where_neither_the_data_nor_a_default_has_any) {
    for (const char* const description :
         {"null", "{}", R"({"properties":{"text":{"type":"string"}}})"}) {
        const auto error = thrownBy<PathNotFound>([&] { labelledBy(description); });
        EXPECT_EQ(error.path(), "label") << description;
    }
    struct Letter {
        Note note;
        ORVID_FIELDS(Letter, note)
    };
    const Document doc(R"({"meta":{"schema":{"properties":{"note":{"properties":{"text":{}}}}}}})");
    const auto error = thrownBy<PathNotFound>([&] { doc.root.to<Letter>(); });
    EXPECT_EQ(error.path(), "note") << "optional fields alone do not make an object";
    EXPECT_FALSE(parse(R"({"note":{}})").to<Letter>().note.text);
}

TEST(convertFields, name_a_default_of_the_wrong_type) {
    const Document doc(withSchema(""));
    const auto error = thrownBy<Exception>([&] { doc.root.to<Wrong>(); });
    EXPECT_EQ(*error.elementPath(), "meta.schema.properties.wrong.default");
}

TEST(convertFields, of_type_empty_count_as_missing) {
    Document doc(withSchema(R"(,"host":"x","port":1)"));
    doc.root.get("host") = Element::k_emptyElement;
    EXPECT_EQ(doc.root.to<Server>().host, "by default");
}

}  // namespace
}  // namespace orvid_test
