#include "core/matter/matter_file.hpp"

#include <algorithm>
#include <optional>

#include "core/restore/mapping_json.hpp"
#include "core/text/utf8.hpp"

namespace core::matter {
namespace {

using restore::damaged;
using restore::find_member;
using restore::MappingError;
using restore::ordered_json;
using text::encode_utf8;

constexpr auto DOCUMENTS = "documents";
constexpr auto DOCUMENT = "document";

ordered_json json_of(const MatterEntry& entry) {
  auto surfaces = ordered_json::array();
  for (const auto& surface : entry.surfaces) surfaces.push_back(encode_utf8(surface));
  auto occurrences = ordered_json::array();
  for (const auto& [document, occurrence] : entry.occurrences) {
    occurrences.push_back({{DOCUMENT, document},
                           {"surface", occurrence.surface},
                           {"before", encode_utf8(occurrence.before)},
                           {"after", encode_utf8(occurrence.after)}});
  }
  return {{"placeholder", encode_utf8(entry.placeholder)},
          {"surfaces", std::move(surfaces)},
          {"count", entry.occurrences.size()},
          {"occurrences", std::move(occurrences)}};
}

std::vector<DocumentRecord> documents_of(const ordered_json& list) {
  if (!list.is_array()) damaged("\"documents\" is no list");
  std::vector<DocumentRecord> documents;
  for (const auto& document : list) {
    const auto what = "document " + std::to_string(documents.size() + 1);
    if (!document.is_object()) damaged(what + ": no object");
    DocumentRecord record{restore::string_member(document, "name", what),
                          restore::string_member(document, "language", what),
                          restore::string_member(document, "masked_sha256", what)};
    if (find_member(document, "encoding") != nullptr) {
      record.encoding = restore::string_member(document, "encoding", what);
    }
    documents.push_back(std::move(record));
  }
  return documents;
}

// `mapping` was read from the same object.
std::vector<MatterEntry> entries_of(const ordered_json& object, const restore::Mapping& mapping,
                                    std::size_t documents) {
  std::vector<MatterEntry> entries;
  entries.reserve(mapping.entries.size());
  for (std::size_t i = 0; i < mapping.entries.size(); ++i) {
    const auto& source = mapping.entries[i];
    const auto what = "entry " + std::to_string(i + 1);
    MatterEntry entry{source.placeholder, source.surfaces, {}};
    if (source.occurrences.empty()) damaged(what + ": no occurrences");
    const auto& list = object["entries"][i]["occurrences"];
    for (std::size_t k = 0; k < source.occurrences.size(); ++k) {
      if (documents == 0) damaged(what + ": of no document");
      entry.occurrences.push_back(
          {restore::number_member(list[k], DOCUMENT, documents - 1, what), source.occurrences[k]});
    }
    entries.push_back(std::move(entry));
  }
  return entries;
}

// The mapping that the document had by itself.
restore::Mapping mapping_of(const Matter& matter, std::size_t document) {
  const auto& record = matter.documents()[document];
  restore::Mapping mapping{record.language, record.masked_sha256, {}, record.encoding};
  for (const auto& entry : matter.entries()) {
    restore::Entry own{entry.placeholder, {}, 0, {}};
    std::unordered_map<std::size_t, std::size_t> place;
    for (const auto& [of, occurrence] : entry.occurrences) {
      if (of != document) continue;
      const auto [at, is_new] = place.try_emplace(occurrence.surface, own.surfaces.size());
      if (is_new) own.surfaces.push_back(entry.surfaces[occurrence.surface]);
      own.occurrences.push_back({at->second, occurrence.before, occurrence.after});
    }
    own.count = own.occurrences.size();
    if (own.surfaces.size() == 1) own.occurrences.clear();
    if (own.count > 0) mapping.entries.push_back(std::move(own));
  }
  return mapping;
}

}  // namespace

std::string write_matter(const Matter& matter) {
  auto documents = ordered_json::array();
  for (const auto& document : matter.documents()) {
    ordered_json record = {{"name", document.name},
                           {"language", document.language},
                           {"masked_sha256", document.masked_sha256}};
    if (!document.encoding.empty()) record["encoding"] = document.encoding;
    documents.push_back(std::move(record));
  }
  auto entries = ordered_json::array();
  for (const auto& entry : matter.entries()) entries.push_back(json_of(entry));
  const auto& first = matter.documents();
  return restore::dump_mapping_object({{"format", restore::MAPPING_FORMAT},
                                       {"version", restore::MAPPING_VERSION},
                                       {"language", first.empty() ? "zh" : first[0].language},
                                       {DOCUMENTS, std::move(documents)},
                                       {"entries", std::move(entries)}});
}

Matter read_matter(std::string_view bytes) {
  const auto mapping = restore::read_mapping(bytes);
  const auto object = restore::parse_mapping_object(bytes);
  const auto* list = find_member(object, DOCUMENTS);
  if (list == nullptr) throw MappingError("the mapping of a single document, no matter");
  auto documents = documents_of(*list);
  auto entries = entries_of(object, mapping, documents.size());
  return {std::move(documents), std::move(entries)};
}

restore::Mapping read_mapping_of(std::string_view bytes, std::string_view masked_sha256) {
  auto mapping = restore::read_mapping(bytes);
  if (find_member(restore::parse_mapping_object(bytes), DOCUMENTS) == nullptr) return mapping;
  const auto matter = read_matter(bytes);
  std::optional<restore::Mapping> own;
  for (std::size_t d = 0; d < matter.documents().size(); ++d) {
    if (matter.documents()[d].masked_sha256 != masked_sha256) continue;
    auto found = mapping_of(matter, d);
    if (own && own->entries != found.entries) return mapping;
    own = std::move(found);
  }
  return own ? std::move(*own) : mapping;
}

}  // namespace core::matter
