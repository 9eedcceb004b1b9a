// SPDX-License-Identifier: MIT
//
// Lines from a stream, each a document of its own.

#include <ko/Orvid/JsonLines.h>

#include <ko/Orvid/Dom.h>
#include <ko/Orvid/DomParser.h>
#include <ko/Orvid/Exception.h>
#include <ko/Orvid/Path.h>

#include <istream>
#include <limits>
#include <new>
#include <string>

#include "text/byteOrderMark.h"
#include "text/whitespace.h"

namespace ko::Orvid {

namespace {

ReadOptions whole(ReadOptions options) {
    options.requireWholeDocument = true;
    return options;
}

}  // namespace

struct JsonLines::State {
    State(std::istream& stream, const ReadOptions& lenient)
        : in(stream), source(stream.rdbuf()), options(whole(lenient)), parser(options) {
        source.exceptions(std::ios_base::badbit);
    }

    bool readLine();
    void read();

    std::istream& in;
    std::istream source;  ///< the same text; throws where `in` would hide what has gone wrong
    ReadOptions options;
    DomParser parser;
    std::string line;
    Element record;
    unsigned long long number = 0;
};

/// Returns whether there was one.
bool JsonLines::State::readLine() {
    if (number == 0 && in.fail() && !in.eof()) {
        throw Exception("The stream cannot be read!");
    }
    ++number;
    try {
        std::getline(source, line);
    } catch (const std::bad_alloc&) {
        source.clear();
        source.ignore(std::numeric_limits<std::streamsize>::max(), '\n');
        throw;
    } catch (...) {
        in.setstate(std::ios_base::badbit);
        throw Exception("The stream has failed!");
    }
    if (source.fail()) {
        --number;
        in.setstate(std::ios_base::eofbit);
        return false;
    }
    if (number == 1) {
        line.erase(0, text::markLength(line));
    }
    return true;
}

namespace {

/// Without a root where the line is malformed.
Dom parsed(const std::string& line, const ReadOptions& options) {
    try {
        return Dom::parse(line, options);
    } catch (const ParseException&) {
        return Dom();
    }
}

/// The error of a line as one of the whole text.
ParseException inLine(ParseException error, unsigned long long number) {
    constexpr auto largest = static_cast<unsigned long long>(std::numeric_limits<int>::max());
    const int line = static_cast<int>(number < largest ? number : largest);
    const std::string message = error.message();
    error.init(message, line, error.firstColumn(), line, error.lastColumn());
    return error;
}

}  // namespace

void JsonLines::State::read() {
    try {
        parser.parse(record, line);
    } catch (const ParseException& error) {
        throw inLine(error, number);
    }
}

JsonLines::JsonLines(std::istream& in, const ReadOptions& options)
    : m_state(std::make_unique<State>(in, options)) {}

JsonLines::~JsonLines() = default;

Element* JsonLines::next() {
    do {
        if (!m_state->readLine()) {
            return nullptr;
        }
    } while (text::isBlankLine(m_state->line));
    m_state->read();
    return &m_state->record;
}

unsigned long long JsonLines::number() const noexcept { return m_state->number; }

std::optional<SourcePlace> JsonLines::placeOf(const Path& path) const {
    if (number() == 0 || text::isBlankLine(m_state->line)) {
        return std::nullopt;
    }
    const Dom record = parsed(m_state->line, m_state->options);
    const Element* const element =
        record.root() == nullptr ? nullptr : Path::tryGetElement(path, *record);
    std::optional<SourcePlace> place = element == nullptr ? std::nullopt : record.placeOf(*element);
    if (place) {
        const auto line = static_cast<std::size_t>(number());
        place->line = line;
        place->key.line = place->key.length == 0 ? 0 : line;
    }
    return place;
}

}  // namespace ko::Orvid
