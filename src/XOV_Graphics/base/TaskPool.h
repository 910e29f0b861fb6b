#pragma once

#include <chrono>
#include <cstdint>
#include <functional>

namespace xov {

/// When other threads join in.
enum class TaskStart : std::uint8_t {
  /// Task 0 is done first, alone and on the calling thread; the others see what it did. While what is left is not
  /// going to take long, judged by those that are done, nobody else is woken up for it.
  FirstAlone,
  /// All at once: tasks that are known to take longer than it takes to wake a thread up.
  Together,
};

/// Does task(0) to task(count - 1), each once, on up to threadCount() threads of which the calling one is the first,
/// and returns when all are done. Tasks are begun in their order; they must not depend on each other.
///
/// A task that throws keeps those that have not begun from beginning; once the others are over, what the first one of
/// them threw is thrown on. A task may run tasks itself. Several threads may call at the same time, and a forked
/// child may, too: who calls does everything alone where no other thread is at hand.
void runTasks(int count, TaskStart start, const std::function<void(int)>& task);

/// What runTasks() begins FirstAlone with: task(0), task(1) and so on, one or more, on the calling thread until all
/// are done, or until what is left is going to take 100 µs or longer, judged by the mean of those that are done.
/// Returns how many are done. `now` tells the time of a steady clock.
int runTasksAlone(int count, const std::function<void(int)>& task,
                  const std::function<std::chrono::nanoseconds()>& now);

/// Does part(from, to) for stretches that hold each of 0 <= i < count once, `together` of them at a time, as tasks
/// that start with FirstAlone.
void runParts(std::int64_t count, std::int64_t together,
              const std::function<void(std::int64_t from, std::int64_t to)>& part);

} // namespace xov
