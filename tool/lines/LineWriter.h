// SPDX-License-Identifier: MIT
//
// LineWriter takes the results of batches, in the order of the input.

#pragma once

#include "lines/LineBatch.h"
#include "output/Output.h"
#include "output/Report.h"

namespace orvid_tool {

class LineWriter {
public:
    /// `rejects` takes the lines that failed; it may be null.
    LineWriter(const Report& report, Output& out, Output* rejects)
        : m_report(report), m_out(out), m_rejects(rejects) {}

    /// Writes the batch's output and reports its failures. Returns false when the run is over.
    bool write(LineBatch& batch);

    /// Of the batches so far.
    const LineCounts& counts() const { return m_counts; }
    /// The highest status of the failures so far.
    ExitStatus status() const { return m_status; }
    /// Whether nothing has ended the run before its time.
    bool isComplete() const { return m_isComplete; }

private:
    void take(const Failure& failure);

    const Report& m_report;
    Output& m_out;
    Output* m_rejects;
    LineCounts m_counts;
    ExitStatus m_status = ExitStatus::done;
    bool m_isComplete = true;
};

}  // namespace orvid_tool
