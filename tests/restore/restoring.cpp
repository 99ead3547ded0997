#include "tests/restore/restoring.hpp"

#include "tests/support/notation.hpp"

namespace test {

namespace anonymization = core::anonymization;
namespace restore = core::restore;

MaskedDocument mask(std::string_view marked) {
  const auto parsed = parse_replacements(marked);
  anonymization::MaskedText masked(parsed.text);
  masked.splice_right_to_left(anonymization::edits_of(parsed.replacements));
  anonymization::AnonymizedDocument document;
  document.language = "zh";
  document.placements = masked.take_placements();
  document.text = masked.take_text();
  return {u8(parsed.text), u8(document.text), restore::make_mapping(document)};
}

std::string restored(std::string_view edited, const restore::Mapping& mapping) {
  const auto text = u32(edited);
  return u8(restore::restored_text(text, mapping, restore::find_restorable(text, mapping)));
}

std::string outcomes(std::string_view edited, const restore::Mapping& mapping) {
  std::string out;
  for (const auto& finding : restore::find_restorable(u32(edited), mapping)) {
    out += "ROFUAB"[static_cast<std::size_t>(finding.outcome)];
  }
  return out;
}

}  // namespace test
