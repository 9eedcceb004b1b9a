// SPDX-License-Identifier: MIT
//
// The error for an operation of a JSON Patch that cannot be carried out.

#pragma once

#include <ko/Orvid/Exception.h>

#include <cstddef>
#include <optional>
#include <string>

namespace ko::Orvid {

/// An operation of a JSON Patch could not be carried out, or is none. The element context, where
/// there is one, is the deepest element on the way to the operation's place. Costs are those of its
/// base.
class KO_API PatchException : public Exception {
public:
    /// `number` counts the operations of the patch from 0, `path` is the operation's JSON Pointer
    /// as it is written, empty where it has none. `formerPlace` is the JSON Pointer that the
    /// element had before the patch; leave it out where that is not known.
    PatchException(const Element* element, std::size_t number, const std::string& operation,
                   const std::string& path, const std::string& reason,
                   std::optional<std::string> formerPlace = std::nullopt);
    PatchException(const PatchException& other);
    PatchException& operator=(const PatchException& other);
    ~PatchException() override;

    ko::Exception* clone() const override;

    /// The operation's 0-based position in the patch.
    std::size_t number() const { return m_number; }
    /// Its name, as "add"; empty where it has none.
    const std::string& operation() const { return m_operation; }
    /// The JSON Pointer that the error concerns: the operation's "path", or its "from".
    const std::string& path() const { return m_path; }
    /// Why it failed.
    const std::string& reason() const { return m_reason; }
    /// The JSON Pointer, from the root, that the element of the context had before the patch:
    /// elementPath() is its place as the operations before this one have left the document. Null
    /// where one of them put the element there, or something above it, and without a context. The
    /// string lives as long as this exception, and until another is assigned to it.
    const std::string* formerPlace() const { return m_formerPlace ? &*m_formerPlace : nullptr; }

private:
    std::size_t m_number;
    std::string m_operation;
    std::string m_path;
    std::string m_reason;
    std::optional<std::string> m_formerPlace;
};

}  // namespace ko::Orvid
