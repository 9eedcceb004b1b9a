// SPDX-License-Identifier: MIT
//
// CommentPlaces, where the value of each comment stands in a text. The comments are numbers, and so
// are the values; a comment is of the value before it, or of the one after it where it has a line
// of its own.

#pragma once

#include <algorithm>
#include <cctype>
#include <cstddef>
#include <map>
#include <string>
#include <vector>

namespace orvid_test {

/// The text must live as long. A comment that is there twice, or at no value, has no pointer but a
/// word that says so.
class CommentPlaces {
public:
    explicit CommentPlaces(const std::string& text) : m_text(text) {
        while (m_at < text.size()) {
            next();
        }
    }

    const std::map<int, std::string>& places() const { return m_places; }

private:
    struct Level {
        bool isObject;
        std::size_t index;
        std::string key;
    };

    std::string place() const {
        std::string pointer;
        for (const Level& level : m_levels) {
            pointer += "/" + (level.isObject ? level.key : std::to_string(level.index));
        }
        return pointer;
    }

    void next() {
        const char c = m_text[m_at];
        if (c == '/') {
            comment();
        } else if (c == '{' || c == '[') {
            begin();
            m_levels.push_back({c == '{', 0, {}});
            ++m_at;
        } else if (c == '}' || c == ']') {
            m_levels.pop_back();
            m_last = place();
            ++m_at;
        } else if (c == ',') {
            ++m_levels.back().index;
            ++m_at;
        } else if (c == '"') {
            const std::size_t end = m_text.find('"', m_at + 1);
            m_levels.back().key = m_text.substr(m_at + 1, end - m_at - 1);
            m_at = end + 1;
        } else if (std::isdigit(static_cast<unsigned char>(c)) != 0) {
            begin();
            m_at = m_text.find_first_not_of("0123456789", m_at);
            m_at = std::min(m_at, m_text.size());
            m_last = place();
        } else {
            ++m_at;
        }
    }

    /// A value begins: it has the comments on the lines before it.
    void begin() {
        for (const int number : m_waiting) {
            note(number, place());
        }
        m_waiting.clear();
    }

    void comment() {
        const bool isLine = m_text[m_at + 1] == '/';
        const std::size_t line = m_text.find_last_of("\n", m_at) + 1;
        const bool isOwnLine = m_text.find_first_not_of(' ', line) == m_at;
        const int number = std::stoi(m_text.substr(m_at + 3));
        if (isOwnLine) {
            m_waiting.push_back(number);
            note(number, "at nothing");
        } else {
            note(number, m_last);
        }
        m_at =
            isLine ? std::min(m_text.find('\n', m_at), m_text.size()) : m_text.find("*/", m_at) + 2;
    }

    void note(int number, const std::string& place) {
        const auto [found, isNew] = m_places.emplace(number, place);
        if (!isNew) {
            found->second = found->second == "at nothing" ? place : "twice";
        }
    }

    const std::string& m_text;
    std::size_t m_at = 0;
    std::vector<Level> m_levels;
    std::vector<int> m_waiting;
    std::string m_last;
    std::map<int, std::string> m_places;
};

}  // namespace orvid_test
