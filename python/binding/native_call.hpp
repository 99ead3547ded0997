// Calls into the core without the GIL, and out of it with the GIL.
#pragma once

#include <memory>
#include <optional>

#include <pybind11/pybind11.h>

namespace binding {

namespace py = pybind11;

// A reference that may be dropped on any thread, also when Python is gone.
using Held = std::shared_ptr<const py::object>;
Held hold(py::object object);

// The interpreter lock, held or let go as long as one of these lives.
//
// When the interpreter ends, it ends every thread that asks for the lock, and the
// constants of the core go; C++ code survives neither. So daemon threads are waited
// for until they are out of the core, and stay out: they wait until the process is gone.
class WithGil {
 public:
  WithGil();
  ~WithGil();
  WithGil(const WithGil&) = delete;
  WithGil& operator=(const WithGil&) = delete;

 private:
  bool was_in_core_;
  std::optional<py::gil_scoped_acquire> gil_;
};
class WithoutGil {
 public:
  WithoutGil();
  ~WithoutGil();
  WithoutGil(const WithoutGil&) = delete;
  WithoutGil& operator=(const WithoutGil&) = delete;

 private:
  PyThreadState* thread_;
};

// To be called once, when the module is loaded.
void prepare_for_the_end();

// An exception that ends the program (KeyboardInterrupt, SystemExit) and was
// thrown where the core takes every failure for an answer: a decider that fails
// leaves the spans alone. It is noted, and thrown when the core returns.
void note_exit(const py::error_already_set& error);
std::optional<py::error_already_set> take_noted_exit();

// What `work` returns; other threads run Python code meanwhile.
template <class Work>
auto without_gil(const Work& work) {
  take_noted_exit();  // of a call that ended with another error
  auto result = [&] {
    const WithoutGil release;
    return work();
  }();
  if (const auto exit = take_noted_exit()) throw *exit;
  return result;
}

}  // namespace binding
