// SPDX-License-Identifier: MIT
//
// One thread: batch after batch. Several are in LineThreads.cpp.

#include "lines/Lines.h"

#include <optional>
#include <string>

#include "input/Input.h"
#include "lines/ApartFiles.h"
#include "lines/LineRun.h"
#include "output/AppendedFile.h"

namespace orvid_tool {

namespace {

void runInOneThread(LineRun& run) {
    LineBatch batch;
    bool goesOn = true;
    while (goesOn) {
        batch.clear();
        goesOn = run.reader.next(batch);
        if (goesOn) {
            run.worker.work(batch);
            goesOn = run.writer.write(batch);
        }
    }
}

void writeStats(const LineCounts& counts, const std::string& name, const Report& report) {
    report.note(
        name + ": " + std::to_string(counts.lines) + (counts.lines == 1 ? " line, " : " lines, ") +
        std::to_string(counts.lines - counts.blank - counts.failed) + " done, " +
        std::to_string(counts.blank) + " blank, " + std::to_string(counts.failed) + " failed");
}

}  // namespace

LinesEnd runLines(const DocumentVerb& verb, const Call& call, Input& input, KeptEnds kept,
                  const Report& report, Output& out) {
    std::optional<AppendedFile> rejects;
    if (call.lines.rejects) {
        rejects.emplace(*call.lines.rejects);
        requireApart(*rejects, input);
    }
    LineRun run{{input, call.lines.longest, kept.noNewline},
                {verb, call, input.name(), kept.mark},
                {report, out, rejects ? &*rejects : nullptr}};
    if (call.lines.threads > 1) {
        runInThreads(run, call.lines.threads);
    } else {
        runInOneThread(run);
    }
    if (rejects && call.isInPlace) {
        rejects->keepOnDisk();
    }
    if (call.lines.hasStats) {
        writeStats(run.writer.counts(), input.name(), report);
    }
    return {run.writer.status(), run.writer.isComplete()};
}

}  // namespace orvid_tool
