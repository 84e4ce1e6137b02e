#include "photoinfo/folder/parallel.h"

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <exception>
#include <mutex>
#include <optional>
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
            const std::function<void(std::size_t)>& work, const Preparation& preparation)
        : count_(count), interrupt_(interrupt), work_(work), preparation_(preparation) {}
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
    struct Portion {
        std::size_t begin = 0;
        std::size_t end = 0;
    };

    void run() {
        while (const std::optional<Portion> portion = take()) {
            giveBack(workOff(*portion));
        }
    }

    std::optional<Portion> take() {
        const std::lock_guard lock(mutex_);
        if (isOver()) {
            return std::nullopt;
        }
        const std::size_t begin = next_;
        next_ += std::min(preparation_.portion, count_ - begin);
        ++underWay_;
        return Portion{begin, next_};
    }

    std::exception_ptr workOff(const Portion& portion) {
        try {
            if (preparation_.prepare) {
                preparation_.prepare(portion.begin, portion.end);
            }
            for (std::size_t i = portion.begin; i < portion.end && mayGoOn(); ++i) {
                work_(i);
                countDone();
            }
        } catch (...) {
            return std::current_exception();
        }
        return nullptr;
    }

    [[nodiscard]] bool mayGoOn() {
        const std::lock_guard lock(mutex_);
        return !isStopped();
    }

    void countDone() {
        const std::lock_guard lock(mutex_);
        ++done_;
    }

    void giveBack(const std::exception_ptr& error) {
        const std::lock_guard lock(mutex_);
        --underWay_;
        error_ = error_ ? error_ : error;
        if (underWay_ == 0 && isOver()) {
            ended_.notify_one();
        }
    }

    // Under the mutex, both.
    [[nodiscard]] bool isOver() const { return next_ == count_ || isStopped(); }
    [[nodiscard]] bool isStopped() const { return error_ || interrupt_.isRequested(); }

    std::size_t count_;
    const Interrupt& interrupt_;
    const std::function<void(std::size_t)>& work_;
    const Preparation& preparation_;
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
                    const std::function<void(std::size_t)>& work, const Preparation& preparation) {
    ProgressBar bar(count);
    Workers workers(count, interrupt, work, preparation);
    workers.start(jobs < count ? jobs : count);
    std::size_t done = 0;
    while (!workers.hasEnded(done)) {
        interrupt.poll();
        bar.show(done);
    }
    workers.rethrow();
}

}  // namespace photoinfo
