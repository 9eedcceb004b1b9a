// SPDX-License-Identifier: MIT
//
// What is promised of documents that keep their text, tried on documents with comments everywhere
// and on edits of every kind. fuzz/source.cpp does the same without an end.

#include <gtest/gtest.h>
#include <ko/Orvid.h>

#include <algorithm>
#include <iterator>
#include <set>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "support/CommentedJson.h"
#include "support/CommentedSubject.h"
#include "support/Document.h"
#include "support/RandomEdits.h"

namespace orvid_test {
namespace {

using ko::Orvid::Dom;
using ko::Orvid::Element;
using ko::Orvid::JsonPointer;
using ko::Orvid::ReadOptions;
using ko::Orvid::SourcePlace;

bool isBlank(const std::string& line) {
    return line.find_first_not_of(" \t\r") == std::string::npos;
}

/// The most blank lines that follow each other.
std::size_t longestHole(const std::string& text) {
    std::size_t longest = 0;
    std::size_t length = 0;
    std::istringstream lines(text);
    for (std::string line; std::getline(lines, line);) {
        length = isBlank(line) ? length + 1 : 0;
        longest = std::max(longest, length);
    }
    return longest;
}

TEST(KeepsSource, writes_the_same_bytes_without_an_edit) {
    forEachDocument([](const CommentedSubject& subject) {
        EXPECT_EQ(subject.read().text(), subject.document.text);
    });
}

TEST(KeepsSource, changes_only_the_token_of_a_scalar) {
    forEachDocument([](const CommentedSubject& subject) {
        Dom dom = subject.read();
        for (Element* const element : RandomEdits::allOf(*dom)) {
            if (element->isObject() || element->isArray()) {
                continue;
            }
            const SourcePlace place = dom.placeOf(*element).value();
            const Element former = *element;
            *element = Element("replaced");
            std::string expected = subject.document.text;
            expected.replace(place.offset, place.length, "\"replaced\"");
            EXPECT_EQ(dom.text(), expected);
            *element = former;
        }
        EXPECT_EQ(dom.text(), subject.document.text);
    });
}

TEST(KeepsSource, removes_a_value_with_its_comments_and_no_other) {
    forEachDocument([](const CommentedSubject& subject) {
        for (const CommentedValue& value : subject.document.values) {
            Dom dom = subject.read();
            RandomEdits::erase(elementAt(dom, value));
            const std::string text = dom.text();
            EXPECT_EQ(CommentedJson::commentsIn(text), commentsWithout(subject, value)) << text;
            EXPECT_LE(longestHole(text), longestHole(subject.document.text)) << text;
            EXPECT_EQ(compact(*Dom::parse(text, subject.options)), compact(*dom)) << text;
        }
    });
}

/// The lines with what ends them.
std::multiset<std::string> wholeLines(const std::string& text) {
    std::multiset<std::string> lines;
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t end = std::min(text.find('\n', at), text.size() - 1) + 1;
        lines.insert(text.substr(at, end - at));
        at = end;
    }
    return lines;
}

/// A comma may come or go on a line of a value, but none of these: lines without one.
TEST(KeepsSource, leaves_the_line_ends_of_lines_that_stay_when_values_are_removed) {
    forEachDocument([](const CommentedSubject& subject) {
        const std::multiset<std::string> former = wholeLines(subject.document.text);
        for (const CommentedValue& value : subject.document.values) {
            Dom dom = subject.read();
            RandomEdits::erase(elementAt(dom, value));
            const std::multiset<std::string> now = wholeLines(dom.text());
            for (const std::string& line : now) {
                const std::size_t begin = line.find_first_not_of(" \t");
                if (begin == line.find_first_of("/\r\n") && line.find("*/") > line.find("//")) {
                    EXPECT_LE(now.count(line), former.count(line)) << line << dom.text();
                }
            }
        }
    });
}

TEST(KeepsSource, leaves_the_line_ends_of_comments_that_stay_when_a_value_is_removed) {
    Dom dom = Dom::parse("[\n1,\n\n// x\r\n\r\n2,\n3\n]");
    (*dom).array().erase(std::next((*dom).array().begin()));
    EXPECT_EQ(dom.text(), "[\n1,\n\n// x\r\n\r\n3\n]");
}

std::vector<std::string> linesOf(const std::string& text) {
    std::vector<std::string> lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);) {
        lines.push_back(line);
    }
    return lines;
}

using Line = std::vector<std::string>::const_iterator;

std::size_t blankBefore(Line first, Line at) {
    std::size_t count = 0;
    for (; at != first && isBlank(*(at - 1)); --at) {
        ++count;
    }
    return count;
}

std::size_t blankFrom(Line at, Line last) {
    return static_cast<std::size_t>(
        std::find_if(at, last, [](const std::string& line) { return !isBlank(line); }) - at);
}

/// The blank lines where lines are gone, and how many there may be: as many as were before them or
/// after them.
std::pair<std::size_t, std::size_t> holeOf(const std::vector<std::string>& former,
                                           const std::vector<std::string>& now) {
    const auto begin = std::mismatch(former.begin(), former.end(), now.begin(), now.end());
    const auto end = std::mismatch(former.rbegin(), std::make_reverse_iterator(begin.first),
                                   now.rbegin(), std::make_reverse_iterator(begin.second));
    const Line gone = begin.first + static_cast<long>(blankFrom(begin.first, former.end()));
    const Line stays = end.first.base();
    const std::size_t most =
        std::max(blankBefore(former.begin(), gone), blankFrom(stays, former.end()));
    return {blankBefore(now.begin(), begin.second) + blankFrom(begin.second, now.end()), most};
}

/// Whether nothing but whitespace, comments and a comma stands on the lines of the value.
bool hasLinesOfItsOwn(const std::string& text, const SourcePlace& place) {
    const std::size_t begin = place.key.length > 0 ? place.key.offset : place.offset;
    const std::size_t newline = text.rfind('\n', begin);
    const std::size_t after = text.find_first_not_of(" ,", place.offset + place.length);
    return newline != std::string::npos && text.find_first_not_of(" \t", newline + 1) == begin &&
           (after == std::string::npos || text[after] == '\r' || text[after] == '\n' ||
            text.compare(after, 2, "//") == 0);
}

std::vector<std::string> withoutCommas(std::vector<std::string> lines) {
    for (std::string& line : lines) {
        line.erase(std::remove_if(line.begin(), line.end(),
                                  [](char byte) { return byte == ',' || byte == '\r'; }),
                   line.end());
    }
    std::sort(lines.begin(), lines.end());
    return lines;
}

TEST(KeepsSource, removes_the_lines_of_a_value_and_leaves_no_hole) {
    unsigned count = 0;
    forEachDocument([&](const CommentedSubject& subject) {
        const std::vector<std::string> former = linesOf(subject.document.text);
        for (const CommentedValue& value : subject.document.values) {
            Dom dom = subject.read();
            Element& element = elementAt(dom, value);
            if (!hasLinesOfItsOwn(subject.document.text, dom.placeOf(element).value()) ||
                element.parent()->size() == 1) {
                continue;
            }
            ++count;
            RandomEdits::erase(element);
            const std::vector<std::string> now = linesOf(dom.text());
            const std::vector<std::string> had = withoutCommas(former);
            const std::vector<std::string> has = withoutCommas(now);
            EXPECT_TRUE(std::includes(had.begin(), had.end(), has.begin(), has.end()))
                << dom.text();
            const auto [hole, most] = holeOf(former, now);
            EXPECT_LE(hole, most) << dom.text();
        }
    });
    EXPECT_GT(count, 500U);
}

/// Whether `text` is `former` with some bytes added in one place, and perhaps a comma in another.
bool isInsertion(const std::string& former, const std::string& text) {
    const auto differ = std::mismatch(former.begin(), former.end(), text.begin(), text.end());
    std::string rest(differ.second, text.end());
    const std::string formerRest(differ.first, former.end());
    if (!rest.empty() && rest.front() == ',' && rest.size() > formerRest.size()) {
        const auto next =
            std::mismatch(formerRest.begin(), formerRest.end(), rest.begin() + 1, rest.end());
        const std::string end(next.first, formerRest.end());
        if (rest.size() >= end.size() &&
            rest.compare(rest.size() - end.size(), end.size(), end) == 0) {
            return true;
        }
    }
    return rest.size() >= formerRest.size() &&
           rest.compare(rest.size() - formerRest.size(), formerRest.size(), formerRest) == 0;
}

TEST(KeepsSource, adds_a_value_without_touching_another) {
    forEachDocument([](const CommentedSubject& subject) {
        Dom dom = subject.read();
        const std::size_t count = RandomEdits::allOf(*dom).size();
        for (std::size_t i = 0; i < count; ++i) {
            Dom edited = subject.read();
            Element& parent = *RandomEdits::allOf(*edited)[i];
            const bool hadSiblings = RandomEdits::allOf(parent).size() > 1;
            if (parent.isObject()) {
                parent.object().insert({"added", Element(99)});
            } else if (parent.isArray()) {
                parent.array().push_back(Element(99));
            }
            const std::string text = edited.text();
            EXPECT_TRUE(!hadSiblings || isInsertion(subject.document.text, text)) << text;
            EXPECT_EQ(CommentedJson::commentsIn(text),
                      CommentedJson::commentsIn(subject.document.text));
            EXPECT_EQ(compact(*Dom::parse(text, subject.options)), compact(*edited)) << text;
        }
    });
}

bool isOnLine(const std::string& text, const SourcePlace& place) {
    return text.substr(place.offset, place.length).find('\n') == std::string::npos;
}

TEST(KeepsSource, leaves_a_container_on_its_line_when_values_come_and_go) {
    unsigned count = 0;
    forEachDocument([&](const CommentedSubject& subject) {
        for (const CommentedValue& value : subject.document.values) {
            Dom dom = subject.read();
            Element& container = elementAt(dom, value);
            if ((!container.isObject() && !container.isArray()) || container.size() == 0 ||
                !isOnLine(subject.document.text, dom.placeOf(container).value())) {
                continue;
            }
            ++count;
            const std::size_t lines = linesOf(subject.document.text).size();
            const auto place = static_cast<std::ptrdiff_t>(count % (container.size() + 1));
            if (container.isObject()) {
                auto& members = container.object();
                members.insert(std::next(members.begin(), place), {"added", Element(99)});
            } else {
                container.array().insert(static_cast<std::size_t>(place), Element(99));
            }
            EXPECT_EQ(linesOf(dom.text()).size(), lines) << dom.text();
            RandomEdits::erase(*RandomEdits::allOf(container)[1]);
            EXPECT_EQ(linesOf(dom.text()).size(), lines) << dom.text();
        }
    });
    EXPECT_GT(count, 200U);
}

TEST(KeepsSource, reads_back_as_the_tree_after_any_edits) {
    forEachDocument([](const CommentedSubject& subject) {
        Dom dom = subject.read();
        RandomEdits edits(subject.choose);
        for (unsigned i = 0; i < 4; ++i) {
            edits.run(*dom);
            CHECK_LINKS_AFTER_COPY(*dom);
            const std::string text = dom.text();
            const Dom back = Dom::parse(text, subject.options);
            EXPECT_EQ(compact(*back), compact(*dom)) << edits.script() << text;
            EXPECT_EQ(back.text(), text);
        }
    });
}

TEST(KeepsSource, writes_the_first_bytes_when_all_edits_are_undone) {
    forEachDocument([](const CommentedSubject& subject) {
        Dom dom = subject.read();
        RandomEdits edits(subject.choose);
        std::vector<Element> former;
        for (unsigned i = 0; i < 4; ++i) {
            former.push_back(*dom);
            edits.run(*dom);
        }
        while (!former.empty()) {
            *dom = former.back();
            former.pop_back();
            EXPECT_EQ(compact(*Dom::parse(dom.text(), subject.options)), compact(*dom));
        }
        EXPECT_EQ(dom.text(), subject.document.text) << edits.script();
    });
}

}  // namespace
}  // namespace orvid_test
