// SPDX-License-Identifier: MIT
//
// The scanner in pieces, with a sink that looks for repeated keys by their hashes.

#include "input/QuickCheck.h"

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cstddef>
#include <functional>
#include <string_view>
#include <vector>

#include "input/Input.h"
#include "text/TextScannerRun.h"

namespace orvid_tool {

namespace {

/// Two keys of the same hash are most likely one key twice. Which it is, a second reading tells.
class KeyHashes : public ko::Orvid::TokenSink {
public:
    bool key(std::string_view text, ko::Orvid::TokenPlace /*place*/) {
        m_hashes.push_back(std::hash<std::string_view>()(text));
        return true;
    }
    void openObject(ko::Orvid::TokenPlace /*place*/) { m_starts.push_back(m_hashes.size()); }
    void closeObject(ko::Orvid::TokenPlace /*place*/) {
        const auto start = m_hashes.begin() + static_cast<std::ptrdiff_t>(m_starts.back());
        m_isRepeated = m_isRepeated || isRepeated(start, m_hashes.end());
        m_hashes.erase(start, m_hashes.end());
        m_starts.pop_back();
    }

    bool isAnyRepeated() const { return m_isRepeated; }

private:
    using TPlace = std::vector<std::size_t>::iterator;

    static bool isRepeated(TPlace start, TPlace end) {
        constexpr std::ptrdiff_t few = 16;
        if (end - start > few) {
            std::sort(start, end);
            return std::adjacent_find(start, end) != end;
        }
        for (TPlace place = start; place != end; ++place) {
            if (std::find(start, place, *place) != place) {
                return true;
            }
        }
        return false;
    }

    std::vector<std::size_t> m_hashes;  ///< of the keys of all open objects
    std::vector<std::size_t> m_starts;  ///< where those of each begin
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
    KeyHashes keys;
    Bytes piece;
    while (input.readSome(piece, pieceSize) > 0) {
        scanner.scan(piece.view(), keys);
        if (scanner.fault() || keys.isAnyRepeated()) {
            return false;
        }
        piece.cut(0);
    }
    scanner.finish(keys);
    return !scanner.fault() && !keys.isAnyRepeated();
}

}  // namespace orvid_tool
