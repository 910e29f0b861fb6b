#include "XOV_Graphics/base/TaskPool.h"

#include "XOV_Graphics/base/Threads.h"

#include <QtGlobal>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <condition_variable>
#include <exception>
#include <mutex>
#include <system_error>
#include <thread>
#include <vector>

#ifdef Q_OS_UNIX
#include <csignal>
#include <pthread.h>
#endif

namespace xov {

namespace {

// What is left must take this long for others to be woken up: that takes some microseconds a thread, and they begin
// with empty caches.
constexpr std::chrono::nanoseconds kWorthWaking = std::chrono::microseconds(100);

std::atomic<int> countSet = 0; // 0 while no host has set it

// Tasks that are shared.
class Job {
public:
  Job(int first, int count, const std::function<void(int)>& task) : task_(task), count_(count), next_(first) {}

  // Begins tasks until none is left.
  void work() {
    for (std::int64_t i = next_++; i < count_; i = next_++) {
      try {
        task_(int(i));
      } catch (...) {
        keep(std::current_exception(), i);
      }
    }
  }
  void throwFailure() const {
    if (failure_) std::rethrow_exception(failure_);
  }

  // Both under the pool's lock.
  int seats = 0;  // threads that may still join in
  int inside = 0; // those that have
  std::condition_variable left;

private:
  // Tasks before the failed one have all begun, so that the first failure is the same whoever meets one first.
  void keep(std::exception_ptr failure, std::int64_t task) {
    next_ = count_;
    const std::lock_guard lock(failureMutex_);
    if (task >= failedTask_) return;
    failedTask_ = task;
    failure_ = std::move(failure);
  }

  const std::function<void(int)>& task_;
  const std::int64_t count_;
  std::atomic<std::int64_t> next_;
  std::mutex failureMutex_;
  std::exception_ptr failure_;
  std::int64_t failedTask_ = INT64_MAX;
};

// Threads that wait for jobs. A thread only ever waits for others that do tasks of its own job, and those for tasks
// of jobs within: so all come to an end.
class TaskPool {
public:
  static TaskPool& ofProcess();

  void run(Job& job, int helpers) {
    {
      const std::lock_guard lock(mutex_);
      job.seats = helpers;
      jobs_.push_back(&job);
      startThreads(helpers);
    }
    if (helpers == 1) {
      wake_.notify_one();
    } else {
      wake_.notify_all();
    }
    job.work();
    std::unique_lock lock(mutex_);
    close(job);
    job.left.wait(lock, [&] { return job.inside == 0; });
  }

  // Ends threads that are too many.
  void shrink() {
    const std::lock_guard lock(mutex_);
    wake_.notify_all();
  }

  static void forget() { ofThisProcess_ = nullptr; }

private:
  void startThreads(int helpers) {
    const int most = threadCount() - 1;
    for (int missing = helpers - idle_; missing > 0 && threads_ < most; --missing) {
      try {
        std::thread([this] { serve(); }).detach();
      } catch (const std::system_error&) {
        return; // the system gives no more: those that are there will do
      }
      ++threads_;
      ++idle_;
    }
  }

  void serve() {
#ifdef Q_OS_UNIX
    sigset_t all; // signals are for the host's own threads
    sigfillset(&all);
    pthread_sigmask(SIG_SETMASK, &all, nullptr);
#endif
    std::unique_lock lock(mutex_);
    for (;;) {
      // Asked once: the host may set the number again meanwhile, and then there need be no job.
      bool isTooMany = false;
      wake_.wait(lock, [&] {
        isTooMany = threads_ > threadCount() - 1;
        return isTooMany || !jobs_.empty();
      });
      if (isTooMany) break;
      // The latest one, which others may be waiting for within theirs.
      Job& job = *jobs_.back();
      ++job.inside;
      --idle_;
      if (--job.seats == 0) close(job);
      lock.unlock();
      job.work();
      lock.lock();
      ++idle_;
      close(job); // nothing of it is left to begin
      if (--job.inside == 0) job.left.notify_all();
    }
    --threads_;
    --idle_;
  }

  void close(const Job& job) { std::erase(jobs_, &job); }

  std::mutex mutex_;
  std::condition_variable wake_;
  std::vector<Job*> jobs_; // those that threads may join
  int threads_ = 0;
  int idle_ = 0;

  static std::atomic<TaskPool*> ofThisProcess_;
};

std::atomic<TaskPool*> TaskPool::ofThisProcess_ = nullptr;

// Never deleted: threads of a pool may outlive main(), and a forked child has a pool without its threads.
TaskPool& TaskPool::ofProcess() {
  TaskPool* pool = ofThisProcess_;
  if (pool != nullptr) return *pool;
  auto* const made = new TaskPool;
  if (ofThisProcess_.compare_exchange_strong(pool, made)) return *made;
  delete made;
  return *pool;
}

#ifdef Q_OS_UNIX
// A child of a fork has none of the threads, and maybe a lock that one of them held.
[[maybe_unused]] const int forgetsWhenForked = pthread_atfork(nullptr, nullptr, [] { TaskPool::forget(); });
#endif

int usualCount() {
  bool isNumber = false;
  const int wished = qEnvironmentVariableIntValue("XOV_THREADS", &isNumber);
  const int count = isNumber && wished > 0 ? wished : int(std::thread::hardware_concurrency());
  return std::clamp(count, 1, kMostThreads);
}

std::atomic<int> usualCountFound = 0;

} // namespace

int threadCount() {
  if (const int count = countSet; count > 0) return count;
  if (usualCountFound == 0) usualCountFound = usualCount();
  return usualCountFound;
}

void setThreadCount(int count) {
  countSet = std::clamp(count, 0, kMostThreads);
  TaskPool::ofProcess().shrink();
}

int runTasksAlone(int count, const std::function<void(int)>& task,
                  const std::function<std::chrono::nanoseconds()>& now) {
  const std::chrono::nanoseconds begin = now();
  std::chrono::nanoseconds rest{0};
  int done = 0;
  do {
    task(done++);
    rest = (now() - begin) / done * (count - done);
  } while (done < count && rest < kWorthWaking);
  return done;
}

void runTasks(int count, TaskStart start, const std::function<void(int)>& task) {
  if (count <= 0) return;
  const int threads = std::min(threadCount(), count);
  int done = 0;
  if (threads > 1 && start == TaskStart::FirstAlone)
    done = runTasksAlone(count, task, [] { return std::chrono::steady_clock::now().time_since_epoch(); });
  const int helpers = std::min(threads, count - done) - 1;
  if (helpers < 1) {
    while (done < count)
      task(done++);
    return;
  }
  Job job(done, count, task);
  TaskPool::ofProcess().run(job, helpers);
  job.throwFailure();
}

void runParts(std::int64_t count, std::int64_t together,
              const std::function<void(std::int64_t from, std::int64_t to)>& part) {
  if (count <= 0) return;
  const std::int64_t parts = (count - 1) / together + 1;
  runTasks(int(std::min<std::int64_t>(parts, INT_MAX)), TaskStart::FirstAlone, [&](int i) {
    const std::int64_t from = i * together;
    part(from, std::min(from + together, count));
  });
}

} // namespace xov
