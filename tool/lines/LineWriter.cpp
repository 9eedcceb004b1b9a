// SPDX-License-Identifier: MIT
//
// Where batches are in order again, so that lines can be counted from the input's start.

#include "lines/LineWriter.h"

#include <algorithm>

namespace orvid_tool {

bool LineWriter::write(LineBatch& batch) {
    if (m_rejects != nullptr) {
        m_rejects->write(batch.rejects.view());
    }
    m_out.write(batch.out.view());
    m_out.flush();
    for (Failure& failure : batch.failures) {
        failure.setLine(m_counts.lines + failure.location().line);
        take(failure);
    }
    m_counts += batch.counts;
    if (!batch.isStopped && batch.readFailure) {
        take(*batch.readFailure);
    }
    m_isComplete = !batch.isStopped && !batch.readFailure;
    return m_isComplete;
}

void LineWriter::take(const Failure& failure) {
    m_report.failure(failure);
    m_status = std::max(m_status, failure.status());
}

}  // namespace orvid_tool
