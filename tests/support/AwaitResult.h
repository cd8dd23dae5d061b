// SPDX-License-Identifier: MIT
// Runs a task to its end on a hand-turned main thread and returns its result.
#pragma once

#include "base/Task.h"
#include "support/ManualMainThread.h"

#include <optional>
#include <utility>

namespace lumenvale {

namespace detail {
template <typename T>
Task<> storeResult(Task<T> task, std::optional<T>& result)
{
    result.emplace(co_await std::move(task));
}
} // namespace detail

template <typename T>
T awaitResult(ManualMainThread& mainThread, Task<T> task)
{
    std::optional<T> result;
    const Task<> root = detail::storeResult(std::move(task), result);
    root.start();
    mainThread.runUntil([&] { return root.done(); });
    return std::move(*result);
}

} // namespace lumenvale
