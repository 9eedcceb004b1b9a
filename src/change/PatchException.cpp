// SPDX-License-Identifier: MIT
//
// The error for an operation of a JSON Patch.

#include <ko/Orvid/PatchException.h>

#include <utility>

#include "core/assignWhole.h"

namespace ko::Orvid {

PatchException::PatchException(const Element* element, std::size_t number,
                               const std::string& operation, const std::string& path,
                               const std::string& reason, std::optional<std::string> formerPlace)
    : Exception("Operation " + std::to_string(number) + " of the patch (\"" + operation +
                    "\") failed at \"" + path + "\": " + reason,
                element),
      m_number(number),
      m_operation(operation),
      m_path(path),
      m_reason(reason),
      m_formerPlace(std::move(formerPlace)) {}

PatchException::PatchException(const PatchException& other) = default;

PatchException& PatchException::operator=(const PatchException& other) {
    return assignWhole(*this, other, &PatchException::m_number, &PatchException::m_operation,
                       &PatchException::m_path, &PatchException::m_reason,
                       &PatchException::m_formerPlace);
}

PatchException::~PatchException() = default;

ko::Exception* PatchException::clone() const { return new PatchException(*this); }

}  // namespace ko::Orvid
