// SPDX-License-Identifier: MIT
//
// A path listener that writes down what it is called with and returns what it was asked to, and the
// two forms of a parse. Shared by the tests of PathParser.

#pragma once

#include <gtest/gtest.h>
#include <ko/Orvid/PathParser.h>

#include <sstream>
#include <string>
#include <utility>
#include <vector>

namespace orvid_test {

using Lines = std::vector<std::string>;

/// One line for each callback: "key k", "index n" or "error message".
class PathLog : public ko::Orvid::PathParserListener {
public:
    /// The answers to the callbacks in their order; true where they are used up.
    explicit PathLog(std::vector<bool> answers = {}) : m_answers(std::move(answers)) {}

    bool cbObjectProperty(const std::string& key) override { return note("key " + key); }

    bool cbArrayItem(unsigned int index) override { return note("index " + std::to_string(index)); }

    /// Also checks that the arguments are those that the message shows.
    bool cbParseError(const std::string& message, const std::string& token, unsigned int start,
                      unsigned int end) override {
        const std::string place = " in path at \"" + token + "\" " + std::to_string(start) + "," +
                                  std::to_string(end) + " parser state ";
        EXPECT_NE(message.find(place), std::string::npos) << message << " without " << place;
        m_hasErrors = true;
        return note("error " + message);
    }

    const Lines& lines() const { return m_lines; }
    bool hasErrors() const { return m_hasErrors; }

private:
    bool note(std::string line) {
        const bool answer = m_lines.size() >= m_answers.size() || m_answers[m_lines.size()];
        m_lines.push_back(std::move(line));
        return answer;
    }

    std::vector<bool> m_answers;
    Lines m_lines;
    bool m_hasErrors = false;
};

/// Parses the text in both forms, which must agree, and returns the log of one.
inline PathLog logOf(const std::string& path, const std::vector<bool>& answers = {}) {
    PathLog fromText(answers);
    ko::Orvid::PathParser(&fromText).parse(path);
    PathLog fromStream(answers);
    std::istringstream in(path);
    ko::Orvid::PathParser(&fromStream).parse(in);
    EXPECT_EQ(fromText.lines(), fromStream.lines()) << "the two forms differ for " << path;
    return fromText;
}

}  // namespace orvid_test
