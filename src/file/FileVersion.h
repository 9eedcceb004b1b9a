// SPDX-License-Identifier: MIT
//
// FileVersion, what a document knows of the file that it was loaded from, so that saving it undoes
// nothing that another program did meanwhile.

#pragma once

#include <ko/Orvid/FileLock.h>

#include <mutex>
#include <string>
#include <string_view>

namespace ko::Orvid {

class SafeFile;

/// The state of one file, as it was read or saved last. May be used from several threads.
class FileVersion {
public:
    FileVersion(const std::string& file, const FileStamp& stamp);

    /// Whether that is the file, under the same name or another one.
    bool isOf(const std::string& file) const;

    /// Gives the file the content, unless it has that already. A file that was removed is made
    /// again. Throws FileException, with ESTALE as its error(), when the file has changed; not when
    /// it still holds `read`, the text that was loaded, and only its mode or owner changed.
    void replace(const std::string& file, std::string_view content, std::string_view read);

private:
    void commit(SafeFile& written, const std::string& file);
    void noteReplaced(int written, const std::string& file);
    bool needsChange(const std::string& file, FileStamp present, std::string_view content,
                     std::string_view read);

    const std::string m_name;  ///< from the root folder, with its symbolic links
    mutable std::mutex m_mutex;
    FileStamp m_stamp;
    bool m_isAsRead = true;
};

}  // namespace ko::Orvid
