// SPDX-License-Identifier: MIT
//
// SLineRun, the three stations that every batch of lines passes, and how several threads pass
// batches through them.

#pragma once

#include "lines/LineReader.h"
#include "lines/LineWorker.h"
#include "lines/LineWriter.h"

namespace orvid_tool {

struct SLineRun {
    LineReader reader;
    LineWorker worker;
    LineWriter writer;
};

/// Passes all batches with so many threads. Reading and writing happen in order; only so many
/// batches are under way at once. A 32 bit build does without it.
void runInThreads(SLineRun& run, unsigned int threads);

}  // namespace orvid_tool
