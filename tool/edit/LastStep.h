// SPDX-License-Identifier: MIT
//
// LastStep, a path split into the path of a container and the step from there.

#pragma once

#include <ko/Orvid.h>

#include <string>

namespace orvid_tool {

class LastStep {
public:
    /// Throws Failure for a path that is malformed, UsageError for one without a step.
    explicit LastStep(const std::string& path);

    const std::string& path() const { return m_path; }
    /// The path of the object or array that the step leads into.
    const ko::Orvid::Path& holder() const { return m_holder; }
    bool isKey() const { return m_isKey; }
    /// The key, escapes resolved.
    const std::string& key() const { return m_key; }
    /// The position, from 0.
    unsigned int index() const { return m_index; }
    /// Whether the step is `[*]`, the position after the last item.
    bool isStar() const { return !m_isKey && m_index == ko::Orvid::k_noIndex; }
    /// The step for messages: the key, or the index in brackets.
    std::string text() const;

private:
    std::string m_path;
    ko::Orvid::Path m_holder;
    bool m_isKey = false;
    std::string m_key;
    unsigned int m_index = 0;
};

}  // namespace orvid_tool
