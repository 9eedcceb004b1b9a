// SPDX-License-Identifier: MIT
//
// Threads: an ordered pipeline in which reading and writing stay serial.

#include <oneapi/tbb/global_control.h>
#include <oneapi/tbb/parallel_pipeline.h>
#include <oneapi/tbb/task_arena.h>

#include <atomic>
#include <memory>

#include "LineRun.h"

namespace orvid_tool {

using TBatch = std::shared_ptr<LineBatch>;

void runInThreads(SLineRun& run, unsigned int threads) {
    using tbb::filter_mode;
    constexpr std::size_t batchesForEach = 3;
    const tbb::global_control limit(tbb::global_control::max_allowed_parallelism, threads);
    std::atomic<bool> isOver = false;
    const auto read = [&](tbb::flow_control& flow) -> TBatch {
        auto batch = std::make_shared<LineBatch>();
        if (isOver || !run.reader.next(*batch)) {
            flow.stop();
        }
        return batch;
    };
    const auto work = [&](TBatch batch) {
        if (!isOver) {
            run.worker.work(*batch);
        }
        return batch;
    };
    const auto write = [&](const TBatch& batch) {
        if (!isOver) {
            isOver = !run.writer.write(*batch);
        }
    };
    tbb::task_arena arena(static_cast<int>(threads));
    arena.execute([&] {
        tbb::parallel_pipeline(
            threads * batchesForEach,
            tbb::make_filter<void, TBatch>(filter_mode::serial_in_order, read) &
                tbb::make_filter<TBatch, TBatch>(filter_mode::parallel, work) &
                tbb::make_filter<TBatch, void>(filter_mode::serial_in_order, write));
    });
}

}  // namespace orvid_tool
