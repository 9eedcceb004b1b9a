// SPDX-License-Identifier: MIT
//
// Element context of exceptions, and the text of parse errors.

#include <ko/Orvid/Exception.h>

#include <utility>

#include "core/assignWhole.h"
#include "core/elementPath.h"
#include "core/TextStream.h"

namespace ko::Orvid {

namespace {

std::string* newPath(const Element* element) {
    return element == nullptr ? nullptr : new std::string(pathText(*element));
}

std::string newPointer(const Element* element) {
    return element == nullptr ? std::string() : pointerBelowEmptyKey(*element);
}

std::string* newCopy(const std::string* path) {
    return path == nullptr ? nullptr : new std::string(*path);
}

}  // namespace

Exception::Exception(const ko::Exception* cause) : Exception(std::string(), cause) {}

Exception::Exception(std::nullptr_t) : Exception(std::string()) {}

Exception::Exception(const std::string& message, const ko::Exception* cause)
    : ko::Exception(message, cause), m_elementPath(nullptr) {}

Exception::Exception(const std::string& message, std::nullptr_t) : Exception(message) {}

Exception::Exception(const Element* element, const ko::Exception* cause)
    : Exception(std::string(), element, cause) {}

Exception::Exception(const std::string& message, const Element* element, const ko::Exception* cause)
    : ko::Exception(message, cause),
      m_elementPointer(newPointer(element)),
      m_elementPath(newPath(element)) {}

Exception::Exception(const Exception& other)
    : ko::Exception(other),
      m_elementPointer(other.m_elementPointer),
      m_elementPath(newCopy(other.m_elementPath)) {}

Exception& Exception::operator=(const Exception& other) {
    if (this != &other) {
        std::unique_ptr<std::string> path(newCopy(other.m_elementPath));
        std::string pointer = other.m_elementPointer;
        m_formerPaths.reserve(m_formerPaths.size() + 1);
        ko::Exception::operator=(other);
        m_formerPaths.emplace_back(m_elementPath);
        m_elementPath = path.release();
        m_elementPointer = std::move(pointer);
    }
    return *this;
}

Exception::~Exception() { delete m_elementPath; }

ko::Exception* Exception::clone() const { return new Exception(*this); }

void Exception::writeElementAddress(std::ostream& out) const {
    if (m_elementPath != nullptr) {
        out << " Current element: \"" << static_cast<const void*>(m_elementPath) << "\"";
    }
}

ParseException::ParseException(const Element* element, const std::string& message, int firstLine,
                               int firstColumn, int lastLine, int lastColumn,
                               const Orvid::Exception* cause)
    : Exception(element, cause) {
    init(message, firstLine, firstColumn, lastLine, lastColumn);
}

ParseException::ParseException(const std::string& message, int firstLine, int firstColumn,
                               int lastLine, int lastColumn, const Orvid::Exception* cause)
    : ParseException(nullptr, message, firstLine, firstColumn, lastLine, lastColumn, cause) {}

ParseException::ParseException(const ParseException&) = default;

ParseException& ParseException::operator=(const ParseException& other) {
    return assignWhole(*this, other, &ParseException::m_message, &ParseException::m_text,
                       &ParseException::m_firstLine, &ParseException::m_firstColumn,
                       &ParseException::m_lastLine, &ParseException::m_lastColumn,
                       &ParseException::m_code, &ParseException::m_expected,
                       &ParseException::m_found);
}

ParseException::~ParseException() = default;

ko::Exception* ParseException::clone() const { return new ParseException(*this); }

ParseException ParseException::withCode(ParseErrorCode code) const {
    ParseException result(*this);
    result.m_code = code;
    return result;
}

void ParseException::addCode(ParseErrorCode code) noexcept {
    if (m_code == ParseErrorCode::unspecified) {
        m_code = code;
    }
}

void ParseException::addText(std::string_view text) {
    if (m_text.empty()) {
        m_text = text;
    }
}

void ParseException::init(const std::string& message, int firstLine, int firstColumn, int lastLine,
                          int lastColumn) {
    m_message = message;
    m_firstLine = firstLine;
    m_firstColumn = firstColumn;
    m_lastLine = lastLine;
    m_lastColumn = lastColumn;
}

void ParseException::generateWhat(std::string& out) const {
    constexpr int unknown = -1;
    const auto writePosition = [](std::ostream& text, int line, int column) {
        text << line;
        if (column != unknown) {
            text << "," << column;
        }
    };
    TextStream text;
    if (m_firstLine != unknown) {
        text << "Parse error at ";
        writePosition(text, m_firstLine, m_firstColumn);
        if (m_lastLine != unknown) {
            text << "-";
        }
    }
    if (m_lastLine != unknown) {
        writePosition(text, m_lastLine, m_lastColumn);
    }
    text << m_message;
    writeElementAddress(text);
    out = text.str();
}

}  // namespace ko::Orvid
