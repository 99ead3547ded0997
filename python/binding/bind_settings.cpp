// What an application may set. Functions and values that Python code puts in the
// place of ours are looked up in their modules at each call.
#include "python/binding/bindings.hpp"
#include "python/binding/convert.hpp"
#include "python/binding/native_call.hpp"

#include "core/anonymization/avs_workgroup_party.hpp"
#include "core/anonymization/llm_decider.hpp"
#include "core/anonymization/rules/helpers.hpp"
#include "core/anonymization/rules/org_context.hpp"
#include "core/anonymization/strategy.hpp"
#include "core/errors.hpp"

namespace binding {
namespace {

namespace anonymization = core::anonymization;
using anonymization::StrategyStep;
using anonymization::StrategySteps;

// A name in its module: what stands there now, or nothing if it is still ours.
class Replaceable {
 public:
  // `ours` lives as long as the process: hooks are asked on any thread, at any time.
  void bind(const char* module, const char* name, const py::object& ours) {
    module_ = module;
    name_ = name;
    ours_ = ours.inc_ref();
  }

  std::optional<py::object> replacement() const {
    py::object now = py::module_::import(module_).attr(name_);
    if (now.is(ours_)) return std::nullopt;
    return now;
  }

 private:
  const char* module_ = nullptr;
  const char* name_ = nullptr;
  py::handle ours_;
};

Replaceable& decider() {
  static Replaceable instance;
  return instance;
}

Replaceable& country_setting() {
  static Replaceable instance;
  return instance;
}

Replaceable& joiners() {
  static Replaceable instance;
  return instance;
}

std::vector<Replacement> ask_decider(std::u32string_view text,
                                     const std::vector<Replacement>& spans) {
  const WithGil gil;
  try {
    const auto filter = decider().replacement();
    if (!filter) throw core::Error("no keep/mask decider is set");
    return replacements_of((*filter)(str_of(text), list_of(spans)));
  } catch (const py::error_already_set& error) {
    note_exit(error);
    throw;
  }
}

std::optional<bool> ask_country_setting() {
  const WithGil gil;
  const auto setting = country_setting().replacement();
  if (!setting) return std::nullopt;
  const int answer = PyObject_IsTrue((*setting)().ptr());
  if (answer < 0) throw py::error_already_set();
  return answer == 1;
}

std::optional<std::vector<std::u32string>> ask_joiners() {
  const WithGil gil;
  const auto sequences = joiners().replacement();
  if (!sequences) return std::nullopt;
  return texts_of(*sequences, "_DOCX_PARA_JOINER_SEQUENCES");
}

// --- Strategy steps ---

// A step of ours as Python calls it.
struct NativeStep {
  StrategyStep step;
};

py::list run_step(const NativeStep& native, py::handle text, py::handle analysis_text,
                  py::handle results) {
  const auto document = text_of(text);
  const auto analysed = text_of(analysis_text, "analysis_text");
  return list_of(native.step(document, analysed, results_of(results)));
}

// A step as the core calls it.
StrategyStep step_of(const py::object& step) {
  if (py::isinstance<NativeStep>(step)) return py::cast<const NativeStep&>(step).step;
  return [held = hold(step)](std::u32string_view text, std::u32string_view analysis_text,
                             std::vector<RecognizerResult> results) {
    const WithGil gil;
    return results_of((*held)(str_of(text), str_of(analysis_text), list_of(std::move(results))));
  };
}

std::vector<StrategyStep> steps_of(py::handle iterable) {
  std::vector<StrategyStep> out;
  for (const auto& step : elements_of(iterable)) out.push_back(step_of(step));
  return out;
}

std::optional<StrategySteps> ask_strategy(std::string_view profile, std::string_view language) {
  const WithGil gil;
  const auto strategy = py::module_::import("core.anonymization.strategy");
  const py::object steps =
      strategy.attr("_resolve_semantic_strategy_steps")(str_of(profile), str_of(language));
  const auto lists = unpack(steps, 2);
  return StrategySteps{steps_of(lists[0]), steps_of(lists[1])};
}

py::list list_of_steps(const std::vector<StrategyStep>& steps) {
  py::list out;
  for (const auto& step : steps) out.append(py::cast(NativeStep{step}));
  return out;
}

void bind_strategy(py::module_& m) {
  py::class_<NativeStep>(m, "StrategyStep", "A step of a built-in profile.")
      .def("__call__", run_step, py::arg("text"), py::arg("analysis_text"), py::arg("results"),
           "The results that go on.");
  define(
      m, "_resolve_semantic_strategy_steps",
      [](py::handle profile, py::handle language) {
        utf8_or_empty(language, "language");
        const auto steps =
            anonymization::built_in_strategy_steps(utf8_of(profile, "strategy_profile"));
        return py::make_tuple(list_of_steps(steps.before_overlaps),
                              list_of_steps(steps.after_overlaps));
      },
      "The steps of a built-in profile before and after the overlaps are resolved.",
      py::arg("profile"), py::arg("language") = "en");
  anonymization::set_strategy_resolver(ask_strategy);
}

// --- Known parties ---

std::vector<anonymization::KnownParty> parties_of(const py::object& parties) {
  std::vector<anonymization::KnownParty> out;
  const py::object pairs = py::hasattr(parties, "items") ? parties.attr("items")() : parties;
  for (const auto& item : elements_of(pairs)) {
    const auto pair = unpack(item, 2);
    out.push_back({text_of(pair[0], "canonical_key"), texts_of(pair[1], "variants")});
  }
  return out;
}

}  // namespace

void bind_settings(py::module_& m) {
  bind_strategy(m);
  define(
      m, "filter_replacement_spans",
      [](py::handle, py::handle) -> py::object {
        throw core::Error("no keep/mask decider is set");
      },
      "Stands where the application may put its keep/mask decider: a function that takes the\n"
      "text and the list of (start, end, placeholder), and returns those to be masked.",
      py::arg("text"), py::arg("spans"));
  decider().bind("core.anonymization.llm_decider", "filter_replacement_spans",
                 m.attr("filter_replacement_spans"));
  anonymization::set_replacement_span_filter(ask_decider);
  // Ours reads the switch itself: it may be called by what replaced it.
  define(m, "_mask_country_in_geo_background_enabled", anonymization::country_switch_is_on,
         "Whether a country reported as an organization is masked as an address.");
  define(m, "set_mask_country_in_geo_background", anonymization::set_mask_country_in_geo_background,
         "Switches that on or off.", py::arg("enabled"));
  country_setting().bind("core.anonymization.rules.org_context",
                         "_mask_country_in_geo_background_enabled",
                         m.attr("_mask_country_in_geo_background_enabled"));
  anonymization::set_country_setting(ask_country_setting);
  py::list sequences;
  for (const auto joiner : anonymization::DOCX_PARA_JOINER_SEQUENCES) {
    sequences.append(str_of(joiner));
  }
  m.attr("_DOCX_PARA_JOINER_SEQUENCES") = py::tuple(sequences);
  joiners().bind("core.anonymization.rules.helpers", "_DOCX_PARA_JOINER_SEQUENCES",
                 m.attr("_DOCX_PARA_JOINER_SEQUENCES"));
  anonymization::set_joiner_setting(ask_joiners);
  define(
      m, "set_known_parties",
      [](const py::object& parties) { anonymization::set_known_parties(parties_of(parties)); },
      "Replaces the parties that are known by name: {canonical_key: [variant, ...]}.",
      py::arg("parties"));
}

}  // namespace binding
