// SPDX-License-Identifier: MIT
//
// Threads: an ordered pipeline in which reading and writing stay serial.

#include <oneapi/tbb/global_control.h>
#include <oneapi/tbb/parallel_pipeline.h>
#include <oneapi/tbb/task_arena.h>

#include <atomic>
#include <exception>
#include <memory>
#include <mutex>
#include <vector>

#include "lines/LineRun.h"

namespace orvid_tool {

namespace {

using TBatch = LineBatch*;

/// Batches that are used again and again, for the sake of their memory.
class Batches {
public:
    TBatch take() {
        const std::lock_guard<std::mutex> lock(m_mutex);
        if (m_free.empty()) {
            m_free.push_back(m_all.emplace_back(std::make_unique<LineBatch>()).get());
        }
        const TBatch batch = m_free.back();
        m_free.pop_back();
        batch->clear();
        return batch;
    }
    void give(TBatch batch) {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_free.push_back(batch);
    }

private:
    std::mutex m_mutex;
    std::vector<std::unique_ptr<LineBatch>> m_all;
    std::vector<TBatch> m_free;
};

/// The first exception of the run. It waits until the pipeline is empty, where no batch is worked
/// on any more.
class FirstFailure {
public:
    template<class Call>
    void guard(const Call& call) {
        try {
            call();
        } catch (...) {
            std::call_once(m_once, [this] { m_failure = std::current_exception(); });
            m_isOver = true;
        }
    }

    void stop() { m_isOver = true; }
    bool isOver() const { return m_isOver; }
    void rethrow() const {
        if (m_failure != nullptr) {
            std::rethrow_exception(m_failure);
        }
    }

private:
    std::once_flag m_once;
    std::exception_ptr m_failure;
    std::atomic<bool> m_isOver = false;
};

}  // namespace

void runInThreads(SLineRun& run, unsigned int threads) {
    using tbb::filter_mode;
    constexpr std::size_t batchesForEach = 3;
    const tbb::global_control limit(tbb::global_control::max_allowed_parallelism, threads);
    Batches batches;
    FirstFailure failure;
    const auto read = [&](tbb::flow_control& flow) -> TBatch {
        TBatch batch = nullptr;
        bool isRead = false;
        failure.guard([&] {
            batch = batches.take();
            isRead = !failure.isOver() && run.reader.next(*batch);
        });
        if (!isRead) {
            flow.stop();
        }
        return batch;
    };
    const auto work = [&](TBatch batch) {
        if (!failure.isOver()) {
            failure.guard([&] { run.worker.work(*batch); });
        }
        return batch;
    };
    const auto write = [&](TBatch batch) {
        failure.guard([&] {
            if (!failure.isOver() && !run.writer.write(*batch)) {
                failure.stop();
            }
            batches.give(batch);
        });
    };
    tbb::task_arena arena(static_cast<int>(threads));
    arena.execute([&] {
        tbb::parallel_pipeline(
            threads * batchesForEach,
            tbb::make_filter<void, TBatch>(filter_mode::serial_in_order, read) &
                tbb::make_filter<TBatch, TBatch>(filter_mode::parallel, work) &
                tbb::make_filter<TBatch, void>(filter_mode::serial_in_order, write));
    });
    failure.rethrow();
}

}  // namespace orvid_tool
