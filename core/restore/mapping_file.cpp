#include "core/restore/mapping_file.hpp"

#include <algorithm>
#include <limits>
#include <unordered_set>

#include "core/restore/mapping_json.hpp"
#include "core/text/utf8.hpp"

namespace core::restore {
namespace {

using text::decode_utf8;
using text::encode_utf8;

constexpr int INDENT = 1;
constexpr std::size_t SHA256_DIGITS = 64;
constexpr std::size_t MANY = std::numeric_limits<std::int32_t>::max();

ordered_json json_of(const Entry& entry) {
  auto surfaces = ordered_json::array();
  for (const auto& surface : entry.surfaces) surfaces.push_back(encode_utf8(surface));
  ordered_json object = {{"placeholder", encode_utf8(entry.placeholder)},
                         {"surfaces", std::move(surfaces)},
                         {"count", entry.count}};
  if (entry.occurrences.empty()) return object;
  auto occurrences = ordered_json::array();
  for (const auto& occurrence : entry.occurrences) {
    occurrences.push_back({{"surface", occurrence.surface},
                           {"before", encode_utf8(occurrence.before)},
                           {"after", encode_utf8(occurrence.after)}});
  }
  object["occurrences"] = std::move(occurrences);
  return object;
}

const ordered_json& array_member(const ordered_json& object, const char* name,
                                 const std::string& what) {
  const auto* member = find_member(object, name);
  if (member == nullptr || !member->is_array()) damaged(what + ": no list \"" + name + "\"");
  return *member;
}

std::vector<std::u32string> surfaces_of(const ordered_json& object, const std::string& what) {
  std::vector<std::u32string> surfaces;
  for (const auto& surface : array_member(object, "surfaces", what)) {
    if (!surface.is_string()) damaged(what + ": a surface is no string");
    surfaces.push_back(decode_utf8(surface.get_ref<const std::string&>()));
  }
  if (surfaces.empty()) damaged(what + ": no surface");
  return surfaces;
}

Occurrence occurrence_of(const ordered_json& object, std::size_t surfaces,
                         const std::string& what) {
  if (!object.is_object()) damaged(what + ": an occurrence is no object");
  return {number_member(object, "surface", surfaces - 1, what),
          decode_utf8(string_member(object, "before", what)),
          decode_utf8(string_member(object, "after", what))};
}

Entry entry_of(const ordered_json& object, const std::string& what) {
  if (!object.is_object()) damaged(what + ": no object");
  Entry entry;
  entry.placeholder = decode_utf8(string_member(object, "placeholder", what));
  if (entry.placeholder.empty()) damaged(what + ": no placeholder");
  entry.surfaces = surfaces_of(object, what);
  if (find_member(object, "count") != nullptr) {
    entry.count = number_member(object, "count", MANY, what);
  }
  if (find_member(object, "occurrences") == nullptr) return entry;
  for (const auto& occurrence : array_member(object, "occurrences", what)) {
    entry.occurrences.push_back(occurrence_of(occurrence, entry.surfaces.size(), what));
  }
  if (entry.occurrences.size() != entry.count) damaged(what + ": occurrences are missing");
  return entry;
}

std::string sha256_of(const ordered_json& object) {
  if (find_member(object, "masked_sha256") == nullptr) return {};
  auto hash = string_member(object, "masked_sha256", "the mapping");
  const bool good = hash.size() == SHA256_DIGITS &&
                    hash.find_first_not_of("0123456789abcdef") == std::string::npos;
  if (!good) damaged("masked_sha256 is no hash");
  return hash;
}

}  // namespace

const ordered_json* find_member(const ordered_json& object, const char* name) {
  const auto member = object.find(name);
  return member == object.end() ? nullptr : &*member;
}

std::string string_member(const ordered_json& object, const char* name, const std::string& what) {
  const auto* member = find_member(object, name);
  if (member == nullptr || !member->is_string()) damaged(what + ": no string \"" + name + "\"");
  return member->get<std::string>();
}

std::size_t number_member(const ordered_json& object, const char* name, std::size_t most,
                          const std::string& what) {
  const auto* member = find_member(object, name);
  const bool good =
      member != nullptr && member->is_number_unsigned() && member->get<std::uint64_t>() <= most;
  if (!good) damaged(what + ": \"" + name + "\" is no such number");
  return member->get<std::size_t>();
}

ordered_json parse_mapping_object(std::string_view bytes) {
  auto object = ordered_json::parse(bytes, nullptr, false);
  if (object.is_discarded()) throw MappingError("no mapping file of veildoc, or a damaged one");
  const auto* format = object.is_object() ? find_member(object, "format") : nullptr;
  if (format == nullptr || !format->is_string() ||
      format->get_ref<const std::string&>() != MAPPING_FORMAT) {
    throw MappingError("no mapping file of veildoc");
  }
  const auto version = number_member(object, "version", MANY, "the mapping");
  if (version > MAPPING_VERSION) {
    throw MappingError("made by a newer veildoc: version " + std::to_string(version) +
                       " of the format, and this one reads " + std::to_string(MAPPING_VERSION));
  }
  if (version < 1) damaged("no version");
  return object;
}

std::string dump_mapping_object(const ordered_json& object) {
  return object.dump(INDENT, ' ', false, ordered_json::error_handler_t::replace) + "\n";
}

ordered_json entries_json(const std::vector<Entry>& entries) {
  auto list = ordered_json::array();
  for (const auto& entry : entries) list.push_back(json_of(entry));
  return list;
}

std::string write_mapping(const Mapping& mapping) {
  ordered_json object = {
      {"format", MAPPING_FORMAT}, {"version", MAPPING_VERSION}, {"language", mapping.language}};
  if (!mapping.masked_sha256.empty()) object["masked_sha256"] = mapping.masked_sha256;
  if (!mapping.encoding.empty()) object["encoding"] = mapping.encoding;
  object["entries"] = entries_json(mapping.entries);
  return dump_mapping_object(object);
}

Mapping read_mapping(std::string_view bytes) {
  const auto object = parse_mapping_object(bytes);
  if (find_member(object, "sealed") != nullptr) {
    throw MappingError("sealed: it takes a passphrase to read it");
  }
  Mapping mapping{string_member(object, "language", "the mapping"), sha256_of(object), {}, {}};
  if (find_member(object, "encoding") != nullptr) {
    mapping.encoding = string_member(object, "encoding", "the mapping");
  }
  std::unordered_set<std::u32string> seen;
  for (const auto& entry : array_member(object, "entries", "the mapping")) {
    const std::string what = "entry " + std::to_string(mapping.entries.size() + 1);
    mapping.entries.push_back(entry_of(entry, what));
    if (!seen.insert(mapping.entries.back().placeholder).second) {
      damaged(what + ": its placeholder stands twice");
    }
  }
  return mapping;
}

}  // namespace core::restore
