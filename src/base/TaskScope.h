// SPDX-License-Identifier: MIT
// Owns running root tasks that nobody addresses one by one. Make it the LAST field of the object whose `this`
// the tasks use: fields are destroyed in reverse, so the tasks go first. Main thread only.
#pragma once

#include "base/Task.h"

#include <vector>

namespace lumenvale {

class TaskScope {
public:
    TaskScope() = default;
    TaskScope(const TaskScope&) = delete;
    TaskScope& operator=(const TaskScope&) = delete;

    /// Takes the task and runs it up to its first wait.
    void spawn(Task<> task)
    {
        std::erase_if(tasks, [](const Task<>& each) { return each.done(); });
        const Task<>& started = tasks.emplace_back(std::move(task));
        started.start();
    }

    /// Destroys every task of this scope.
    void cancelAll() { std::vector<Task<>>().swap(tasks); }

private:
    std::vector<Task<>> tasks;
};

/// A task handle that is empty, running or done: what the stores keep for each kind of work.
class TaskHandle {
public:
    /// Replaces what was running (which is cancelled) by `task`, and starts it.
    void run(Task<> next)
    {
        task.reset();
        task.emplace(std::move(next));
        task->start();
    }
    void cancel() { task.reset(); }
    bool isRunning() const { return task && !task->done(); }

private:
    std::optional<Task<>> task;
};

} // namespace lumenvale
