// The constants of the rules, as Python values; patterns keep our engine.
#include <memory>

#include "python/binding/bindings.hpp"
#include "python/binding/convert.hpp"

#include "core/anonymization/cleanup/filter_rules.hpp"
#include "core/anonymization/cleanup/overlap.hpp"
#include "core/anonymization/constants.hpp"
#include "core/anonymization/identity/date_money.hpp"
#include "core/anonymization/identity/org_identity.hpp"
#include "core/anonymization/propagation/propagable_surfaces.hpp"
#include "core/anonymization/replacements/span_postprocess.hpp"
#include "core/anonymization/rules/helpers.hpp"
#include "core/errors.hpp"
#include "core/text/unicode.hpp"

namespace binding {
namespace {

namespace anonymization = core::anonymization;
using core::text::Match;
using core::text::Regex;

// A match, and the text that it refers to.
struct FoundMatch {
  std::shared_ptr<const std::u32string> text;
  const Regex* regex;
  Match match;

  std::size_t group(const py::object& group) const {
    if (PyUnicode_Check(group.ptr()) != 0) return regex->group(text_of(group));
    const auto number = py::cast<std::size_t>(group);
    if (number >= Match::MAX_GROUPS) throw py::index_error("no such group");
    return number;
  }
  py::object surface(const py::object& which) const {
    const auto number = group(which);
    if (!match.has(number)) return py::none();
    return str_of(match.text(number));
  }
  py::tuple span(const py::object& which) const {
    const auto number = group(which);
    if (!match.has(number)) return py::make_tuple(-1, -1);
    return py::make_tuple(match.start(number), match.end(number));
  }
};

using Kind = std::optional<Match> (*)(const Regex&, std::u32string_view);

std::optional<Match> search(const Regex& regex, std::u32string_view text) {
  return regex.search(text);
}
std::optional<Match> match_at_start(const Regex& regex, std::u32string_view text) {
  return regex.match(text);
}
std::optional<Match> full_match(const Regex& regex, std::u32string_view text) {
  return regex.full_match(text);
}

template <Kind kind>
py::object find(const Regex& regex, py::handle string) {
  auto text = std::make_shared<const std::u32string>(text_of(string, "string"));
  const auto match = kind(regex, *text);
  if (!match) return py::none();
  return py::cast(FoundMatch{std::move(text), &regex, *match});
}

py::list find_all(const Regex& regex, py::handle string) {
  const auto text = std::make_shared<const std::u32string>(text_of(string, "string"));
  py::list out;
  for (const auto& match : regex.find_all(*text)) {
    out.append(py::cast(FoundMatch{text, &regex, match}));
  }
  return out;
}

void bind_regex(py::module_& m) {
  const auto group = py::arg("group");
  py::class_<FoundMatch>(m, "Match", "One match of a Regex.")
      .def("group", &FoundMatch::surface, group = 0, "The text of a group; None if it has none.")
      .def("span", &FoundMatch::span, group = 0, "(start, end) of a group.")
      .def(
          "start",
          [](const FoundMatch& f, const py::object& g) -> py::object { return f.span(g)[0]; },
          group = 0)
      .def(
          "end",
          [](const FoundMatch& f, const py::object& g) -> py::object { return f.span(g)[1]; },
          group = 0);
  const auto string = py::arg("string");
  py::class_<Regex, std::unique_ptr<Regex, py::nodelete>>(
      m, "Regex", "A pattern of the rules (PCRE2), with the methods of re.Pattern.")
      .def_property_readonly("name", [](const Regex& r) { return str_of(r.name()); })
      .def_property_readonly("pattern", [](const Regex& r) { return str_of(r.pattern()); })
      .def("search", find<search>, string, "The first match anywhere; None without.")
      .def("match", find<match_at_start>, string, "A match at the start; None without.")
      .def("fullmatch", find<full_match>, string, "A match of the whole string; None without.")
      .def(
          "finditer", [](const Regex& r, py::handle s) { return py::iter(find_all(r, s)); }, string,
          "All matches, left to right.")
      .def(
          "sub",
          [](const Regex& r, py::handle repl, py::handle s) {
            return str_of(r.replace_all(text_of(s, "string"), text_of(repl, "repl")));
          },
          py::arg("repl"), string, "Every match replaced by `repl`, taken literally.")
      .def("__repr__", [](const Regex& r) {
        return py::str("<Regex _{} {!r}>").format(str_of(r.name()), str_of(r.pattern()));
      });
}

const Regex* const PATTERNS[] = {&anonymization::RE_FILL_UNDERSCORE_RUN,
                                 &anonymization::RE_SURFACE_HAS_CONTENT,
                                 &anonymization::RE_ZH_ORDINAL_SURFACE,
                                 &anonymization::RE_EN_BARE_MONTH,
                                 &anonymization::RE_DOTTED_SECTION_NUMBER,
                                 &anonymization::RE_PURE_NUMERIC_SURFACE,
                                 &anonymization::RE_CN_PHASE_ORDINAL_NOT_ADDRESS,
                                 &anonymization::RE_IT_PRODUCT_YUN_COMPOUND_NOT_ADDRESS,
                                 &anonymization::RE_JOINER_FRAGMENT_IN_ORG_SPAN,
                                 &anonymization::RE_CN_UPPER_DIGITS_MIX,
                                 &anonymization::RE_PROPAGABLE_ORG_NAME_SUFFIX,
                                 &anonymization::RE_EN_PROPAGABLE_ORG_LEGAL_SUFFIX,
                                 &anonymization::RE_FALSE_ORG_YEAR_SPAN,
                                 &anonymization::RE_FALSE_ORG_OUTLINE_SECTION,
                                 &anonymization::RE_DEFINED_ALIAS_ORG_LEFT,
                                 &anonymization::RE_DEFINED_ALIAS_ORG_TRAILING_CLOSER,
                                 &anonymization::RE_ZH_CONTRACT_FIELD_LABEL,
                                 &anonymization::RE_PARTY_LABELED_COMPANY,
                                 &anonymization::RE_PARTY_LABELED_INSTITUTION,
                                 &anonymization::RE_EN_WRITTEN_CURRENCY_IN_PARENS};

template <class Words>
py::frozenset frozenset_of(const Words& words) {
  py::set out;
  for (const auto word : words) out.add(str_of(word));
  return py::frozenset(out);
}

void bind_words(py::module_& m) {
  m.attr("GENERIC_INSTITUTION_NOUN") = frozenset_of(anonymization::GENERIC_INSTITUTION_NOUN);
  m.attr("_DIRECTION_REGION_WORD_NOT_ADDRESS") =
      frozenset_of(anonymization::DIRECTION_REGION_WORD_NOT_ADDRESS);
  m.attr("_GENERIC_GEO_INFRA_NOUN_NOT_ADDRESS") =
      frozenset_of(anonymization::GENERIC_GEO_INFRA_NOUN_NOT_ADDRESS);
  m.attr("_IT_PRODUCT_COMPOUND_NOT_ADDRESS") =
      frozenset_of(anonymization::IT_PRODUCT_COMPOUND_NOT_ADDRESS);
  m.attr("_CN_ADDRESS_TAIL_CHAR_NOT_ORG") =
      frozenset_of(anonymization::CN_ADDRESS_TAIL_CHAR_NOT_ORG);
  m.attr("_NON_PROPAGABLE_ORG_SURFACE") = frozenset_of(anonymization::NON_PROPAGABLE_ORG_SURFACE);
  m.attr("_NON_PROPAGABLE_LOCATION_SURFACE") =
      frozenset_of(anonymization::NON_PROPAGABLE_LOCATION_SURFACE);
  m.attr("_COVER_LINE_ORG_CONNECTIVES") = frozenset_of(anonymization::COVER_LINE_ORG_CONNECTIVES);
  m.attr("_CONTIGUOUS_ENTITY_TYPES_FOR_NESTED_GUARD") =
      frozenset_of(anonymization::CONTIGUOUS_ENTITY_TYPES_FOR_NESTED_GUARD);
}

}  // namespace

void bind_constants(py::module_& m) {
  bind_regex(m);
  for (const auto* regex : PATTERNS) {
    m.attr(("_" + regex->name()).c_str()) = py::cast(regex, py::return_value_policy::reference);
  }
  bind_words(m);
  m.attr("_AUTO_LANG_CJK_RATIO") = anonymization::AUTO_LANG_CJK_RATIO;
  py::dict tags;
  for (const auto& [type, tag] : anonymization::ENTITY_TO_TAG) tags[str_of(type)] = str_of(tag);
  m.attr("ENTITY_TO_TAG") = tags;
  py::dict priorities;
  for (const auto& [type, priority] : anonymization::entity_overlap_priorities()) {
    priorities[str_of(type)] = priority;
  }
  m.attr("_ENTITY_OVERLAP_PRIORITY") = priorities;
}

}  // namespace binding
