// SPDX-License-Identifier: MIT
//
// LineRun, the three stations that every batch of lines passes, and how several threads pass
// batches through them.

#pragma once

#include "lines/LineReader.h"
#include "lines/LineWorker.h"
#include "lines/LineWriter.h"

namespace orvid_tool {

struct LineRun {
    LineReader reader;
    LineWorker worker;
    LineWriter writer;
};

/// Passes all batches with so many threads, at least two, or with as many as the system gives.
/// Reading and writing happen in order; only so many batches are under way at once. Throws the
/// first exception of any of them, when all have ended.
void runInThreads(LineRun& run, unsigned int threads);

}  // namespace orvid_tool
