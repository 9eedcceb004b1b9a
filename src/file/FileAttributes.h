// SPDX-License-Identifier: MIT
//
// The access control list and the extended attributes of a file, which its replacement must have as
// well: without the list the bits of its mode mean something else.

#pragma once

#include <string>
#include <utility>
#include <vector>

namespace ko::Orvid {

/// What one open file has. Knows the system's calls only; an access control list is an extended
/// attribute to them.
class FileAttributes {
public:
    /// `name` is for errors, which are FileException. Attributes that say what the old content was
    /// (signatures, capabilities) are left out.
    FileAttributes(int file, std::string name);

    /// Gives them to another open file, from which the list goes that its folder may have given it.
    /// Where the group is another one, the list allows it no more than all others. To be done
    /// before the file's mode is set. Throws FileException where one that matters to programs or
    /// rights cannot be set.
    void giveTo(int file, bool isGroupKept) const;

    bool hasAccessList() const noexcept { return !m_accessList.empty(); }

private:
    std::string valueOf(int file, const std::string& attribute) const;
    void set(int file, const std::string& attribute, const std::string& value) const;

    std::string m_name;
    std::string m_accessList;  ///< as the system encodes it; empty when there is none
    std::vector<std::pair<std::string, std::string>> m_others;
};

}  // namespace ko::Orvid
