// Where the application and its models lie. Whether it is packaged the
// interpreter tells: sys.frozen, and sys.executable as the program.
#include "python/binding/bindings.hpp"
#include "python/binding/convert.hpp"
#include "python/binding/paths.hpp"
#include <pybind11/stl/filesystem.h>

#include "core/anonymization/analyzer/model_path.hpp"
#include "core/app_paths.hpp"

namespace binding {
namespace {

namespace fs = std::filesystem;
namespace anonymization = core::anonymization;

py::object path_or_none(const std::optional<fs::path>& path) {
  return path ? py::cast(*path) : py::none();
}

}  // namespace

void read_frozen_flag() {
  const auto sys = py::module_::import("sys");
  const py::object frozen = py::getattr(sys, "frozen", py::bool_(false));
  std::optional<fs::path> executable;
  if (PyObject_IsTrue(frozen.ptr()) == 1) executable = py::cast<fs::path>(sys.attr("executable"));
  core::set_packaged_executable(std::move(executable));
}

void bind_paths(py::module_& m) {
  define(
      m, "resolve_spacy_model_path",
      [](py::handle lang_code, py::handle default_package_name) {
        read_frozen_flag();
        return str_of(anonymization::resolve_spacy_model_path(
            utf8_of(lang_code, "lang_code"),
            utf8_of(default_package_name, "default_package_name")));
      },
      "The name or the directory of the model for a language: named by the environment, beside\n"
      "a packaged application, or `default_package_name`.",
      py::arg("lang_code"), py::arg("default_package_name"));
  define(
      m, "_frozen_app_dir",
      [] {
        read_frozen_flag();
        return path_or_none(anonymization::_frozen_app_dir());
      },
      "The folder of the packaged application's executable; None if it is not packaged.");
  define(
      m, "_is_spacy_model_dir",
      [](const fs::path& path) { return anonymization::_is_spacy_model_dir(path); },
      "Whether the path is a folder with meta.json and config.cfg.", py::arg("path"));
  define(
      m, "_resolve_nested_spacy_model_dir",
      [](const fs::path& path) {
        return path_or_none(anonymization::_resolve_nested_spacy_model_dir(path));
      },
      "The path itself or the first folder directly below it that is a model; None without.",
      py::arg("path"));
  define(
      m, "resolve_adv_util_dir",
      [](const fs::path& exe_dir) { return core::resolve_adv_util_dir(exe_dir); },
      "The folder of further resources beside the executable.", py::arg("exe_dir"));
  define(
      m, "resolve_app_root",
      [] {
        read_frozen_flag();
        return core::resolve_app_root();
      },
      "The folder that the application was installed into.");
}

}  // namespace binding
