#include <algorithm>

#include "core/anonymization/placeholders.hpp"
#include "core/anonymization_core.hpp"
#include "core/text/unicode.hpp"

namespace core::anonymization {
namespace {

// What was written, with its placeholder as `locale` reads it. The wording of
// an amount holds its placeholder somewhere within.
std::u32string relabelled(std::u32string_view written, std::string_view locale) {
  const auto placeholder = parse_numbered_placeholder(written);
  if (!placeholder) return std::u32string(written);
  return format_numbered_placeholder(placeholder->tag, placeholder->number, locale);
}

// Whether `written` may read otherwise for `locale`: only two tags have labels.
bool is_label_of_another(std::u32string_view written, std::string_view locale) {
  const auto body = written.substr(written.empty() ? 0 : 1);
  const auto begins = [&](std::u32string_view word) { return body.starts_with(word); };
  return locale == "zh" ? begins(U"ORG") || begins(U"ADDRESS") : begins(U"机构") || begins(U"地址");
}

bool is_labelled_for(const AnonymizedDocument& document, std::string_view locale) {
  const auto none = [&](const auto& list) {
    return std::none_of(list.begin(), list.end(), [&](const auto& entry) {
      return is_label_of_another(entry.placeholder, locale);
    });
  };
  const auto& placements = document.placements;
  return none(document.replacements) && none(document.mapping) &&
         std::none_of(placements.begin(), placements.end(), [&](const auto& p) {
           return is_label_of_another(text::slice(document.text, p.start, p.end), locale);
         });
}

}  // namespace

AnonymizedDocument with_labels(AnonymizedDocument document, std::string_view locale) {
  if (is_labelled_for(document, locale)) return document;
  MaskedText text(document.text);
  std::vector<std::u32string> written;
  written.reserve(document.placements.size());
  std::vector<Edit> edits;
  for (const auto& p : document.placements) {
    written.push_back(relabelled(text::slice(document.text, p.start, p.end), locale));
    edits.push_back({p.start, p.end, written.back()});
  }
  text.write(edits);
  for (std::size_t i = 0; i < document.placements.size(); ++i) {
    auto& p = document.placements[i];
    const auto& moved = text.placements()[i];
    p.start = moved.start;
    p.end = moved.end;
  }
  document.text = text.take_text();
  for (auto& r : document.replacements) r.placeholder = relabelled(r.placeholder, locale);
  for (auto& m : document.mapping) m.placeholder = relabelled(m.placeholder, locale);
  return document;
}

}  // namespace core::anonymization
