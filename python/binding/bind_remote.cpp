// Analyzers and recognizers that ask a service.
#include <chrono>

#include "python/binding/analyzers.hpp"
#include "python/binding/bindings.hpp"
#include "python/binding/convert.hpp"
#include "python/binding/native_call.hpp"

#include "core/errors.hpp"
#include "core/nlp/hanlp_client.hpp"
#include "core/nlp/hanlp_recognizer.hpp"
#include "core/nlp/remote_recognizer.hpp"
#include "core/remote/presidio_remote_analyzer.hpp"

namespace binding {
namespace {

using core::nlp::HanlpRecognizer;
using core::remote::HttpOptions;
using core::remote::PresidioOptions;
using core::remote::PresidioRemoteAnalyzer;

std::chrono::milliseconds time_of(double seconds, const char* what) {
  constexpr double MOST = 86'400;
  if (!(seconds > 0 && seconds <= MOST)) {
    throw core::ValueError(std::string(what) + " must be a number of seconds, at most a day");
  }
  return std::chrono::ceil<std::chrono::milliseconds>(std::chrono::duration<double>(seconds));
}

// How long to wait, in seconds, and how often to try again.
struct Patience {
  double connect_timeout;
  double read_timeout;
  double total_timeout;
  int retries;

  HttpOptions options() const {
    HttpOptions out;
    out.connect_timeout = time_of(connect_timeout, "connect_timeout");
    out.read_timeout = time_of(read_timeout, "read_timeout");
    out.total_timeout = time_of(total_timeout, "total_timeout");
    out.retries = retries;
    return out;
  }
};

std::shared_ptr<PresidioRemoteAnalyzer> make_presidio(py::handle url, double connect_timeout,
                                                      double read_timeout, double total_timeout,
                                                      int retries, double score_threshold) {
  PresidioOptions options;
  options.http = Patience{connect_timeout, read_timeout, total_timeout, retries}.options();
  options.score_threshold = score_threshold;
  return std::make_shared<PresidioRemoteAnalyzer>(utf8_of(url, "url"), std::move(options));
}

core::nlp::HanlpFallback fallback_of(const py::object& fallback) {
  if (fallback.is_none()) return {};
  return [held = hold(fallback)](const std::string& reason) {
    const WithGil gil;
    (*held)(str_of(reason));
  };
}

// Of a service if there is an address, of the embedded finders otherwise.
std::shared_ptr<HanlpRecognizer> make_hanlp(py::handle language, const py::object& entities,
                                            py::handle url, py::handle key, py::handle task,
                                            const py::object& fallback, double connect_timeout,
                                            double read_timeout, double total_timeout,
                                            int retries) {
  const auto code = utf8_of(language, "supported_language");
  auto kinds = entities_or_embedded(entities, code);
  core::nlp::HanlpOptions options;
  options.http = Patience{connect_timeout, read_timeout, total_timeout, retries}.options();
  options.key = utf8_of(key, "key");
  options.task = utf8_of(task, "task");
  if (url.is_none()) {
    if (!options.key.empty() || !fallback.is_none()) {
      throw core::ValueError(
          "HanlpRecognizer: key and fallback are for a service, which needs url");
    }
    return std::make_shared<HanlpRecognizer>(code, std::move(kinds));
  }
  auto client =
      std::make_shared<const core::nlp::HanlpClient>(utf8_of(url, "url"), std::move(options));
  return std::make_shared<HanlpRecognizer>(code, std::move(kinds), std::move(client),
                                           fallback_of(fallback));
}

void bind_hanlp(py::module_& m) {
  py::class_<HanlpRecognizer, EntityRecognizer, std::shared_ptr<HanlpRecognizer>> recognizer(
      m, "HanlpRecognizer",
      "Reports the names in Chinese texts: those that the NLP engine found or, with a url,\n"
      "those that a service of HanLP finds.");
  define_init(recognizer, py::init(&make_hanlp),
              "Of these kinds, or of all that the embedded engine finds. Times in seconds. Where\n"
              "a fallback is given, the embedded finder serves when the service does not answer,\n"
              "and fallback(reason) is called.",
              py::arg("supported_language") = "zh", py::arg("supported_entities") = py::none(),
              py::arg("url") = py::none(), py::arg("key") = "", py::arg("task") = "ner/msra",
              py::arg("fallback") = py::none(), py::arg("connect_timeout") = 10.0,
              py::arg("read_timeout") = 120.0, py::arg("total_timeout") = 600.0,
              py::arg("retries") = 2);
}

// A service, ours or any object with analyze(text=..., language=...), for each language.
py::list make_remote_recognizers(const py::object& analyzer, py::handle name,
                                 py::handle supported_entities) {
  std::shared_ptr<const Analyzer> asked;
  if (py::isinstance<PresidioRemoteAnalyzer>(analyzer)) {
    asked = py::cast<std::shared_ptr<PresidioRemoteAnalyzer>>(analyzer);
  } else {
    asked = std::make_shared<const PythonAnalyzer>(analyzer);
  }
  const auto kinds = supported_entities.is_none()
                         ? core::remote::presidio_entities()
                         : utf8s_of(supported_entities, "supported_entities");
  return list_of(core::nlp::remote_recognizers(asked, utf8_of(name, "name"), kinds));
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
  bind_hanlp(m);
  define(m, "remote_recognizers", make_remote_recognizers,
         "Recognizers, one a language, that ask an analyzer outside; for the registry of an\n"
         "engine, which then refines their hits as its own.",
         py::arg("analyzer"), py::arg("name") = PresidioRemoteAnalyzer::NAME,
         py::arg("supported_entities") = py::none());
}

}  // namespace binding
