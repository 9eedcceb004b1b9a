// SPDX-License-Identifier: MIT
//
// The same text read twice: by a DomParser, whose scanner builds the tree, and by a subclass, which
// gets the events of YAJL's reader. Whatever the text is, nobody may see a difference.

#pragma once

#include <ko/Orvid.h>

#include <cstddef>
#include <istream>
#include <sstream>
#include <streambuf>
#include <string>
#include <string_view>
#include <vector>

namespace orvid_test {

/// A subclass might have events of its own, so it gets all of them. This one has none.
class EventReader : public ko::Orvid::DomParser {
public:
    using DomParser::DomParser;
};

/// A stream that has one piece available at a time.
class PieceBuffer : public std::streambuf {
public:
    explicit PieceBuffer(std::vector<std::string> pieces) : m_pieces(std::move(pieces)) {}
    /// How many bytes were taken.
    std::size_t taken() const { return m_before + static_cast<std::size_t>(gptr() - eback()); }

protected:
    int_type underflow() override {
        if (!load()) {
            return traits_type::eof();
        }
        return traits_type::to_int_type(*gptr());
    }
    std::streamsize showmanyc() override { return load() ? egptr() - gptr() : -1; }

private:
    bool load() {
        while (gptr() == egptr()) {
            m_before += static_cast<std::size_t>(egptr() - eback());
            if (m_next == m_pieces.size()) {
                setg(nullptr, nullptr, nullptr);
                return false;
            }
            std::string& piece = m_pieces[m_next++];
            setg(piece.data(), piece.data(), piece.data() + piece.size());
        }
        return true;
    }

    std::vector<std::string> m_pieces;
    std::size_t m_next = 0;
    std::size_t m_before = 0;
};

/// The tree, without recursion, and to the letter.
inline std::string treeText(const ko::Orvid::Element& root) {
    std::string text;
    std::vector<const ko::Orvid::Element*> open{&root};
    while (!open.empty()) {
        const ko::Orvid::Element& element = *open.back();
        open.pop_back();
        text += std::to_string(element.type()) + element.key() + '=';
        std::vector<const ko::Orvid::Element*> children;
        if (element.isBoolean()) {
            text += element.boolean() ? "true" : "false";
        } else if (element.isNumber()) {
            text += element.number().toString();
        } else if (element.isString()) {
            text += element.string();
        } else if (element.isArray()) {
            for (const ko::Orvid::Element& item : element.array()) {
                children.push_back(&item);
            }
        } else if (element.isObject()) {
            for (const auto& [key, value] : element.object()) {
                text += key + ',';
                children.push_back(&value);
            }
        }
        text += std::to_string(children.size()) + '\n';
        open.insert(open.end(), children.rbegin(), children.rend());
    }
    return text;
}

/// All that a reading leaves, one fact in a line.
class ReadingReport {
public:
    const std::string& text() const { return m_text; }

    /// What `read` throws, and what can be asked of the parser and the element then.
    template<class Read>
    void note(const ko::Orvid::DomParser& parser, const ko::Orvid::Element& root,
              const Read& read) {
        try {
            read();
            m_text += "read\n";
        } catch (const ko::Orvid::ParseException& error) {
            m_text += "error " + std::to_string(static_cast<int>(error.code())) + ' ' +
                      std::to_string(error.firstLine()) + ',' +
                      std::to_string(error.firstColumn()) + '-' + std::to_string(error.lastLine()) +
                      ',' + std::to_string(error.lastColumn()) + pathOf(error) + error.message() +
                      '\n';
        } catch (const ko::Orvid::Exception& error) {
            m_text += "exception" + pathOf(error) + '\n';
        }
        m_text += "state " + std::to_string(parser.state()) + " position " +
                  std::to_string(parser.position()) + '\n';
        const ko::Orvid::Element* const open = parser.openElement();
        m_text += open == nullptr ? "not open\n" : "open at \"" + open->path() + "\"\n";
        m_text += treeText(root);
    }
    void note(const std::string& fact) { m_text += fact + '\n'; }

private:
    static std::string pathOf(const ko::Orvid::Exception& error) {
        return error.elementPath() == nullptr ? " nowhere " : " at " + *error.elementPath() + ' ';
    }

    std::string m_text;
};

/// What comes of a text that is given to parse() whole, then of one more byte for another element.
template<class Parser>
std::string wholeReport(const ko::Orvid::ReadOptions& options, const std::string& text,
                        const std::string& more) {
    ReadingReport report;
    Parser parser(options);
    ko::Orvid::Element root("before");
    report.note(parser, root, [&] { parser.parse(root, text); });
    for (const char byte : more) {
        ko::Orvid::Element other("before");
        report.note(parser, other, [&] { parser.parse(other, std::string(1, byte)); });
    }
    return report.text();
}

/// What comes of the pieces when they are given to parse() as they get available in a stream.
template<class Parser>
std::string streamReport(const ko::Orvid::ReadOptions& options,
                         const std::vector<std::string>& pieces) {
    ReadingReport report;
    Parser parser(options);
    ko::Orvid::Element root("before");
    PieceBuffer buffer(pieces);
    std::istream in(&buffer);
    report.note(parser, root, [&] { parser.parse(root, in); });
    report.note("stream " + std::to_string(in.rdstate()) + ' ' + std::to_string(buffer.taken()));
    return report.text();
}

/// What comes of the pieces when they are fed.
template<class Parser>
std::string feedReport(const ko::Orvid::ReadOptions& options,
                       const std::vector<std::string>& pieces) {
    ReadingReport report;
    Parser parser(options);
    ko::Orvid::Element root("before");
    parser.begin(root);
    for (const std::string& piece : pieces) {
        report.note(parser, root, [&] { parser.feed(piece); });
    }
    report.note(parser, root, [&] { parser.finish(); });
    return report.text();
}

/// The first way of reading in which the two differ, with both reports; empty where there is none.
inline std::string readersDiffer(const ko::Orvid::ReadOptions& options,
                                 const std::vector<std::string>& pieces, const std::string& more) {
    using ko::Orvid::DomParser;
    std::string text;
    for (const std::string& piece : pieces) {
        text += piece;
    }
    const auto compare = [](const char* way, const std::string& scanner,
                            const std::string& events) {
        return scanner == events
                   ? ""
                   : std::string(way) + ":\n--- scanner\n" + scanner + "--- events\n" + events;
    };
    std::string found = compare("whole", wholeReport<DomParser>(options, text, more),
                                wholeReport<EventReader>(options, text, more));
    if (found.empty()) {
        found = compare("stream", streamReport<DomParser>(options, pieces),
                        streamReport<EventReader>(options, pieces));
    }
    if (found.empty()) {
        found = compare("fed", feedReport<DomParser>(options, pieces),
                        feedReport<EventReader>(options, pieces));
    }
    return found;
}

}  // namespace orvid_test
