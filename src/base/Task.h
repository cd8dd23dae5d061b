// SPDX-License-Identifier: MIT
// A lazily started coroutine whose frame is owned by exactly one object.
//
// Ownership is cancellation. The owner of the Task (a parent coroutine, or a TaskHandle in the object whose
// `this` the coroutine uses) destroys the frame when it goes away, and every awaiter withdraws its
// pending callback in its destructor. Code after a `co_await` therefore runs only while its owner lives.
// A task may drop its own handle while it runs: it then goes no further than its next `co_await`. It must
// not destroy the object that it works on.
//
// Main thread only. Errors are values; an exception that leaves a task ends the program. Tasks that await
// finished work in a long row use stack in builds without optimisation; loops must wait for a clock or a bus.
//
// GCC 12 destroys a capturing lambda or a braced temporary twice when it stands in the same full expression
// as `co_await`: give it a name first. No `co_await` inside `?:`, a condition or a test macro.
#pragma once

#include <concepts>
#include <coroutine>
#include <exception>
#include <optional>
#include <type_traits>
#include <utility>

namespace lumenvale {

template <typename T>
class Task;

namespace detail {

/// What a root task and the tasks it awaits share.
struct TaskState {
    std::coroutine_handle<> root; ///< destroyed by the task itself once it is abandoned
    bool running = false;         ///< one of the frames is on the stack
    bool abandoned = false;       ///< the handle went away while running
};

/// The awaiter names the coroutine to continue with, instead of returning to the caller.
template <typename Awaiter, typename Promise>
concept TransfersControl = requires(Awaiter awaiter, std::coroutine_handle<Promise> waiter)
{
    std::coroutine_handle<>(awaiter.await_suspend(waiter));
};

struct PromiseBase {
    struct FinalAwaiter {
        bool await_ready() const noexcept { return false; }
        template <typename Promise>
        std::coroutine_handle<> await_suspend(std::coroutine_handle<Promise> finished) const noexcept
        {
            PromiseBase& promise = finished.promise();
            if (promise.parent)
                return promise.parent;
            promise.own.running = false;
            if (promise.own.abandoned)
                finished.destroy();
            return std::noop_coroutine();
        }
        void await_resume() const noexcept {}
    };

    /// Wraps every awaiter, so that the state knows whether a frame is on the stack.
    template <typename Awaiter>
    struct Tracked {
        Awaiter awaiter;
        TaskState* state;

        // NOLINTNEXTLINE(clang-analyzer-core.NullDereference): the analyzer loses the pointer in the frame
        bool await_ready() { return !state->abandoned && awaiter.await_ready(); }
        template <typename Promise>
        std::coroutine_handle<> await_suspend(std::coroutine_handle<Promise> waiter)
        {
            if (state->abandoned) {
                state->root.destroy(); // with this awaiter; nothing of the frame may be used from here on
                return std::noop_coroutine();
            }
            state->running = false;
            if constexpr (TransfersControl<Awaiter, Promise>) {
                return awaiter.await_suspend(waiter);
            } else {
                static_assert(std::is_void_v<decltype(awaiter.await_suspend(waiter))>);
                awaiter.await_suspend(waiter);
                return std::noop_coroutine();
            }
        }
        decltype(auto) await_resume()
        {
            state->running = true;
            return awaiter.await_resume();
        }
    };

    std::suspend_always initial_suspend() const noexcept { return {}; }
    FinalAwaiter final_suspend() const noexcept { return {}; }
    void unhandled_exception() const noexcept { std::terminate(); }

    template <typename Awaitable>
    auto await_transform(Awaitable&& awaitable) noexcept
    {
        if constexpr (requires { std::forward<Awaitable>(awaitable).operator co_await(); })
            return Tracked<decltype(std::forward<Awaitable>(awaitable).operator co_await())>{
                std::forward<Awaitable>(awaitable).operator co_await(), state};
        else
            return Tracked<Awaitable&&>{std::forward<Awaitable>(awaitable), state};
    }

    TaskState own;
    TaskState* state = &own;
    std::coroutine_handle<> parent;
};

template <typename T>
struct Promise : PromiseBase {
    Task<T> get_return_object() noexcept;
    void return_value(T value) { result.emplace(std::move(value)); }
    T take() { return std::move(*result); }

    std::optional<T> result;
};

template <>
struct Promise<void> : PromiseBase {
    Task<void> get_return_object() noexcept;
    void return_void() const noexcept {}
    void take() const noexcept {}
};

} // namespace detail

template <typename T = void>
class [[nodiscard]] Task {
public:
    using promise_type = detail::Promise<T>;
    using Handle = std::coroutine_handle<promise_type>;

    struct Awaiter {
        Handle child;
        bool await_ready() const noexcept { return false; }
        template <typename Parent>
        std::coroutine_handle<> await_suspend(std::coroutine_handle<Parent> parent) const noexcept
        {
            child.promise().parent = parent;
            child.promise().state = parent.promise().state;
            child.promise().state->running = true;
            return child;
        }
        T await_resume() const { return child.promise().take(); }
    };

    explicit Task(Handle handle) noexcept : frame(handle) { frame.promise().own.root = frame; }
    Task(Task&& other) noexcept : frame(std::exchange(other.frame, nullptr)) {}
    Task& operator=(Task&& other) noexcept
    {
        std::swap(frame, other.frame);
        return *this;
    }
    Task(const Task&) = delete;
    Task& operator=(const Task&) = delete;
    ~Task()
    {
        if (!frame)
            return;
        if (frame.promise().own.running)
            frame.promise().own.abandoned = true;
        else
            frame.destroy();
    }

    /// True once the coroutine has returned.
    bool done() const noexcept { return frame.done(); }

    /// Runs the coroutine up to its first wait. Call it once, and only on a task that no other task awaits.
    void start() const
    {
        frame.promise().own.running = true;
        frame.resume();
    }

    /// Starts the task and waits for its result; the awaiting task's handle then cancels both.
    Awaiter operator co_await() && noexcept { return Awaiter{frame}; }

private:
    Handle frame;
};

template <typename T>
Task<T> detail::Promise<T>::get_return_object() noexcept
{
    return Task<T>(std::coroutine_handle<Promise>::from_promise(*this));
}

inline Task<void> detail::Promise<void>::get_return_object() noexcept
{
    return Task<void>(std::coroutine_handle<Promise>::from_promise(*this));
}

/// Owns a root task that is running, done or not there. Make it the LAST field of the object whose `this` the task
/// uses: fields are destroyed in reverse, so the task goes first.
class TaskHandle {
public:
    /// Cancels what was running and starts `next`.
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
