// SPDX-License-Identifier: MIT
//
// Reading with options, whole, from a stream or in pieces: what became of the tree, and the error
// with all its fields, as one text that tests compare.

#pragma once

#include <ko/Orvid.h>

#include <sstream>
#include <string>
#include <string_view>

#include "support/Document.h"

namespace orvid_test {

/// "line,column-line,column @element: message" of an error.
inline std::string errorText(const ko::Orvid::ParseException& error) {
    std::ostringstream text;
    text << error.firstLine() << ',' << error.firstColumn() << '-' << error.lastLine() << ','
         << error.lastColumn() << " @"
         << (error.elementPath() == nullptr ? "(none)" : *error.elementPath()) << ": "
         << error.message();
    return text.str();
}

/// What one reading came to.
struct Reading {
    std::string tree;   ///< compact
    std::string error;  ///< errorText(), or empty
    int state;
    unsigned long long position;

    bool operator==(const Reading& other) const {
        return tree == other.tree && error == other.error && state == other.state &&
               position == other.position;
    }
    friend std::ostream& operator<<(std::ostream& out, const Reading& reading) {
        return out << reading.tree << " | " << reading.error << " | state " << reading.state
                   << " | position " << reading.position;
    }
};

template<class Read>
Reading readingOf(const ko::Orvid::ReadOptions& options, const Read& read) {
    ko::Orvid::Element root("before");
    ko::Orvid::DomParser parser(options);
    std::string message;
    try {
        read(parser, root);
    } catch (const ko::Orvid::ParseException& error) {
        message = errorText(error);
    }
    EXPECT_TRUE(linksHold(root));
    return {compact(root), message, parser.state(), parser.position()};
}

inline Reading readWhole(const ko::Orvid::ReadOptions& options, const std::string& text) {
    return readingOf(options, [&](ko::Orvid::DomParser& parser, ko::Orvid::Element& root) {
        parser.parse(root, text);
    });
}

inline Reading readStream(const ko::Orvid::ReadOptions& options, const std::string& text) {
    return readingOf(options, [&](ko::Orvid::DomParser& parser, ko::Orvid::Element& root) {
        std::istringstream in(text);
        parser.parse(root, in);
    });
}

/// In two pieces, the first of `first` bytes.
inline Reading readSplit(const ko::Orvid::ReadOptions& options, std::string_view text,
                         std::size_t first) {
    return readingOf(options, [&](ko::Orvid::DomParser& parser, ko::Orvid::Element& root) {
        parser.begin(root);
        parser.feed(text.substr(0, first));
        parser.feed(text.substr(first));
        parser.finish();
    });
}

/// In pieces of `size` bytes.
inline Reading readPieces(const ko::Orvid::ReadOptions& options, std::string_view text,
                          std::size_t size) {
    return readingOf(options, [&](ko::Orvid::DomParser& parser, ko::Orvid::Element& root) {
        parser.begin(root);
        for (std::size_t fed = 0; fed < text.size(); fed += size) {
            parser.feed(text.substr(fed, size));
        }
        parser.finish();
    });
}

/// The error of the text read whole; empty when it has none.
inline std::string errorOf(const ko::Orvid::ReadOptions& options, const std::string& text) {
    return readWhole(options, text).error;
}

}  // namespace orvid_test
