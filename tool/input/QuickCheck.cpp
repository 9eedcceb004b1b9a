// SPDX-License-Identifier: MIT
//
// The scanner in pieces, with a sink that looks for repeated keys by their hashes.

#include "input/QuickCheck.h"

#include <sys/stat.h>
#include <unistd.h>

#include <cstddef>
#include <string_view>

#include "input/Input.h"
#include "text/byteOrderMark.h"
#include "text/KeyHashes.h"
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

}  // namespace

bool isSurelyRight(const std::string& file, const ko::Orvid::ReadOptions& options) {
    constexpr std::size_t pieceSize = 262144;
    const std::string name = nameOfRegular(file);
    if (name.empty()) {
        return false;
    }
    Input input(name);
    ko::Orvid::TextScanner scanner(options);
    KeyWatcher keys;
    Bytes piece;
    while (input.readSome(piece, pieceSize) > 0) {
        const std::size_t mark = scanner.offset() == 0 ? markLength(piece.view()) : 0;
        scanner.scan(piece.view().substr(mark), keys);
        if (scanner.error() || keys.isAnyRepeated()) {
            return false;
        }
        piece.cut(0);
    }
    scanner.finish(keys);
    return !scanner.error() && !keys.isAnyRepeated();
}

}  // namespace orvid_tool
