// SPDX-License-Identifier: MIT
//
// The root of all exceptions of the base support library and of the libraries built on it. A
// subclass that has a text of its own overrides generateWhat(); what() shows whatever that writes.

#pragma once

#include <ko/export.h>

#include <exception>
#include <memory>
#include <string>

namespace ko {

/// An error with a message and, where one error led to another, a copy of its cause.
/// Owns everything it prints, so it outlives the objects it describes. Making one, copying it and
/// its text cost time linear in the lengths of its texts, those of its causes among them; cause()
/// is O(1).
class KO_API Exception : public std::exception {
public:
    /// `cause` may be null; a cause is copied with its clone(), never kept by reference.
    explicit Exception(const std::string& message, const Exception* cause = nullptr);
    Exception(const Exception& other);
    /// `other` may be the cause of this exception, which stays readable until the next assignment.
    Exception& operator=(const Exception& other);
    ~Exception() override;

    /// The text that the most derived generateWhat() writes. Never throws: when generateWhat()
    /// does, such as for lack of memory, it is a fixed text. Valid until a later call finds another
    /// text, and no longer than the object. Any number of threads may call it on one object.
    const char* what() const noexcept override;

    /// Replaces `out` by the whole text of this error: here the message, followed by
    /// " Cause: " and the cause's text when there is one.
    virtual void generateWhat(std::string& out) const;

    /// A heap copy of the most derived object, owned by the caller. Every subclass overrides it, or
    /// its copies lose what the subclass adds.
    virtual Exception* clone() const;

    /// The copy of the cause; null when there is none. Lives as long as this object.
    const Exception* cause() const noexcept { return m_cause.get(); }

private:
    std::string m_message;
    std::unique_ptr<const Exception> m_cause;
    std::unique_ptr<const Exception> m_formerCause;
    mutable std::string m_what;
};

/// An error that no input explains: an internal rule was broken, or a value cannot be represented.
/// Costs are those of its base.
class KO_API RuntimeError : public Exception {
public:
    explicit RuntimeError(const std::string& message, const Exception* cause = nullptr);
    RuntimeError(const RuntimeError&);
    RuntimeError& operator=(const RuntimeError&);
    ~RuntimeError() override;

    Exception* clone() const override;
};

}  // namespace ko
