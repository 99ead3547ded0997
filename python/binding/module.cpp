// The extension module core.anonymization_core.
#include "python/binding/bindings.hpp"
#include "python/binding/native_call.hpp"

PYBIND11_MODULE(anonymization_core, m) {
  // define() writes signatures that Python itself can read.
  pybind11::options options;
  options.disable_function_signatures();
  m.doc() =
      "Anonymizes contracts and business documents in Chinese and English.\n\n"
      "A text in, the masked text and the mapping that leads back out. Every function\n"
      "and constant of the core is here; the modules core.anonymization.*, core.nlp.*\n"
      "and so on hold the same objects by topic. Offsets are indices of the str.";
  binding::prepare_for_the_end();
  binding::bind_errors(m);
  binding::bind_results(m);
  binding::bind_recognition(m);
  binding::bind_analysis(m);
  binding::bind_remote(m);
  binding::bind_entry_points(m);
  binding::bind_replacements(m);
  binding::bind_propagation(m);
  binding::bind_cleanup(m);
  binding::bind_identity(m);
  binding::bind_siblings(m);
  binding::bind_settings(m);
  binding::bind_paths(m);
  binding::bind_restore(m);
  binding::bind_constants(m);
}
