// SPDX-License-Identifier: MIT
//
// FileChunks: a file stream by pieces that are much longer than its buffer, which saves calls of
// the system. The stream can be put back to where it would be if its buffer had been used all the
// time.

#pragma once

#include <ko/Orvid/Exception.h>

#include <algorithm>
#include <cstddef>
#include <fstream>
#include <locale>
#include <memory>
#include <streambuf>
#include <string_view>
#include <typeinfo>

#include "file/GetArea.h"

namespace ko::Orvid {

class FileChunks {
public:
    /// For chunks with `room` bytes before them that may be written to.
    FileChunks(std::streambuf& buffer, std::size_t room) : m_file(fileOf(buffer)), m_room(room) {}
    /// After this what was read can be put back into the stream.
    ~FileChunks() {
        if (m_bytes != nullptr) {
            forgetBuffer();
        }
    }
    FileChunks(const FileChunks&) = delete;
    FileChunks& operator=(const FileChunks&) = delete;

    /// The next bytes, as many as fill the buffer several times; they live until the next call.
    /// Empty where there is no file, little is left of it, or the buffer holds what comes first.
    /// Throws what the stream's buffer throws, and std::bad_alloc.
    std::string_view next() {
        if (m_file == nullptr || !GetArea::of(*m_file).empty()) {
            return {};
        }
        const auto left =
            static_cast<std::size_t>(std::max<std::streamsize>(m_file->in_avail(), 0));
        if (m_areaLength == 0) {
            measureArea(left);
            return {};
        }
        const std::size_t areas = std::min(left, k_size) / m_areaLength;
        return areas < k_fewest ? std::string_view() : read(areas * m_areaLength);
    }

    /// How many bytes the buffer takes at once; after next() has returned some.
    std::size_t areaLength() const noexcept { return m_areaLength; }

    /// The buffer holds again what begins at that byte of the last chunk: at least `length` bytes,
    /// or else this throws Exception, since the file has become shorter meanwhile.
    void fetch(std::size_t at, std::size_t length) {
        const auto back = static_cast<std::streamoff>(m_length - at);
        m_file->pubseekoff(-back, std::ios_base::cur, std::ios_base::in);
        GetArea::fetch(*m_file);
        if (GetArea::of(*m_file).size() < length) {
            throw Exception("The stream has failed!");
        }
    }

private:
    /// A chunk should be in the cache still when it is scanned; with more, malloc() would ask the
    /// system for it.
    static constexpr std::size_t k_size = 122880;
    static constexpr std::size_t k_least = 32768;  ///< of a file that is read so
    static constexpr std::size_t k_fewest = 2;     ///< areas

    static std::filebuf* fileOf(std::streambuf& buffer) {
        if (typeid(buffer) != typeid(std::filebuf)) {
            return nullptr;
        }
        using Conversion = std::codecvt<char, char, std::mbstate_t>;
        const bool isPlain = std::use_facet<Conversion>(buffer.getloc()).always_noconv();
        return isPlain ? static_cast<std::filebuf*>(&buffer) : nullptr;
    }

    /// Fills the buffer, which shows its size where so much is left.
    void measureArea(std::size_t left) {
        if (left != 0) {
            GetArea::fill(*m_file);
        }
        const std::size_t length = GetArea::of(*m_file).size();
        const bool isLong = left >= k_least && length != 0 && length <= k_least / k_fewest;
        if (isLong && position() != std::streampos(std::streamoff(-1))) {
            m_areaLength = length;
        } else {
            m_file = nullptr;
        }
    }

    std::string_view read(std::size_t length) {
        if (m_bytes == nullptr) {
            m_bytes.reset(new char[m_room + k_size]);
        }
        char* const begin = m_bytes.get() + m_room;
        m_length =
            static_cast<std::size_t>(m_file->sgetn(begin, static_cast<std::streamsize>(length)));
        return {begin, m_length};
    }

    std::streampos position() {
        return m_file->pubseekoff(0, std::ios_base::cur, std::ios_base::in);
    }
    /// It may hold what came before the last chunk.
    void forgetBuffer() noexcept {
        try {
            if (GetArea::of(*m_file).empty()) {
                m_file->pubseekpos(position(), std::ios_base::in);
            }
        } catch (...) {
            return;
        }
    }

    std::filebuf* m_file;  ///< null where there are no chunks
    const std::size_t m_room;
    std::unique_ptr<char[]> m_bytes;
    std::size_t m_areaLength = 0;  ///< 0 while it is not known
    std::size_t m_length = 0;      ///< of the last chunk
};

}  // namespace ko::Orvid
