// Analyzers that ask a service.
#include <chrono>

#include "python/binding/bindings.hpp"
#include "python/binding/convert.hpp"
#include "python/binding/native_call.hpp"

#include "core/errors.hpp"
#include "core/remote/presidio_remote_analyzer.hpp"

namespace binding {
namespace {

using core::remote::PresidioOptions;
using core::remote::PresidioRemoteAnalyzer;

std::chrono::milliseconds time_of(double seconds, const char* what) {
  constexpr double MOST = 86'400;
  if (!(seconds > 0 && seconds <= MOST)) {
    throw core::ValueError(std::string(what) + " must be a number of seconds, at most a day");
  }
  return std::chrono::ceil<std::chrono::milliseconds>(std::chrono::duration<double>(seconds));
}

std::shared_ptr<PresidioRemoteAnalyzer> make_presidio(py::handle url, double connect_timeout,
                                                      double read_timeout, double total_timeout,
                                                      int retries, double score_threshold) {
  PresidioOptions options;
  options.http.connect_timeout = time_of(connect_timeout, "connect_timeout");
  options.http.read_timeout = time_of(read_timeout, "read_timeout");
  options.http.total_timeout = time_of(total_timeout, "total_timeout");
  options.http.retries = retries;
  options.score_threshold = score_threshold;
  return std::make_shared<PresidioRemoteAnalyzer>(utf8_of(url, "url"), std::move(options));
}

py::list analyze_by_service(const PresidioRemoteAnalyzer& self, py::handle text,
                            py::handle language) {
  const auto document = text_of(text);
  const auto code = utf8_of(language, "language");
  return list_of(without_gil([&] { return self.analyze(document, code); }));
}

py::list analyze_batch(const PresidioRemoteAnalyzer& self, py::handle texts, py::handle language) {
  const auto documents = texts_of(texts, "texts");
  const std::vector<std::u32string_view> views(documents.begin(), documents.end());
  const auto code = utf8_of(language, "language");
  py::list out;
  for (auto& hits : without_gil([&] { return self.analyze_batch(views, code); })) {
    out.append(list_of(std::move(hits)));
  }
  return out;
}

py::list entities_of_service(const PresidioRemoteAnalyzer& self, py::handle language) {
  const auto code = utf8_of(language, "language");
  return list_of(without_gil([&] { return self.get_supported_entities(code); }));
}

}  // namespace

void bind_remote(py::module_& m) {
  py::class_<PresidioRemoteAnalyzer, std::shared_ptr<PresidioRemoteAnalyzer>> presidio(
      m, "PresidioRemoteAnalyzer",
      "The analyzer service of Presidio, over HTTP. In a RefiningAnalyzer its hits are\n"
      "repaired as those of the embedded analyzer are.");
  define_init(
      presidio, py::init(&make_presidio), "Times in seconds. Asks nothing of the service yet.",
      py::arg("url"), py::arg("connect_timeout") = 10.0, py::arg("read_timeout") = 120.0,
      py::arg("total_timeout") = 600.0, py::arg("retries") = 2, py::arg("score_threshold") = 0.4);
  define_method(presidio, "analyze", analyze_by_service,
                "The hits as a list of RecognizerResult. An ExternalError tells address and\n"
                "reason, never a part of the text.",
                py::arg("text"), py::arg("language"));
  define_method(presidio, "analyze_batch", analyze_batch,
                "The hits of each text, with as few requests as possible.", py::arg("texts"),
                py::arg("language"));
  define_method(presidio, "get_supported_entities", entities_of_service,
                "The kinds that the service finds in texts of the language, sorted.",
                py::arg("language"));
}

}  // namespace binding
