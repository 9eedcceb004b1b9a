// SPDX-License-Identifier: MIT
//
// The const operations of what reads, writes and holds files: they say how far it has come, and
// four threads ask at once, while it does nothing.

#include <ko/Orvid.h>

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

#include "support/Document.h"
#include "support/RecordingListener.h"
#include "support/ScratchFolder.h"
#include "threads/AtOnce.h"

namespace orvid_test {
namespace {

using ko::Orvid::Dom;
using ko::Orvid::Element;
using ko::Orvid::FileStamp;
using ko::Orvid::JsonLines;
using ko::Orvid::Path;

/// Something that has begun its work, and what it works on.
template<class T, class On>
struct Begun {
    std::unique_ptr<On> on;
    std::unique_ptr<T> what;
};

template<class Make, class Read>
void readStateAtOnce(const Make& make, const Read& read) {
    readAtOnce(
        make, [&](const auto& begun) { return read(*begun.what); },
        [](const auto& begun) { EXPECT_NE(begun.what, nullptr); });
}

TEST(StateThreads, ask_a_generator) {
    const auto make = [] {
        Begun<ko::Orvid::Generator, std::ostringstream> begun{
            std::make_unique<std::ostringstream>(), nullptr};
        begun.what = std::make_unique<ko::Orvid::Generator>(begun.on.get());
        begun.what->gen_array_open();
        begun.what->gen_object_close();
        begun.what->setIndent("   ");
        return begun;
    };
    readStateAtOnce(make, [](const ko::Orvid::Generator& generator) {
        return std::to_string(generator.state()) + generator.indent();
    });
}

TEST(StateThreads, ask_a_parser_of_events) {
    const auto make = [] {
        Begun<ko::Orvid::CallbackParser, RecordingListener> begun{
            std::make_unique<RecordingListener>(), nullptr};
        begun.what = std::make_unique<ko::Orvid::CallbackParser>(begun.on.get());
        begun.what->parse("[1, [\"te");
        return begun;
    };
    readStateAtOnce(make, [](const ko::Orvid::CallbackParser& parser) {
        return std::to_string(parser.state()) + " " + std::to_string(parser.position());
    });
}

TEST(StateThreads, ask_a_parser_of_trees) {
    const auto make = [] {
        Begun<ko::Orvid::DomParser, Element> begun{std::make_unique<Element>(),
                                                   std::make_unique<ko::Orvid::DomParser>()};
        begun.what->parse(*begun.on, R"({"a":[1,)");
        return begun;
    };
    readStateAtOnce(make, [](const ko::Orvid::DomParser& parser) {
        return std::to_string(parser.state()) + " " + std::to_string(parser.position()) +
               parser.openElement()->path();
    });
}

TEST(StateThreads, ask_for_places_in_a_record) {
    const auto make = [] {
        Begun<JsonLines, std::istringstream> begun{
            std::make_unique<std::istringstream>("[1]\n{\"a\": [2.5]}\n"), nullptr};
        begun.what = std::make_unique<JsonLines>(*begun.on);
        begun.what->next();
        begun.what->next();
        return begun;
    };
    readStateAtOnce(make, [](const JsonLines& lines) {
        const auto place = lines.placeOf("a[0]");
        const ko::RuntimeError error("the message");
        return std::to_string(lines.number()) + ":" + std::to_string(place->column) +
               (lines.placeOf("none") ? "somewhere" : "nowhere") + describe(error, lines);
    });
}

TEST(StateThreads, read_a_record_by_one_iterator) {
    std::istringstream in("{\"a\": [2.5]}\n");
    JsonLines lines(in);
    const JsonLines::iterator record = lines.begin();
    const auto read = [&](const JsonLines::iterator& at) {
        return compact(*at) + at->get("a").path() + (at == record ? "same" : "other") +
               (at != lines.end() ? "record" : "end");
    };
    readAtOnce([&] { return record; }, read,
               [](const JsonLines::iterator& at) { EXPECT_EQ(at->size(), 1U); });
}

/// The walkers that follow the steps of a path.
TEST(StateThreads, ask_where_a_walk_stands) {
    const auto make = [] {
        Begun<ko::Orvid::ElementGetter, Element> begun{
            std::make_unique<Element>(ko::Orvid::parse(R"({"a":[{"b":1.50}]})")), nullptr};
        begun.what = std::make_unique<ko::Orvid::ElementGetter>(Path("a[0].c"), *begun.on, false);
        ko::Orvid::PathParser(begun.what.get()).parse("a[0].c");
        return begun;
    };
    readStateAtOnce(make, [](const ko::Orvid::ElementGetter& walk) {
        return compact(walk.currentElement()) + std::to_string(walk.pathExists());
    });
}

TEST(StateThreads, ask_where_a_walk_that_makes_stands) {
    const auto make = [] {
        Begun<ko::Orvid::ElementCreator, Element> begun{std::make_unique<Element>(), nullptr};
        begun.what = std::make_unique<ko::Orvid::ElementCreator>(Path("a[*].c"), *begun.on,
                                                                 Element::k_emptyElement, false);
        ko::Orvid::PathParser(begun.what.get()).parse("a[*].c");
        return begun;
    };
    readStateAtOnce(make, [](const ko::Orvid::ElementCreator& walk) {
        return walk.currentElement().path() + std::to_string(walk.pathExists()) +
               std::to_string(walk.value().type());
    });
}

TEST(StateThreads, ask_for_the_names_of_files) {
    const ScratchFolder folder;
    const std::string name = folder.makeFile("file.json", "[1]");
    const ko::Orvid::FileLock lock(name);
    const ko::Orvid::SafeFile file(name);
    const FileStamp stamp = FileStamp::of(name);
    const auto read = [&](const FileStamp& same) {
        FileStamp other;
        return ko::Orvid::readFile(name) + ko::Orvid::readFile(name, other) + lock.lockFile() +
               file.target() + file.temporary() + std::to_string(lock.isHeld()) +
               std::to_string(int{other == same} + 2 * int{FileStamp::of(name) != same});
    };
    readAtOnce([&] { return stamp; }, read,
               [&](const FileStamp& same) { EXPECT_EQ(same, FileStamp::of(name)); });
}

/// What four threads may share besides: options, texts, paths, places of what was moved.
struct Shared {
    ko::Orvid::ReadOptions reading = ko::Orvid::ReadOptions::jsonc();
    ko::Orvid::WriteOptions writing = ko::Orvid::WriteOptions::pretty();
    ko::Orvid::PatchOptions patching;
    ko::Orvid::DiffOptions comparing;
    ko::Orvid::FillOptions filling;
    ko::Orvid::QueryOptions asking;
    std::string text =
        R"({"meta": {"schema": {"properties": {"a": {"default": 1.50}}}}, "b": [2]})";
    Path path = R"(a\.b[1])";
    Element value = ko::Orvid::parse("[1.5]");
    ko::Orvid::MovedPlaces moved{{ko::Orvid::JsonPointer("/b"), ko::Orvid::JsonPointer("/c")}};
};

std::string editedWith(const Shared& shared) {
    Dom dom = Dom::parse(shared.text, shared.reading);
    dom->insert("c", dom->get("b"));
    dom->remove(shared.value, "", "b");
    const std::string kept = dom.text(shared.moved);
    const std::size_t filled = fillDefaults(*dom, shared.filling);
    applyPatch(*dom, makePatch(*dom, shared.value, shared.comparing), shared.patching);
    std::istringstream in(shared.text);
    return kept + std::to_string(filled) + serialize(dom, shared.writing) +
           serialize(ko::Orvid::parse(in, shared.reading), shared.writing) +
           compact(ko::Orvid::parseFor(ko::Orvid::JsonPath("$.b", shared.asking), shared.text));
}

std::string pathsOf(const Shared& shared) {
    const ko::Orvid::PathView view(shared.path);
    const ko::StringRef<char> text(shared.text);
    std::ostringstream out;
    ko::Orvid::PathGenerator(out).genObjectProperty(text);
    out << std::string(view.text()) << view.path() << std::string(text.begin(), text.end())
        << text.str() << text.length() << text.empty() << std::string(text.data(), text.length());
    Path::elementPath(out, shared.value.at(0));
    Path::elementSchemaPath(out, shared.value.at(0));
    return out.str() + std::to_string(shared.moved[0].first != shared.moved[0].second) +
           std::to_string(shared.path != Path()) + ko::convert(ko::wconvert(shared.text)) +
           ko::Orvid::JsonPath::fromPointer(shared.moved[0].first).str() +
           Path::plainElement("[0]", shared.value)->path() +
           std::to_string(ko::Orvid::Number::compare(2.5, shared.text.substr(0, 0) + "2.5")) +
           std::to_string(ko::Orvid::Number::compare(2LL, std::string("3"))) +
           std::to_string(ko::Orvid::Number::compare(2ULL, std::string("1")));
}

std::string changedWith(const Shared& shared) {
    Element root = ko::Orvid::parse("{}");
    Path::createElement(root, "x.y", shared.value);
    Path::tryCreateElement(root, "x.z", shared.value);
    Path::getElement("x.y", root) = shared.value;
    Path::tryGetElement("x.z[0]", root)->set(7);
    Element::copy(root.get("x.y[0]").data(), shared.value.data(), &root.get("x.y[0]"));
    const ko::Orvid::JsonPointer place("/x/z/0");
    place.get(root) = shared.value;
    ko::Orvid::JsonPath("$.x.y").first(root)->set(place.find(root)->size());
    return compact(root) + std::to_string(ko::Orvid::JsonPath("$..*").select(root).size());
}

class SharedReaders : public testing::TestWithParam<ReaderOf<Shared>> {};

const std::vector<ReaderOf<Shared>> k_shared = {
    {"options", editedWith}, {"texts and paths", pathsOf}, {"values", changedWith}};

TEST_P(SharedReaders, share_what_none_of_them_changes) {
    readAtOnce([] { return Shared(); }, GetParam().read,
               [](const Shared& shared) { CHECK_LINKS(shared.value); });
}

INSTANTIATE_TEST_SUITE_P(All, SharedReaders, testing::ValuesIn(k_shared), nameOf<Shared>);

}  // namespace
}  // namespace orvid_test
