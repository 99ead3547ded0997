// One document, from its bytes to all that is written of it.
#pragma once

#include <functional>
#include <iosfwd>
#include <memory>
#include <optional>
#include <string>

#include "cli/masking.hpp"
#include "core/matter/matter.hpp"
#include "core/restore/mapping.hpp"
#include "documents/document.hpp"

namespace cli {

// What is made beside the masked document.
struct Wanted {
  bool bytes = true;
  bool mapping = false;
  bool matter = false;  // a mapping with all occurrences
  bool checks = true;   // what there is to warn of
};

struct MaskedDocument {
  // As it was written.
  core::anonymization::AnonymizedDocument document;
  std::string bytes;
  std::optional<core::restore::Mapping> mapping;
  std::optional<core::restore::Mapping> matter;
  std::size_t unmaskable = 0;  // names in other scripts
};

class DocumentMasker {
 public:
  // All of them outlive it; without a matter the document has numbers of its own.
  DocumentMasker(const MaskingOptions& options, const GuardedAnalyzer& analyzer,
                 const core::matter::Matter* matter)
      : options_(options), analyzer_(analyzer), matter_(matter) {}

  // `analyzed` is called when the first half of the work is done. `err` gets
  // warnings. Throws Failure and core::Error.
  MaskedDocument mask(
      documents::Document& source, const core::anonymization::Overrides& overrides,
      const Wanted& wanted, std::ostream& err, const std::function<void()>& analyzed = [] {}) const;

 private:
  const MaskingOptions& options_;
  const GuardedAnalyzer& analyzer_;
  const core::matter::Matter* matter_;
};

// Warnings of a document, before it is masked and behind it.
void warn_of_placeholders(std::u32string_view text, std::ostream& err);
void warn_of_unmaskable(std::size_t count, std::ostream& err);

}  // namespace cli
