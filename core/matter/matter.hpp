// A matter: documents that share their numbers, so that one party has one
// placeholder in all of them, also in those that come later.
//
//   Matter matter;
//   auto document = matter.numbered(anonymize_document(text, analyzer), text);
//   // write the document, then
//   matter.add({.name = "lease.txt"}, restore::make_mapping(document, Occurrences::ALL));
//
// Which of a document's own names are one entity is settled by the document. Across
// documents names are one by their identity key, where
//
//   - a name that tells by itself who is meant (北京华信科技有限公司, an account
//     number) is the same everywhere
//   - a short name of an organization (华信科技) is that of the one organization in the
//     matter that has it and is spelled like it; if there are several, it is none of them
//   - a surname or a title (王经理) is nobody of another document that has more of a name
//   - two entities of one document never get one number
//
// A number that was given is never given to another entity. Linear in the size of the
// document and of the matter.
#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "core/anonymization_core.hpp"
#include "core/matter/entity_names.hpp"
#include "core/restore/mapping.hpp"

namespace core::matter {

struct DocumentRecord {
  std::string name;           // for people
  std::string language;       // "zh" or "en"
  std::string masked_sha256;  // of the masked output
  std::string encoding = {};  // as in a mapping
};

struct MatterOccurrence {
  std::size_t document = 0;
  restore::Occurrence occurrence;

  bool operator==(const MatterOccurrence&) const = default;
};

// A placeholder as format_numbered_placeholder writes it, and all that it stands for.
struct MatterEntry {
  std::u32string placeholder;
  std::vector<std::u32string> surfaces;
  std::vector<MatterOccurrence> occurrences;  // by document, then in the order of the text
};

class Matter {
 public:
  Matter() = default;
  // Occurrences name surfaces of their entry and documents of the list.
  Matter(std::vector<DocumentRecord> documents, std::vector<MatterEntry> entries);

  // The document with the numbers of the matter: those that its entities have, and new
  // ones behind them. `document` is what anonymize_document made of `original`. The
  // matter stays as it is.
  anonymization::AnonymizedDocument numbered(anonymization::AnonymizedDocument document,
                                             std::u32string_view original) const;

  // Takes a numbered document in; `mapping` has all occurrences. One that is in the
  // matter already, with the same surfaces, is left out.
  void add(DocumentRecord record, const restore::Mapping& mapping);

  // Hits for decisive names of organizations and persons of the matter in a text.
  std::vector<anonymization::RecognizerResult> known_hits(std::u32string_view text) const;

  const std::vector<DocumentRecord>& documents() const { return documents_; }
  const std::vector<MatterEntry>& entries() const { return entries_; }

 private:
  struct Entity {
    std::string tag;
    std::int64_t number = 0;
    std::vector<EntityName> names;

    bool has_decisive_name() const;
  };
  class Numbering;

  void index(const MatterEntry& entry, std::size_t first_surface);
  bool has_surfaces(const restore::Entry& entry, std::size_t d) const;
  bool holds(const DocumentRecord& record, const restore::Mapping& mapping) const;

  std::vector<DocumentRecord> documents_;
  std::vector<MatterEntry> entries_;
  std::unordered_map<std::u32string, std::size_t> entry_by_placeholder_;
  std::vector<Entity> entities_;
  std::map<std::pair<std::string, std::int64_t>, std::size_t> entity_by_number_;
  // Tag, "#" and key: the entities that have this name, in the order of the matter.
  std::unordered_map<std::u32string, std::vector<std::size_t>> owners_;
  std::map<std::string, std::int64_t, std::less<>> last_number_;  // by tag
};

}  // namespace core::matter
