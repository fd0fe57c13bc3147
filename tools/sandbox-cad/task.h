#pragma once
// A command of the sandbox runs as a coroutine: it asks for its inputs one by
// one and is suspended while the input it needs has not come yet (a pick of
// the user, the next part of a Lisp (command ...)). Task<T> is one such
// coroutine; awaiting a Task runs it and resumes the awaiter when it is done.
// Destroying the outermost Task destroys the whole chain (a cancelled command).
// Write co_await as a statement or an initializer of its own: g++ 12 corrupts
// the frame when it stands inside ?: or behind && and ||.
#include <coroutine>
#include <exception>
#include <optional>
#include <utility>

namespace sandbox {

template <typename T>
class Task;

namespace detail {

struct PromiseBase {
  std::coroutine_handle<> continuation;
  std::suspend_always initial_suspend() noexcept { return {}; }
  struct Final {
    bool await_ready() noexcept { return false; }
    template <typename P>
    std::coroutine_handle<> await_suspend(std::coroutine_handle<P> h) noexcept {
      auto c = h.promise().continuation;
      return c ? c : std::noop_coroutine();
    }
    void await_resume() noexcept {}
  };
  Final final_suspend() noexcept { return {}; }
  void unhandled_exception() { std::terminate(); }
};

}  // namespace detail

template <typename T>
class [[nodiscard]] Task {
 public:
  struct promise_type : detail::PromiseBase {
    std::optional<T> value;
    Task get_return_object() {
      return Task(std::coroutine_handle<promise_type>::from_promise(*this));
    }
    void return_value(T v) { value = std::move(v); }
  };
  using Handle = std::coroutine_handle<promise_type>;

  Task() = default;
  explicit Task(Handle h) : h_(h) {}
  Task(Task&& o) noexcept : h_(std::exchange(o.h_, {})) {}
  Task& operator=(Task&& o) noexcept {
    if (this != &o) {
      reset();
      h_ = std::exchange(o.h_, {});
    }
    return *this;
  }
  ~Task() { reset(); }

  bool await_ready() const noexcept { return false; }
  std::coroutine_handle<> await_suspend(std::coroutine_handle<> awaiter) {
    h_.promise().continuation = awaiter;
    return h_;
  }
  T await_resume() { return std::move(*h_.promise().value); }

  // For the outermost task: run it until it first waits or ends.
  void start() { h_.resume(); }
  bool done() const { return !h_ || h_.done(); }
  void reset() {
    if (h_) h_.destroy();
    h_ = {};
  }

 private:
  Handle h_;
};

template <>
class [[nodiscard]] Task<void> {
 public:
  struct promise_type : detail::PromiseBase {
    Task get_return_object() {
      return Task(std::coroutine_handle<promise_type>::from_promise(*this));
    }
    void return_void() {}
  };
  using Handle = std::coroutine_handle<promise_type>;

  Task() = default;
  explicit Task(Handle h) : h_(h) {}
  Task(Task&& o) noexcept : h_(std::exchange(o.h_, {})) {}
  Task& operator=(Task&& o) noexcept {
    if (this != &o) {
      reset();
      h_ = std::exchange(o.h_, {});
    }
    return *this;
  }
  ~Task() { reset(); }

  bool await_ready() const noexcept { return false; }
  std::coroutine_handle<> await_suspend(std::coroutine_handle<> awaiter) {
    h_.promise().continuation = awaiter;
    return h_;
  }
  void await_resume() {}

  void start() { h_.resume(); }
  bool done() const { return !h_ || h_.done(); }
  void reset() {
    if (h_) h_.destroy();
    h_ = {};
  }

 private:
  Handle h_;
};

}  // namespace sandbox
