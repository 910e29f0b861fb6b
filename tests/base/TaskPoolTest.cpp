#include "XOV_Graphics/base/TaskPool.h"

#include "XOV_Graphics/base/Spares.h"
#include "XOV_Graphics/base/Threads.h"
#include "tests/support/ThreadCounts.h"

#include <gtest/gtest.h>

#include <QtGlobal>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <latch>
#include <mutex>
#include <set>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

#ifdef Q_OS_UNIX
#include <csignal>
#include <sys/wait.h>
#include <unistd.h>
#endif

namespace xov {
namespace {

const TaskStart kStarts[] = {TaskStart::FirstAlone, TaskStart::Together};

// The threads that two tasks are under way on at the same time: each waits for the other.
std::set<std::thread::id> meetingThreads() {
  std::latch both(2);
  std::mutex mutex;
  std::set<std::thread::id> threads;
  runTasks(2, TaskStart::Together, [&](int) {
    both.arrive_and_wait();
    const std::lock_guard lock(mutex);
    threads.insert(std::this_thread::get_id());
  });
  return threads;
}

TEST(TaskPool, doesEachTaskOnceWithAnyNumberOfThreads) {
  for (const int threads : kThreadCounts) {
    const WithThreads with(threads);
    for (const TaskStart start : kStarts) {
      for (const int count : {-1, 0, 1, 2, 3, 100, 5000}) {
        std::vector<std::atomic<int>> done(std::size_t(std::max(count, 0)));
        runTasks(count, start, [&](int i) { ++done[std::size_t(i)]; });
        for (const std::atomic<int>& times : done)
          ASSERT_EQ(times, 1) << threads << " threads, " << count << " tasks";
      }
    }
  }
}

TEST(TaskPool, partsHoldEachNumberOnce) {
  for (const int threads : kThreadCounts) {
    const WithThreads with(threads);
    for (const std::int64_t count : {-5, 0, 1, 99, 100, 101, 1000}) {
      std::vector<std::atomic<int>> done(std::size_t(std::max<std::int64_t>(count, 0)));
      runParts(count, 100, [&](std::int64_t from, std::int64_t to) {
        EXPECT_LE(to - from, 100);
        for (std::int64_t i = from; i < to; ++i)
          ++done[std::size_t(i)];
      });
      for (const std::atomic<int>& times : done)
        ASSERT_EQ(times, 1) << threads << " threads, " << count;
    }
  }
}

TEST(TaskPool, oneThreadIsThatOfTheCaller) {
  const WithThreads with(1);
  for (const TaskStart start : kStarts) {
    std::vector<int> order;
    runTasks(50, start, [&, caller = std::this_thread::get_id()](int i) {
      EXPECT_EQ(std::this_thread::get_id(), caller);
      order.push_back(i);
    });
    EXPECT_EQ(order.size(), 50U);
    EXPECT_TRUE(std::is_sorted(order.begin(), order.end()));
  }
}

TEST(TaskPool, tasksAreUnderWayAtTheSameTimeOnTwoThreadsOfWhichTheCallerIsOne) {
  const WithThreads with(2);
  const std::set<std::thread::id> threads = meetingThreads();
  EXPECT_EQ(threads.size(), 2U);
  EXPECT_TRUE(threads.contains(std::this_thread::get_id()));
}

TEST(TaskPool, theFirstTaskAloneIsSeenByAllOthers) {
  const WithThreads with(4);
  for (int repeat = 0; repeat < 20; ++repeat) {
    int settled = 0; // no atomic: that it is seen is the promise
    std::atomic<int> seen = 0;
    runTasks(8, TaskStart::FirstAlone, [&, caller = std::this_thread::get_id()](int i) {
      if (i > 0) {
        seen += settled;
        return;
      }
      EXPECT_EQ(std::this_thread::get_id(), caller);
      const auto end = std::chrono::steady_clock::now() + std::chrono::microseconds(50);
      while (std::chrono::steady_clock::now() < end) // long enough for the others to be shared
        ;
      settled = 7;
    });
    ASSERT_EQ(seen, 7 * 7);
  }
}

// How many of `count` tasks are done alone by a clock on which each takes as long as the last of `took` that there is
// for it, in nanoseconds.
int doneAlone(int count, const std::vector<int>& took) {
  std::chrono::nanoseconds now{7};
  int begun = 0;
  const int done = runTasksAlone(
      count,
      [&](int i) {
        EXPECT_EQ(i, begun++);
        now += std::chrono::nanoseconds(took[std::min(std::size_t(i), took.size() - 1)]);
      },
      [&] { return now; });
  EXPECT_EQ(done, begun);
  return done;
}

TEST(TaskPool, whatTakesNoTimeWakesNobody) { EXPECT_EQ(doneAlone(100000, {0}), 100000); }

TEST(TaskPool, othersAreWokenForWhatTakesAHundredMicroseconds) {
  EXPECT_EQ(doneAlone(51, {2000}), 1);  // 50 tasks are left, of 2 µs
  EXPECT_EQ(doneAlone(50, {2000}), 50); // 49 of 2 µs are 98, and fewer are less
  EXPECT_EQ(doneAlone(2, {100000}), 1);
  EXPECT_EQ(doneAlone(2, {99999}), 2);
  EXPECT_EQ(doneAlone(1, {2000000}), 1);
}

TEST(TaskPool, tasksThatComeToTakeLongerWakeOthersThen) {
  // After four: (3 · 1 + 37) / 4 = 10 µs, of which six left take 60. After five: 77 / 5 = 15.4, and five left
  // take 77.
  EXPECT_EQ(doneAlone(10, {1000, 1000, 1000, 37000, 40000, 0}), 10);
  // After five: 150 / 5 = 30, and five left take 150.
  EXPECT_EQ(doneAlone(10, {1000, 1000, 1000, 37000, 110000, 0}), 5);
}

TEST(TaskPool, throwsOnWhatTheFirstFailingTaskThrewWhoeverMeetsOne) {
  for (const int threads : kThreadCounts) {
    const WithThreads with(threads);
    for (const TaskStart start : kStarts) {
      for (int repeat = 0; repeat < 50; ++repeat) {
        const auto fails = [&] {
          runTasks(40, start, [](int i) {
            if (i % 10 == 7) throw std::runtime_error("task " + std::to_string(i));
          });
        };
        try {
          fails();
          FAIL() << "nothing thrown";
        } catch (const std::runtime_error& error) {
          ASSERT_STREQ(error.what(), "task 7") << threads << " threads";
        }
      }
    }
  }
}

TEST(TaskPool, aFailureKeepsLaterTasksFromBeginning) {
  const WithThreads with(2);
  std::atomic<int> begun = 0;
  EXPECT_THROW(runTasks(100000, TaskStart::Together,
                        [&](int) {
                          ++begun;
                          throw std::runtime_error("stop");
                        }),
               std::runtime_error);
  EXPECT_LE(begun, 2); // one a thread
}

TEST(TaskPool, tasksMayRunTasks) {
  for (const int threads : kThreadCounts) {
    const WithThreads with(threads);
    std::atomic<int> done = 0;
    runTasks(8, TaskStart::Together, [&](int) {
      runTasks(8, TaskStart::Together, [&](int) { runTasks(8, TaskStart::FirstAlone, [&](int) { ++done; }); });
    });
    EXPECT_EQ(done, 8 * 8 * 8);
  }
}

TEST(TaskPool, severalThreadsMayRunTasksWhileTheirNumberChanges) {
  const WithThreads with(4);
  std::atomic<int> done = 0;
  std::vector<std::thread> callers;
  for (int caller = 0; caller < 4; ++caller) {
    callers.emplace_back([&] {
      for (int repeat = 0; repeat < 200; ++repeat)
        runTasks(10, TaskStart::Together, [&](int) { ++done; });
    });
  }
  for (int repeat = 0; repeat < 100; ++repeat)
    setThreadCount(1 + repeat % 5);
  for (std::thread& caller : callers)
    caller.join();
  EXPECT_EQ(done, 4 * 200 * 10);
}

// A thread that is woken to end finds that it need not, and no job either.
TEST(TaskPool, threadsLiveOnWhenTheirNumberIsTakenBackAtOnce) {
  const WithThreads with(4);
  std::atomic<int> done = 0;
  for (int repeat = 0; repeat < 2000; ++repeat) {
    runTasks(4, TaskStart::Together, [&](int) { ++done; });
    setThreadCount(1);
    for (int pause = repeat % 8; pause > 0; --pause)
      std::this_thread::yield();
    setThreadCount(4);
  }
  EXPECT_EQ(done, 4 * 2000);
}

TEST(TaskPool, theNumberIsLimitedAndCanBeTakenBack) {
  const int usual = threadCount();
  EXPECT_GE(usual, 1);
  setThreadCount(3);
  EXPECT_EQ(threadCount(), 3);
  setThreadCount(1000000);
  EXPECT_EQ(threadCount(), kMostThreads);
  setThreadCount(-5);
  EXPECT_EQ(threadCount(), usual);
}

TEST(Spares, areMadeOnlyWhileNoneIsFree) {
  int made = 0;
  Spares<int> spares([&] { return ++made; });
  {
    const auto first = spares.take(), second = spares.take();
    EXPECT_EQ(*first, 1);
    EXPECT_EQ(*second, 2);
  }
  const auto again = spares.take();
  EXPECT_EQ(made, 2);
}

#ifdef Q_OS_UNIX
// The status of a child that is forked to run `body`, which is stopped after some seconds.
int statusOfChild(const std::function<bool()>& body) {
  const pid_t child = fork();
  if (child == 0) {
    alarm(20); // a child that hangs is ended by the signal
    _exit(body() ? 0 : 1);
  }
  int status = -1;
  waitpid(child, &status, 0);
  return status;
}

bool canRunTasks() {
  std::atomic<int> done = 0;
  for (int repeat = 0; repeat < 20; ++repeat)
    runTasks(100, TaskStart::Together, [&](int) { ++done; });
  return done == 2000;
}

TEST(TaskPool, aForkedChildHasThreadsOfItsOwn) {
#ifdef __SANITIZE_THREAD__
  GTEST_SKIP() << "ThreadSanitizer lets no thread be made in a child of a process with threads";
#endif
  const WithThreads with(2);
  ASSERT_EQ(meetingThreads().size(), 2U); // so that there is a thread which the child lacks
  EXPECT_EQ(statusOfChild([] { return canRunTasks() && meetingThreads().size() == 2; }), 0);
}

TEST(TaskPool, aChildThatIsForkedWhileTasksAreUnderWayRunsTasks) {
#ifdef __SANITIZE_THREAD__
  GTEST_SKIP() << "ThreadSanitizer lets no thread be made in a child of a process with threads";
#endif
  const WithThreads with(4);
  std::atomic<bool> stops = false;
  std::thread busy([&] {
    while (!stops)
      runTasks(20, TaskStart::Together, [](int) {});
  });
  for (int repeat = 0; repeat < 20; ++repeat)
    EXPECT_EQ(statusOfChild(canRunTasks), 0);
  stops = true;
  busy.join();
}
#endif

} // namespace
} // namespace xov
