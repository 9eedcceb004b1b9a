// SPDX-License-Identifier: MIT
//
// Documents from text and files, and back. What would make a text that is no JSON is found before
// any of it is written.

#include <ko/Orvid/Dom.h>

#include <ko/Orvid/DomParser.h>
#include <ko/Orvid/Element.h>
#include <ko/Orvid/FileException.h>
#include <ko/Orvid/Generator.h>
#include <ko/Orvid/SafeFile.h>

#include <filesystem>
#include <memory>
#include <optional>
#include <string_view>
#include <system_error>
#include <utility>

#include "document/WriteError.h"
#include "file/FileVersion.h"
#include "source/Source.h"
#include "source/SpanTable.h"
#include "text/byteOrderMark.h"
#include "tree/TreeEqual.h"

namespace ko::Orvid {

namespace {

constexpr const char* k_read = "read";
constexpr const char* k_write = "write";
constexpr const char* k_noRoot = "The document has no root";

/// The first line of the message, after its position where that is known.
std::string reasonOf(const ParseException& error) {
    std::string position;
    if (error.firstLine() >= 0) {
        position = "line " + std::to_string(error.firstLine()) + ", column " +
                   std::to_string(error.firstColumn()) + ": ";
    }
    return position + error.message().substr(0, error.message().find('\n'));
}

/// Of a document that is written with its source. One that may have been read with bytes that are
/// no UTF-8, as halves of surrogate pairs give, writes them as they were.
WriteOptions optionsFor(const Source* source) {
    WriteOptions options;
    if (source != nullptr) {
        const ReadOptions& read = source->options();
        options.allowInvalidUtf8 = !read.validateUtf8 || !read.rejectLoneSurrogates;
    }
    return options;
}

/// What the document would write that is no JSON.
std::optional<WriteError> writeErrorOf(const Dom& dom, const WriteOptions& options) {
    return findWriteError(*dom, options, dom.writeMeta() ? nullptr : &dom.metaKey());
}

/// It concerns the element as its cause does.
FileException refusal(const WriteError& error, const std::string& file) {
    FileException result(file, k_write,
                         std::string(error.message) + ", at \"" + error.element->path() + "\"");
    const Exception cause(error.message, error.element);
    static_cast<Exception&>(result) = Exception(std::string(), error.element, &cause);
    return result;
}

void requireWritable(const Dom& dom, const WriteOptions& options, const std::string& file) {
    if (dom.root() == nullptr) {
        throw FileException(file, k_write, k_noRoot);
    }
    if (const auto error = writeErrorOf(dom, options)) {
        throw refusal(*error, file);
    }
}

std::string generated(const Dom& dom, const WriteOptions& options) {
    return Generator(nullptr, options).encode(dom);
}

/// Whether the file holds that text already. A file that cannot be read does not.
bool holds(const std::string& file, std::string_view text) {
    std::error_code error;
    const auto size = std::filesystem::file_size(file, error);
    if (error || size != text.size()) {
        return false;
    }
    try {
        return readFile(file) == text;
    } catch (const FileException&) {
        return false;
    }
}

}  // namespace

Dom Dom::read(std::string text, const ReadOptions& options, const std::string& file) {
    const std::size_t begin = text::markLength(text);
    Dom dom;
    auto root = std::make_unique<Element>();
    dom.setRoot(*root, true);
    static_cast<void>(root.release());
    dom.setWriteMeta(true);
    DomParser parser(options);
    auto spans = parser.parseNoting(*dom, std::string_view(text).substr(begin), begin);
    auto source = std::make_unique<Source>(std::move(text), options, file);
    if (spans) {
        source->setSpans(std::move(*spans));
    } else {
        source->locateValues(begin, *dom);
    }
    dom.m_source = std::move(source);
    return dom;
}

Dom Dom::parse(std::string_view text, const ReadOptions& options) {
    return read(std::string(text), options, {});
}

Dom Dom::load(const std::string& file, const ReadOptions& options) {
    try {
        FileStamp stamp;
        Dom dom = read(readFile(file, stamp), options, file);
        dom.m_version = std::make_unique<FileVersion>(file, stamp);
        return dom;
    } catch (const ParseException& error) {
        throw FileException(file, k_read, reasonOf(error), 0, &error);
    }
}

std::string Dom::text() const { return text({}); }

std::string Dom::text(const MovedPlaces& moved) const {
    if (m_root == nullptr) {
        throw Exception(k_noRoot);
    }
    if (const auto error = writeErrorOf(*this, optionsFor(m_source.get()))) {
        throw Exception(error->message, error->element);
    }
    return m_source ? sourceText(moved) : generated(*this, WriteOptions());
}

/// A text of which no spans are known was not a whole document. It stays while it says the same.
std::string Dom::sourceText(const MovedPlaces& moved) const {
    if (m_source->hasSpans()) {
        return m_source->textOf(*m_root, m_writeMeta ? nullptr : &m_metaKey, moved);
    }
    const Dom before = read(m_source->text(), m_source->options(), {});
    return treesEqual(*before, *m_root, NumberRule::sameText) ? m_source->text()
                                                              : generated(*this, WriteOptions());
}

void Dom::save(const std::string& file) const { saveMoved(file, {}); }

void Dom::saveMoved(const std::string& file, const MovedPlaces& moved) const {
    requireWritable(*this, optionsFor(m_source.get()), file);
    const std::string content = m_source ? sourceText(moved) : generated(*this, WriteOptions());
    if (isLoadedFrom(file)) {
        m_version->replace(file, content, m_source->text());
    } else if (!holds(file, content)) {
        replaceFile(file, content);
    }
}

void Dom::save(const std::string& file, const WriteOptions& options) const {
    requireWritable(*this, options, file);
    if (isLoadedFrom(file)) {
        m_version->replace(file, generated(*this, options), m_source->text());
    } else {
        replaceFile(file, generated(*this, options));
    }
}

bool Dom::isLoadedFrom(const std::string& file) const {
    return m_version != nullptr && m_version->isOf(file);
}

}  // namespace ko::Orvid
