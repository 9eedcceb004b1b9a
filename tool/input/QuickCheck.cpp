// SPDX-License-Identifier: MIT
//
// The scanner in pieces, with a sink that looks for repeated keys by their hashes.

#include "input/QuickCheck.h"

#include <sys/stat.h>
#include <unistd.h>

#include <cstddef>
#include <cstdint>
#include <limits>
#include <string_view>
#include <utility>

#include "input/Input.h"
#include "text/byteOrderMark.h"
#include "text/KeyHashes.h"
#include "text/scanWhole.h"
#include "text/TextScannerRun.h"

namespace orvid_tool {

namespace {

using ko::Orvid::text::markLength;

/// Two keys of the same hash are most likely one key twice. Which it is, a second reading says.
class KeyWatcher : public ko::Orvid::KeySink {
public:
    bool key(std::string_view text, ko::Orvid::TokenSpan /*span*/) {
        m_isRepeated = !m_keys.add(text) || m_isRepeated;
        return true;
    }
    void openObject(ko::Orvid::TokenSpan /*span*/) { m_keys.open(); }
    void closeObject(ko::Orvid::TokenSpan /*span*/) {
        m_isRepeated = !m_keys.close() || m_isRepeated;
    }

    bool isAnyRepeated() const { return m_isRepeated; }

private:
    ko::Orvid::text::KeyHashes m_keys;
    bool m_isRepeated = false;
};

/// The name under which the file can be read twice; empty where it cannot.
std::string nameOfRegular(const std::string& file) {
    struct stat status = {};
    if (file != k_standardInput) {
        return stat(file.c_str(), &status) == 0 && S_ISREG(status.st_mode) ? file : "";
    }
    const bool isAtStart = fstat(STDIN_FILENO, &status) == 0 && S_ISREG(status.st_mode) &&
                           lseek(STDIN_FILENO, 0, SEEK_CUR) == 0;
    return isAtStart ? "/dev/stdin" : "";
}

constexpr std::size_t k_pieceSize = 262144;

/// A text that is read in pieces until it is seen to be wrong.
class Scan {
public:
    Scan(const std::string& file, const ko::Orvid::ReadOptions& options)
        : m_input(file), m_scanner(options) {}

    /// Whether the whole is right. The pieces that came are kept where they are wanted.
    bool isRight(bool areKept) {
        while (m_input.readSome(m_text, k_pieceSize) > 0) {
            const std::string_view piece = m_text.view().substr(m_scanned);
            m_read += piece.length();
            m_scanner.scan(piece.substr(m_scanner.offset() == 0 ? markLength(piece) : 0), m_keys);
            if (m_scanner.error() || m_keys.isAnyRepeated()) {
                return false;
            }
            m_text.cut(areKept ? m_text.length() : 0);
            m_scanned = m_text.length();
        }
        m_scanner.finish(m_keys);
        return !m_scanner.error() && !m_keys.isAnyRepeated();
    }

    /// How many bytes hold what is wrong: two keys of one hash may differ, which the whole text
    /// decides.
    std::uint64_t needed() const {
        return m_scanner.error() ? m_read : std::numeric_limits<std::uint64_t>::max();
    }

    /// The text that holds it, of which all pieces were kept.
    Bytes text() {
        readTo(m_input, m_text, needed());
        return std::move(m_text);
    }

    /// Reads up to that length, and on as much of the line as an excerpt may show.
    static void readTo(Input& input, Bytes& text, std::uint64_t length) {
        while (text.length() < length && input.readSome(text, k_pieceSize) > 0) {
        }
        constexpr std::size_t shown = 512;
        const std::size_t end = text.length();
        while (text.length() < end + shown &&
               text.view().substr(end).find('\n') == std::string_view::npos &&
               input.readSome(text, shown) > 0) {
        }
    }

private:
    Input m_input;
    ko::Orvid::TextScanner m_scanner;
    KeyWatcher m_keys;
    Bytes m_text;
    std::size_t m_scanned = 0;  ///< of the text
    std::uint64_t m_read = 0;
};

}  // namespace

std::optional<Bytes> malformedText(const std::string& file, const ko::Orvid::ReadOptions& options) {
    const std::string name = nameOfRegular(file);
    Scan scan(name.empty() ? file : name, options);
    if (scan.isRight(name.empty())) {
        return std::nullopt;
    }
    if (name.empty()) {
        return scan.text();
    }
    Input input(name);
    Bytes text;
    Scan::readTo(input, text, scan.needed());
    return text;
}

bool isCertainlyRight(std::string_view text, const ko::Orvid::ReadOptions& options) {
    KeyWatcher keys;
    return ko::Orvid::text::scanWhole(text, options, keys) && !keys.isAnyRepeated();
}

}  // namespace orvid_tool
