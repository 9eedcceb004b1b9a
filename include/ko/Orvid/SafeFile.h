// SPDX-License-Identifier: MIT
//
// SafeFile replaces the content of a file so that, whatever happens, the file holds all of the old
// or all of the new content. It knows nothing of JSON; Dom::save() stands on it.

#pragma once

#include <ko/export.h>
#include <ko/Orvid/FileLock.h>

#include <optional>
#include <string>
#include <string_view>

namespace ko::Orvid {

/// The new content of a file, in the making. It is written to a temporary file in the same folder,
/// which takes the place of the file with commit(), or is removed without it. A process that is
/// killed leaves the file as it was, and perhaps the temporary one, named `.orvid-` and letters.
///
/// A symbolic link is followed: the file it leads to is replaced, or made where it is missing. The
/// mode, the access control list and the extended attributes stay, and the owner and group where
/// the system permits; where the group cannot stay, the new group gets no more rights than all
/// others have. Where a list or an attribute of the user cannot stay, nothing is replaced. A new
/// file has the mode 0666 without the bits of the umask. Other hard links to the file keep the old
/// content.
///
/// Two programs that edit a file at the same time lose no edit when each holds a FileLock from
/// before it reads to after commit(), and says by expect() what it has read.
///
/// All failures are FileException with the name that was given, and leave the file as it was,
/// except for the one that commit() names. An operation that states no cost is O(1).
class KO_API SafeFile {
public:
    /// Makes the temporary file, which costs some calls of the system, and a few for each extended
    /// attribute of the file. Throws where the file is no regular file, or may not be written
    /// to, or its folder does not permit it.
    explicit SafeFile(const std::string& name);
    /// Removes the temporary file, unless commit() has come to its end: the cost of a few calls of
    /// the system.
    ~SafeFile();
    SafeFile(const SafeFile&) = delete;
    SafeFile& operator=(const SafeFile&) = delete;

    /// commit() fails, with ESTALE as error(), unless the file is still the one of that stamp,
    /// which readFile() gave. It looks right before it replaces the file; against those who change
    /// the file at that very moment only a FileLock helps.
    void expect(const FileStamp& stamp);
    /// Appends bytes to the new content. Linear cost: they are not buffered.
    void write(std::string_view bytes);
    /// Flushes the new content to the disk, gives the file that content, and flushes the folder.
    /// When only that last step fails, it throws with the new content in place. Nothing may follow.
    /// Waits for the disk, twice, which is nearly all of its cost.
    void commit();

    /// The file that is replaced, with symbolic links followed.
    const std::string& target() const noexcept { return m_target; }
    /// The temporary file, for a program that is ended by a signal to remove. Empty after commit().
    const std::string& temporary() const noexcept { return m_temporary; }

private:
    void makeTemporary(bool isNew);
    int openFormer() const;
    void keepAttributes(int former);
    void closeTemporary();
    void discard() noexcept;
    void flushFolder();
    [[noreturn]] void fail(const char* action, int error) const;

    std::string m_name;
    std::string m_target;
    std::string m_temporary;  ///< empty when there is none
    int m_file = -1;          ///< of the temporary file, then of its folder, or -1
    std::optional<FileStamp> m_expected;
};

/// Gives the file that content, at once (see SafeFile), and waits for the disk. Linear cost.
KO_API void replaceFile(const std::string& name, std::string_view content);

/// All bytes of a file, which may be a pipe or a device. Throws FileException. Linear cost.
KO_API std::string readFile(const std::string& name);
/// The same, with the stamp of the file before it was read.
KO_API std::string readFile(const std::string& name, FileStamp& stamp);

}  // namespace ko::Orvid
