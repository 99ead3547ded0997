#include "cli/document_masker.hpp"

#include <ostream>

#include "core/anonymization/placeholders.hpp"
#include "core/anonymization/span_index.hpp"
#include "core/nlp/other_scripts.hpp"
#include "core/restore/restore.hpp"
#include "core/restore/sealed_mapping.hpp"
#include "documents/leftovers.hpp"

namespace cli {
namespace {

namespace restore = core::restore;
using core::anonymization::RecognizerResult;

// What a mapping does not lead back to is told at once.
void check_mapping(const core::anonymization::AnonymizedDocument& document,
                   const restore::Mapping& mapping, std::u32string_view original,
                   std::ostream& err) {
  const auto findings = restore::find_restorable(document.text, mapping);
  if (restore::restored_text(document.text, mapping, findings) != original) {
    err << "veildoc: warning: the mapping does not lead back to the whole document\n";
  }
}

// Names of the matter's other documents where nothing was found.
void add_known_hits(std::u32string_view text, const core::matter::Matter& matter,
                    std::vector<RecognizerResult>& hits) {
  auto known = matter.known_hits(text);
  if (known.empty()) return;
  std::vector<core::anonymization::Replacement> found;
  found.reserve(hits.size());
  for (const auto& hit : hits) found.push_back({hit.start, hit.end, {}});
  const auto taken = core::anonymization::SpanIndex::of(found);
  std::erase_if(known, [&](const auto& hit) { return taken.overlaps(hit.start, hit.end); });
  hits.insert(hits.end(), known.begin(), known.end());
}

}  // namespace

MaskedDocument DocumentMasker::mask(documents::Document& source,
                                    const core::anonymization::Overrides& overrides,
                                    const Wanted& wanted, std::ostream& err,
                                    const std::function<void()>& analyzed) const {
  const auto& text = source.text();
  auto [analysis_text, language] = analysis_input(text, options_);
  auto hits = analyzer_.analyze(analysis_text, language);
  if (matter_ != nullptr) add_known_hits(text, *matter_, hits);
  analyzed();
  MaskedDocument out;
  if (wanted.checks) out.unmaskable = core::nlp::unmaskable_names(analysis_text, hits).size();
  analysis_text = {};
  auto masked = mask_unlabelled(text, options_, KnownHits(hits), overrides);
  source.set_kept([&, of = masked.language] {
    return documents::kept_on_purpose(text, hits, of, options_.profile, overrides);
  });
  if (matter_ != nullptr) {
    masked = matter_->numbered(std::move(masked), text);
    if (wanted.matter) {
      out.matter =
          restore::make_mapping(documents::as_written(masked, source), restore::Occurrences::ALL);
    }
  }
  masked = labelled(std::move(masked), options_);
  std::u32string original;
  if (wanted.checks && wanted.mapping) original = source.written(masked).original;
  if (wanted.bytes) out.bytes = source.write(masked);
  out.document = documents::as_written(std::move(masked), source);
  source.set_kept({});  // what it refers to ends here
  if (!wanted.mapping && !out.matter) return out;
  const auto hash = restore::sha256_hex(out.bytes);
  if (out.matter) {
    out.matter->masked_sha256 = hash;
    out.matter->encoding = source.encoding();
  }
  if (wanted.mapping) {
    out.mapping = restore::make_mapping(out.document);
    out.mapping->masked_sha256 = hash;
    out.mapping->encoding = source.encoding();
    if (wanted.checks && wanted.bytes) check_mapping(out.document, *out.mapping, original, err);
  }
  return out;
}

void warn_of_placeholders(std::u32string_view text, std::ostream& err) {
  const auto count = core::anonymization::find_numbered_placeholders(text).size();
  if (count == 0) return;
  err << "veildoc: warning: the document already holds " << count
      << (count == 1 ? " text that reads" : " texts that read")
      << " like a placeholder; kept as it is\n";
}

// A name without one Latin letter, digit or common ideograph is taken for a blank
// to fill in.
void warn_of_unmaskable(std::size_t count, std::ostream& err) {
  if (count == 0) return;
  err << "veildoc: warning: " << count << (count == 1 ? " name" : " names")
      << " in other scripts (Cyrillic, kana, hangul, rare ideographs) cannot be masked;"
         " veildoc analyze --explain tells where\n";
}

}  // namespace cli
