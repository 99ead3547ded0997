// The parts of the module; each adds its functions, classes or constants.
#pragma once

#include <pybind11/pybind11.h>

namespace binding {

void bind_errors(pybind11::module_& m);
void bind_results(pybind11::module_& m);
void bind_entry_points(pybind11::module_& m);
void bind_replacements(pybind11::module_& m);
void bind_propagation(pybind11::module_& m);
void bind_cleanup(pybind11::module_& m);
void bind_identity(pybind11::module_& m);
void bind_siblings(pybind11::module_& m);
void bind_settings(pybind11::module_& m);
void bind_paths(pybind11::module_& m);
void bind_recognition(pybind11::module_& m);
void bind_analysis(pybind11::module_& m);
void bind_remote(pybind11::module_& m);
void bind_restore(pybind11::module_& m);
void bind_constants(pybind11::module_& m);

}  // namespace binding
