#pragma once

#include <algorithm>
#include <atomic>
#include <condition_variable>
#include <cstddef>
#include <functional>
#include <limits>
#include <mutex>
#include <optional>
#include <span>
#include <system_error>
#include <thread>
#include <utility>
#include <vector>

#include <sys/resource.h>

namespace Brimlo {

/// A thread pool for jobs that create more jobs, newest first.
///
/// Newest first walks a tree depth first, so that few jobs are pending. A member keeps its own jobs
/// and shares the older half as soon as another member is idle, which balances trees of any shape.
/// It starts with a thread for each core, and hires more while the process waits for a disk, to
/// keep the disk busy.
template <typename Job>
class WorkCrew {
public:
    class Member;
    using Work = std::function<void(const Job&, Member&)>;

    /// Calls `work` with `first` and all jobs that it creates, on the calling thread and others, so
    /// many threads at most. Blocks until all is done.
    static void run(const Job& first, const Work& work, unsigned mostMembers) {
        WorkCrew crew{work, mostMembers};
        crew.shared_.push_back(first);
        crew.unfinished_ = 1;
        crew.hire(std::max(1U, std::thread::hardware_concurrency()) - 1);
        crew.labour();
        for (std::thread& thread : crew.threads_) {
            thread.join();
        }
    }

private:
    static constexpr unsigned kJobsBetweenLooks = 64;
    static constexpr long kReadsToHire = 16;

    WorkCrew(const Work& work, unsigned mostMembers)
        : work_{work}
        , mostMembers_{mostMembers} {}

    void hire(unsigned count) {
        const std::lock_guard guard{lock_};
        for (unsigned i = 0; i < count && threads_.size() + 1 < mostMembers_; ++i) {
            try {
                threads_.emplace_back([this] { labour(); });
            } catch (const std::system_error&) {
                return;  // The threads that exist do all the work.
            }
        }
    }

    void labour() {
        Member member{*this};
        while (const std::optional<Job> job = next(member)) {
            work_(*job, member);
            member.finished();
        }
    }

    std::optional<Job> next(Member& member) {
        if (!member.own_.empty()) {
            if (idle_.load(std::memory_order_relaxed) > 0) {
                member.giveHalfAway();
            }
            return popLast(member.own_);
        }
        std::unique_lock guard{lock_};
        if (shared_.empty() && unfinished_ > 0) {
            ++idle_;
            wake_.wait(guard, [this] { return !shared_.empty() || unfinished_ == 0; });
            --idle_;
        }
        return shared_.empty() ? std::nullopt : std::optional{popLast(shared_)};
    }

    static Job popLast(std::vector<Job>& jobs) {
        Job job = std::move(jobs.back());
        jobs.pop_back();
        return job;
    }

    void share(std::span<const Job> jobs) {
        const std::lock_guard guard{lock_};
        shared_.insert(shared_.end(), jobs.begin(), jobs.end());
        if (idle_ > 0) {
            wake_.notify_all();
        }
    }

    const Work& work_;
    const unsigned mostMembers_;
    std::mutex lock_;
    std::condition_variable wake_;
    std::vector<Job> shared_;           // guarded by lock_
    std::vector<std::thread> threads_;  // guarded by lock_
    std::atomic<unsigned> idle_ = 0;
    std::atomic<std::size_t> unfinished_ = 0;
};

/// The member that runs a job, through which the job adds more.
template <typename Job>
class WorkCrew<Job>::Member {
public:
    /// Adds jobs for any member; the last is taken first.
    void share(std::span<const Job> jobs) {
        crew_.unfinished_ += jobs.size();
        crew_.share(jobs);
    }

    /// Adds jobs for this member, which shares them when another is idle.
    void keep(std::span<const Job> jobs) {
        crew_.unfinished_ += jobs.size();
        own_.insert(own_.end(), jobs.begin(), jobs.end());
    }

private:
    friend class WorkCrew;

    explicit Member(WorkCrew& crew)
        : crew_{crew} {}

    /// Keeps the larger half, so at least one job.
    void giveHalfAway() {
        const std::size_t count = own_.size() / 2;
        if (count > 0) {
            crew_.share(std::span{own_}.first(count));
            own_.erase(own_.begin(), own_.begin() + static_cast<std::ptrdiff_t>(count));
        }
    }

    void finished() {
        // Before the job counts as done: after the last one no thread may be hired.
        if (++jobsDone_ % kJobsBetweenLooks == 0) {
            look();
        }
        if (--crew_.unfinished_ == 0) {
            const std::lock_guard guard{crew_.lock_};
            crew_.wake_.notify_all();
        }
    }

    /// Hires another member when the process had to wait for a disk.
    void look() {
        rusage usage{};
        getrusage(RUSAGE_SELF, &usage);
        if (usage.ru_inblock >= readsAtLook_ + kReadsToHire) {
            crew_.hire(1);
        }
        readsAtLook_ = usage.ru_inblock;
    }

    WorkCrew& crew_;
    std::vector<Job> own_;
    unsigned jobsDone_ = 0;
    long readsAtLook_ = std::numeric_limits<long>::max() - kReadsToHire;
};

}  // namespace Brimlo
