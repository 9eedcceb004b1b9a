// SPDX-License-Identifier: MIT
//
// The exception root: message, cause and the text that what() shows.

#include <ko/Exception.h>

#include <mutex>
#include <utility>

namespace ko {

namespace {

/// Guards the texts that what() has made, of all exceptions: several threads may have caught one.
std::mutex& textMutex() noexcept {
    static std::mutex mutex;
    return mutex;
}

std::unique_ptr<const Exception> copyOf(const Exception* cause) {
    return std::unique_ptr<const Exception>(cause == nullptr ? nullptr : cause->clone());
}

}  // namespace

Exception::Exception(const std::string& message, const Exception* cause)
    : m_message(message), m_cause(copyOf(cause)) {}

Exception::Exception(const Exception& other)
    : std::exception(other), m_message(other.m_message), m_cause(copyOf(other.m_cause.get())) {}

Exception& Exception::operator=(const Exception& other) {
    if (this != &other) {
        std::string message = other.m_message;
        std::unique_ptr<const Exception> cause = copyOf(other.m_cause.get());
        // The former cause may be `other`, of which the subclasses still have to read their fields.
        m_formerCause = std::exchange(m_cause, std::move(cause));
        m_message.swap(message);
    }
    return *this;
}

Exception::~Exception() = default;

const char* Exception::what() const noexcept {
    try {
        std::string text;
        generateWhat(text);
        // Among threads that only read, the first stores the text, which the others then leave.
        const std::lock_guard<std::mutex> lock(textMutex());
        if (m_what != text) {
            m_what.swap(text);
        }
        return m_what.c_str();
    } catch (...) {
        return "ko::Exception (its text could not be made)";
    }
}

void Exception::generateWhat(std::string& out) const {
    std::string text = m_message;
    if (m_cause) {
        text += " Cause: ";
        text += m_cause->what();
    }
    out.swap(text);
}

Exception* Exception::clone() const { return new Exception(*this); }

RuntimeError::RuntimeError(const std::string& message, const Exception* cause)
    : Exception(message, cause) {}

RuntimeError::RuntimeError(const RuntimeError&) = default;

RuntimeError& RuntimeError::operator=(const RuntimeError&) = default;

RuntimeError::~RuntimeError() = default;

Exception* RuntimeError::clone() const { return new RuntimeError(*this); }

}  // namespace ko
