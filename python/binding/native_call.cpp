#include "python/binding/native_call.hpp"

#include <atomic>
#include <utility>

#include <cxxabi.h>
#include <pthread.h>
#include <unistd.h>

namespace binding {
namespace {

// Threads that are in the core, without the lock.
std::atomic<int> threads_in_core = 0;
std::atomic<bool> is_ending = false;
thread_local bool is_ending_thread = false;
thread_local bool is_in_core = false;

[[noreturn]] void wait_for_the_end() {
  while (true) ::pause();
}

void enter_core() {
  ++threads_in_core;
  if (is_ending && !is_ending_thread) {
    --threads_in_core;
    wait_for_the_end();
  }
  is_in_core = true;
}

void leave_core() {
  is_in_core = false;
  --threads_in_core;
}

// Runs what may be ended by the interpreter, as pthread_exit does it.
template <class Action>
void or_wait_for_the_end(const Action& action) {
  try {
    action();
  } catch (const abi::__forced_unwind&) {
    wait_for_the_end();
  }
}

std::optional<py::error_already_set>& noted_exit() {
  thread_local std::optional<py::error_already_set> noted;
  return noted;
}

void leave_the_core() {
  is_ending_thread = true;
  is_ending = true;
  const py::gil_scoped_release release;
  while (threads_in_core > 0) ::usleep(1000);
}

}  // namespace

WithGil::WithGil() : was_in_core_(is_in_core) {
  if (was_in_core_) leave_core();
  or_wait_for_the_end([&] { gil_.emplace(); });
}

WithGil::~WithGil() {
  gil_.reset();
  if (was_in_core_) enter_core();
}

WithoutGil::WithoutGil() : thread_(PyEval_SaveThread()) { enter_core(); }

WithoutGil::~WithoutGil() {
  leave_core();
  or_wait_for_the_end([&] { PyEval_RestoreThread(thread_); });
}

void prepare_for_the_end() {
  // A fork has none of the threads that its parent has in the core.
  ::pthread_atfork(nullptr, nullptr, [] { threads_in_core = 0; });
  py::module_::import("atexit").attr("register")(py::cpp_function(leave_the_core));
}

Held hold(py::object object) {
  return {new py::object(std::move(object)), [](py::object* held) {
            if (Py_IsInitialized() != 0) {
              const WithGil gil;
              delete held;
            } else {
              held->release();
              delete held;
            }
          }};
}

void note_exit(const py::error_already_set& error) {
  if (!error.matches(PyExc_Exception)) noted_exit() = error;
}

std::optional<py::error_already_set> take_noted_exit() {
  return std::exchange(noted_exit(), std::nullopt);
}

}  // namespace binding
