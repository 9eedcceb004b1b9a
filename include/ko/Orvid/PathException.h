// SPDX-License-Identifier: MIT
//
// The errors for lookups that failed: a key that an object does not have, a path that leads
// nowhere.

#pragma once

#include <ko/Orvid/Exception.h>
#include <ko/Orvid/types.h>

#include <string>

namespace ko::Orvid {

/// An object has no member `key`. The element context is the object. Costs are those of its base.
class KO_API KeyNotFound : public Exception {
public:
    KeyNotFound(const Element* element, const std::string& key,
                const Orvid::Exception* cause = nullptr);
    KeyNotFound(const KeyNotFound& other);
    KeyNotFound& operator=(const KeyNotFound& other);
    ~KeyNotFound() override;

    void generateWhat(std::string& out) const override;
    ko::Exception* clone() const override;

    const std::string& key() const { return m_key; }

private:
    std::string m_key;
};

/// `path` could not be followed beyond the element of the context: it has no step `key`, which is a
/// member's key or an index in brackets. Costs are those of its base.
class KO_API PathNotFound : public Exception {
public:
    PathNotFound(const Element* element, const std::string& path, const std::string& key,
                 const Orvid::Exception* cause = nullptr);
    PathNotFound(const PathNotFound& other);
    PathNotFound& operator=(const PathNotFound& other);
    ~PathNotFound() override;

    void generateWhat(std::string& out) const override;
    ko::Exception* clone() const override;

    const std::string& path() const { return m_path; }
    const std::string& key() const { return m_key; }
    /// The type of the element where the walk stopped; etEmpty where none is known.
    EType stoppedAt() const { return m_stoppedAt; }

private:
    std::string m_path;
    std::string m_key;
    EType m_stoppedAt;
};

}  // namespace ko::Orvid
