// SPDX-License-Identifier: MIT
//
// LineWorker does a verb's work on the lines of a batch.

#pragma once

#include <cstddef>
#include <string_view>

#include "call/Verb.h"
#include "lines/LineBatch.h"

namespace orvid_tool {

/// Used by several threads at once, each with a batch of its own.
class LineWorker {
public:
    /// `name` is that of the input. All must outlive the worker. `keepsMark` says that a byte order
    /// mark before the first line is to stand before its result too.
    LineWorker(const DocumentVerb& verb, const Call& call, const std::string& name, bool keepsMark)
        : m_verb(verb), m_call(call), m_name(name), m_keepsMark(keepsMark) {}

    /// Fills in the results. Stops at a line that fails where the call says so, or when the call's
    /// own words turn out to be wrong.
    void work(LineBatch& batch) const;

private:
    void workOnLines(std::string_view rest, LineBatch& batch) const;
    void workOnLine(std::string_view line, Document& document, LineBatch& batch) const;
    void workOnHead(std::string_view line, LineBatch& batch) const;
    void workOnPart(LineBatch& batch) const;
    void fail(const Failure& failure, std::string_view line, LineBatch& batch) const;
    Failure tooLong() const;

    const DocumentVerb& m_verb;
    const Call& m_call;
    const std::string& m_name;
    bool m_keepsMark;
};

}  // namespace orvid_tool
