// SPDX-License-Identifier: MIT
//
// Threads that pass batches on: each reads one, works on it, and writes it or leaves it to the
// thread that writes those before it.

#include <malloc.h>
#include <sys/resource.h>

#include <atomic>
#include <condition_variable>
#include <exception>
#include <memory>
#include <mutex>
#include <new>
#include <system_error>
#include <thread>
#include <vector>

#include "lines/LineRun.h"

namespace orvid_tool {

namespace {

/// The first exception of the run. It waits until no batch is worked on any more.
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

/// The batches under way, each in a slot of its own, numbered in the order of the input. As many
/// are under way as there are slots, which are used in turn.
class Batches {
public:
    explicit Batches(std::size_t count) : m_slots(count) {}

    /// The number of the batch that is read next, when its slot is free again.
    std::size_t begin() {
        std::unique_lock<std::mutex> lock(m_mutex);
        m_changed.wait(lock, [this] { return m_begun - m_written < m_slots.size(); });
        return m_begun++;
    }

    LineBatch& batch(std::size_t number) { return slot(number).batch; }

    /// The batch of that number is ready to be written. Returns whether this thread has to write:
    /// the batches that next() returns, and then those that have become ready.
    bool finish(std::size_t number) {
        const std::lock_guard<std::mutex> lock(m_mutex);
        slot(number).isReady = true;
        if (m_isWriting || number != m_written) {
            return false;
        }
        m_isWriting = true;
        return true;
    }

    LineBatch& next() { return slot(m_written).batch; }

    /// The batch of next() has been written. Returns whether there is another one to write.
    bool isNextReady() {
        const std::lock_guard<std::mutex> lock(m_mutex);
        slot(m_written).isReady = false;
        ++m_written;
        m_isWriting = m_written < m_begun && slot(m_written).isReady;
        m_changed.notify_one();
        return m_isWriting;
    }

private:
    struct Slot {
        LineBatch batch;
        bool isReady = false;
    };

    Slot& slot(std::size_t number) { return m_slots[number % m_slots.size()]; }

    std::mutex m_mutex;  // guards all but the batches
    std::condition_variable m_changed;
    std::vector<Slot> m_slots;
    std::size_t m_begun = 0;
    std::size_t m_written = 0;
    bool m_isWriting = false;
};

class Pipeline {
public:
    Pipeline(LineRun& run, std::size_t slots) : m_run(run), m_batches(slots) {}

    /// What each thread does.
    void pass() {
        std::size_t number = 0;
        while (read(number)) {
            if (!m_failure.isOver()) {
                m_failure.guard([&] { m_run.worker.work(m_batches.batch(number)); });
            }
            if (m_batches.finish(number)) {
                do {
                    write(m_batches.next());
                } while (m_batches.isNextReady());
            }
        }
    }

    void rethrow() const { m_failure.rethrow(); }

private:
    /// Returns false when there is nothing more to read.
    bool read(std::size_t& number) {
        const std::lock_guard<std::mutex> lock(m_reading);
        if (m_isAtEnd || m_failure.isOver()) {
            return false;
        }
        number = m_batches.begin();
        bool isRead = false;
        m_failure.guard([&] {
            LineBatch& batch = m_batches.batch(number);
            batch.clear();
            isRead = m_run.reader.next(batch);
        });
        m_isAtEnd = !isRead;
        return isRead;
    }

    void write(LineBatch& batch) {
        if (m_failure.isOver()) {
            return;
        }
        m_failure.guard([&] {
            if (!m_run.writer.write(batch)) {
                m_failure.stop();
            }
        });
    }

    LineRun& m_run;
    Batches m_batches;
    std::mutex m_reading;  // guards the reader, and that batches are numbered as they are read
    bool m_isAtEnd = false;
    FirstFailure m_failure;
};

/// Where the address space is limited, memory of its own for each thread would take most of it.
void shareMemory() {
    rlimit limit = {};
    if (getrlimit(RLIMIT_AS, &limit) == 0 && limit.rlim_cur != RLIM_INFINITY) {
        mallopt(M_ARENA_MAX, 1);
    }
}

/// Threads that end before the scope does.
class Threads {
public:
    Threads() = default;
    Threads(const Threads&) = delete;
    Threads& operator=(const Threads&) = delete;
    ~Threads() {
        for (std::thread& thread : m_all) {
            thread.join();
        }
    }

    /// Starts as many as the system gives, up to `count`, and leaves memory for their work.
    template<class Call>
    void start(unsigned int count, const Call& call) {
        constexpr std::size_t leastLeft = std::size_t{1} << 26;
        try {
            const std::unique_ptr<char[]> reserve(new char[leastLeft]);
            m_all.reserve(count);
            while (m_all.size() < count) {
                m_all.emplace_back(call);
            }
        } catch (const std::system_error&) {
            // Fewer do the same work.
        } catch (const std::bad_alloc&) {
            // As above.
        }
    }

private:
    std::vector<std::thread> m_all;
};

}  // namespace

void runInThreads(LineRun& run, unsigned int threads) {
    constexpr std::size_t batchesForEach = 3;
    shareMemory();
    Pipeline pipeline(run, threads * batchesForEach);
    {
        Threads helpers;
        helpers.start(threads - 1, [&pipeline] { pipeline.pass(); });
        pipeline.pass();
    }
    pipeline.rethrow();
}

}  // namespace orvid_tool
