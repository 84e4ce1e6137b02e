#include "photoinfo/folder/parallel.h"

#include <chrono>
#include <condition_variable>
#include <exception>
#include <mutex>
#include <system_error>
#include <thread>
#include <vector>

#include "photoinfo/folder/interrupt.h"
#include "photoinfo/folder/progress_bar.h"

namespace photoinfo {

namespace {

// How often the progress bar is drawn and Ctrl-C looked for.
constexpr std::chrono::milliseconds kPause(100);

class Workers {
public:
    Workers(std::size_t count, const Interrupt& interrupt,
            const std::function<void(std::size_t)>& work)
        : count_(count), interrupt_(interrupt), work_(work) {}
    Workers(const Workers&) = delete;
    Workers& operator=(const Workers&) = delete;
    ~Workers() {
        for (std::thread& thread : threads_) {
            thread.join();
        }
    }

    // Fewer threads than wanted will do, where the system gives no more.
    void start(std::size_t jobs) {
        threads_.reserve(jobs);
        try {
            while (threads_.size() < jobs) {
                threads_.emplace_back([this] { run(); });
            }
        } catch (const std::system_error&) {
            if (threads_.empty()) {
                throw;
            }
        }
    }

    // Waits until all is done or nothing more will be, but not for long; `done` is how much is.
    [[nodiscard]] bool hasEnded(std::size_t& done) {
        std::unique_lock lock(mutex_);
        const bool isIdle =
            ended_.wait_for(lock, kPause, [this] { return underWay_ == 0 && isOver(); });
        done = done_;
        return isIdle;
    }

    void rethrow() {
        const std::lock_guard lock(mutex_);
        if (error_) {
            std::rethrow_exception(error_);
        }
    }

private:
    void run() {
        std::size_t index = 0;
        while (take(index)) {
            std::exception_ptr error;
            try {
                work_(index);
            } catch (...) {
                error = std::current_exception();
            }
            giveBack(error);
        }
    }

    bool take(std::size_t& index) {
        const std::lock_guard lock(mutex_);
        if (isOver()) {
            return false;
        }
        index = next_++;
        ++underWay_;
        return true;
    }

    void giveBack(const std::exception_ptr& error) {
        const std::lock_guard lock(mutex_);
        --underWay_;
        ++done_;
        error_ = error_ ? error_ : error;
        if (underWay_ == 0 && isOver()) {
            ended_.notify_one();
        }
    }

    // Under the mutex.
    [[nodiscard]] bool isOver() const {
        return next_ == count_ || error_ || interrupt_.isRequested();
    }

    std::size_t count_;
    const Interrupt& interrupt_;
    const std::function<void(std::size_t)>& work_;
    std::mutex mutex_;
    std::condition_variable ended_;
    std::size_t next_ = 0;  // guarded by mutex_, as are the next three
    std::size_t underWay_ = 0;
    std::size_t done_ = 0;
    std::exception_ptr error_;
    std::vector<std::thread> threads_;
};

}  // namespace

void workInParallel(std::size_t count, std::size_t jobs, Interrupt& interrupt,
                    const std::function<void(std::size_t)>& work) {
    ProgressBar bar(count);
    Workers workers(count, interrupt, work);
    workers.start(jobs < count ? jobs : count);
    std::size_t done = 0;
    while (!workers.hasEnded(done)) {
        interrupt.poll();
        bar.show(done);
    }
    workers.rethrow();
}

}  // namespace photoinfo
