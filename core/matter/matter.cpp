#include "core/matter/matter.hpp"

#include <algorithm>
#include <optional>
#include <unordered_set>

#include "core/anonymization/placeholders.hpp"
#include "core/masked_stretches.hpp"
#include "core/text/multi_pattern.hpp"
#include "core/text/unicode.hpp"
#include "core/text/utf8.hpp"

namespace core::matter {
namespace {

using anonymization::AnonymizedDocument;
using anonymization::NumberedPlaceholder;
using anonymization::Offset;

constexpr std::size_t NO_ENTITY = static_cast<std::size_t>(-1);

std::u32string owner_key(std::string_view tag, std::u32string_view key) {
  return text::decode_utf8(tag).append(U"#").append(key);
}

bool has_name(const std::vector<EntityName>& names, std::u32string_view key) {
  return std::any_of(names.begin(), names.end(), [&](const auto& name) { return name.key == key; });
}

void add_name(std::vector<EntityName>& names, EntityName name) {
  if (name.key.empty()) return;
  const auto known = std::find_if(names.begin(), names.end(),
                                  [&](const auto& other) { return other.key == name.key; });
  // Acme and Acme Limited have one key: the full one tells more.
  if (known == names.end()) {
    names.push_back(std::move(name));
  } else if (name.decisive && !known->decisive) {
    *known = std::move(name);
  }
}

// What was written over a surface, without the wording of an amount.
struct Bare {
  std::optional<NumberedPlaceholder> placeholder;
  std::u32string_view surface;
  std::size_t before = 0;
  std::size_t behind = 0;
};

Bare bare_of(std::u32string_view written, std::u32string_view surface) {
  const auto bare = anonymization::without_wording(written, surface);
  return {anonymization::parse_numbered_placeholder(bare.placeholder),
          surface.substr(bare.before, surface.size() - bare.before - bare.behind), bare.before,
          bare.behind};
}

}  // namespace

bool Matter::Entity::has_decisive_name() const {
  return std::any_of(names.begin(), names.end(), [](const auto& name) { return name.decisive; });
}

// The numbers of one document's entities in the matter.
class Matter::Numbering {
 public:
  explicit Numbering(const Matter& matter) : matter_(matter) {}

  void add(std::u32string_view written, std::u32string_view surface) {
    const auto bare = bare_of(written, surface);
    if (!bare.placeholder) return;
    const auto& [tag, number] = *bare.placeholder;
    const auto [found, is_new] = place_.try_emplace({tag, number}, entities_.size());
    if (is_new) entities_.push_back({tag, number, {}});
    // A name with many mentions is read once.
    if (!seen_.insert(text::decode_utf8(tag + std::to_string(number) + "#").append(bare.surface))
             .second) {
      return;
    }
    add_name(entities_[found->second].names, entity_name(tag, bare.surface));
  }

  void settle();

  std::u32string renumbered(std::u32string_view written, std::u32string_view surface) const;

 private:
  std::size_t by_decisive_name(const Entity& entity) const;
  std::size_t by_short_name(const Entity& entity) const;
  bool may_be(const Entity& entity, const EntityName& name, const Entity& known) const;
  bool take(std::size_t i, std::size_t known);

  const Matter& matter_;
  std::vector<Entity> entities_;  // with the numbers of the document
  std::map<std::pair<std::string, std::int64_t>, std::size_t> place_;
  std::unordered_set<std::u32string> seen_;
  std::unordered_set<std::size_t> taken_;
  std::vector<std::int64_t> numbers_;  // by entity; 0: none yet
};

std::size_t Matter::Numbering::by_decisive_name(const Entity& entity) const {
  for (const auto& name : entity.names) {
    if (!name.decisive) continue;
    const auto owners = matter_.owners_.find(owner_key(entity.tag, name.key));
    if (owners == matter_.owners_.end()) continue;
    for (const auto owner : owners->second) {
      const auto& known = matter_.entities_[owner];
      if (!taken_.contains(owner) && !contradict(entity.names, known.names)) return owner;
    }
  }
  return NO_ENTITY;
}

// Whether `entity` may be `known`, as both go by `name`, which tells little.
bool Matter::Numbering::may_be(const Entity& entity, const EntityName& name,
                               const Entity& known) const {
  const auto fits = [&](const std::vector<EntityName>& names) {
    return std::any_of(names.begin(), names.end(), [&](const EntityName& decisive) {
      return decisive.decisive && is_short_form(entity.tag, name, decisive);
    });
  };
  const bool has = entity.has_decisive_name();
  const bool knows = known.has_decisive_name();
  if (has && knows) return false;
  if (!has && !knows) return true;
  return fits(has ? entity.names : known.names);
}

// One that goes by short names alone is preferred; else there must be a single one.
std::size_t Matter::Numbering::by_short_name(const Entity& entity) const {
  for (const auto& name : entity.names) {
    if (name.decisive) continue;
    const auto owners = matter_.owners_.find(owner_key(entity.tag, name.key));
    if (owners == matter_.owners_.end()) continue;
    for (const auto owner : owners->second) {
      const auto& known = matter_.entities_[owner];
      if (!known.has_decisive_name() && !taken_.contains(owner) && may_be(entity, name, known)) {
        return owner;
      }
    }
    const auto single = owners->second.front();
    if (owners->second.size() == 1 && !taken_.contains(single) &&
        may_be(entity, name, matter_.entities_[single])) {
      return single;
    }
  }
  return NO_ENTITY;
}

bool Matter::Numbering::take(std::size_t i, std::size_t known) {
  if (known == NO_ENTITY) return false;
  taken_.insert(known);
  numbers_[i] = matter_.entities_[known].number;
  return true;
}

void Matter::Numbering::settle() {
  numbers_.assign(entities_.size(), 0);
  // In the order of the document's numbers, so that those of the first document stay.
  std::vector<std::size_t> open;
  for (const auto& [number, i] : place_) {
    if (!take(i, by_decisive_name(entities_[i]))) open.push_back(i);
  }
  std::erase_if(open, [this](std::size_t i) { return take(i, by_short_name(entities_[i])); });
  std::map<std::string, std::int64_t, std::less<>> last = matter_.last_number_;
  for (const auto i : open) numbers_[i] = ++last[entities_[i].tag];
}

std::u32string Matter::Numbering::renumbered(std::u32string_view written,
                                             std::u32string_view surface) const {
  const auto bare = bare_of(written, surface);
  if (!bare.placeholder) return std::u32string(written);
  const auto found = place_.find({bare.placeholder->tag, bare.placeholder->number});
  if (found == place_.end()) return std::u32string(written);
  std::u32string out(written.substr(0, bare.before));
  out += anonymization::format_numbered_placeholder(bare.placeholder->tag, numbers_[found->second]);
  return out.append(written.substr(written.size() - bare.behind));
}

Matter::Matter(std::vector<DocumentRecord> documents, std::vector<MatterEntry> entries)
    : documents_(std::move(documents)), entries_(std::move(entries)) {
  for (std::size_t i = 0; i < entries_.size(); ++i) {
    entry_by_placeholder_.emplace(entries_[i].placeholder, i);
    index(entries_[i], 0);
  }
}

AnonymizedDocument Matter::numbered(AnonymizedDocument document,
                                    std::u32string_view original) const {
  Numbering numbering(*this);
  for (const auto& p : document.placements) {
    numbering.add(text::slice(document.text, p.start, p.end), p.surface);
  }
  for (const auto& r : document.replacements) {
    numbering.add(r.placeholder, text::slice(original, r.start, r.end));
  }
  for (const auto& m : document.mapping) numbering.add(m.placeholder, m.surface);
  numbering.settle();

  anonymization::MaskedText masked(document.text);
  std::vector<std::u32string> written;
  written.reserve(document.placements.size());
  std::vector<anonymization::Edit> edits;
  for (const auto& p : document.placements) {
    written.push_back(numbering.renumbered(text::slice(document.text, p.start, p.end), p.surface));
    edits.push_back({p.start, p.end, written.back()});
  }
  masked.write(edits);
  for (std::size_t i = 0; i < document.placements.size(); ++i) {
    document.placements[i].start = masked.placements()[i].start;
    document.placements[i].end = masked.placements()[i].end;
  }
  document.text = masked.take_text();
  for (auto& r : document.replacements) {
    r.placeholder = numbering.renumbered(r.placeholder, text::slice(original, r.start, r.end));
  }
  for (auto& m : document.mapping) {
    m.placeholder = numbering.renumbered(m.placeholder, m.surface);
  }
  return document;
}

// Whether the entry's occurrences in document `d` have the surfaces that `entry` has.
bool Matter::has_surfaces(const restore::Entry& entry, std::size_t d) const {
  const auto found = entry_by_placeholder_.find(entry.placeholder);
  if (found == entry_by_placeholder_.end()) return false;
  const auto& known = entries_[found->second];
  auto next = known.occurrences.begin();
  for (const auto& occurrence : entry.occurrences) {
    next = std::find_if(next, known.occurrences.end(),
                        [d](const auto& candidate) { return candidate.document == d; });
    if (next == known.occurrences.end()) return false;
    if (known.surfaces[next->occurrence.surface] != entry.surfaces[occurrence.surface]) {
      return false;
    }
    ++next;
  }
  return true;
}

bool Matter::holds(const DocumentRecord& record, const restore::Mapping& mapping) const {
  for (std::size_t d = 0; d < documents_.size(); ++d) {
    if (documents_[d].masked_sha256 != record.masked_sha256) continue;
    if (std::all_of(mapping.entries.begin(), mapping.entries.end(),
                    [&](const auto& entry) { return has_surfaces(entry, d); })) {
      return true;
    }
  }
  return false;
}

void Matter::add(DocumentRecord record, const restore::Mapping& mapping) {
  if (holds(record, mapping)) return;
  const auto number = documents_.size();
  documents_.push_back(std::move(record));
  for (const auto& entry : mapping.entries) {
    const auto [found, is_new] =
        entry_by_placeholder_.try_emplace(entry.placeholder, entries_.size());
    if (is_new) entries_.push_back({entry.placeholder, {}, {}});
    auto& known = entries_[found->second];
    const auto first_new = known.surfaces.size();
    std::unordered_map<std::u32string_view, std::size_t> place;
    for (std::size_t i = 0; i < first_new; ++i) place.emplace(known.surfaces[i], i);
    std::vector<std::size_t> surfaces;
    for (const auto& surface : entry.surfaces) {
      const auto at = place.find(surface);
      surfaces.push_back(at == place.end() ? known.surfaces.size() : at->second);
      if (at == place.end()) known.surfaces.push_back(surface);
    }
    for (auto occurrence : entry.occurrences) {
      occurrence.surface = surfaces[occurrence.surface];
      known.occurrences.push_back({number, std::move(occurrence)});
    }
    index(known, first_new);
  }
}

// Text of a document that reads like the placeholder is no name.
void Matter::index(const MatterEntry& entry, std::size_t first_surface) {
  const auto parsed = anonymization::parse_numbered_placeholder(entry.placeholder);
  if (!parsed) return;
  const auto own = restore::placeholder_key(entry.placeholder);
  for (auto i = first_surface; i < entry.surfaces.size(); ++i) {
    if (restore::placeholder_key(entry.surfaces[i]) == own) continue;
    const auto [found, is_new] =
        entity_by_number_.try_emplace({parsed->tag, parsed->number}, entities_.size());
    if (is_new) entities_.push_back({parsed->tag, parsed->number, {}});
    auto& last = last_number_[parsed->tag];
    last = std::max(last, parsed->number);
    auto name = entity_name(parsed->tag, entry.surfaces[i]);
    if (name.key.empty()) continue;
    auto& names = entities_[found->second].names;
    if (!has_name(names, name.key)) {
      owners_[owner_key(parsed->tag, name.key)].push_back(found->second);
    }
    add_name(names, std::move(name));
  }
}

std::vector<anonymization::RecognizerResult> Matter::known_hits(std::u32string_view text) const {
  constexpr std::size_t SHORTEST = 3;
  constexpr double SCORE = 0.85;
  std::vector<std::u32string_view> surfaces;
  std::vector<std::string_view> types;
  for (const auto& entity : entities_) {
    const bool is_person = entity.tag == anonymization::tag::NAME;
    if (!is_person && entity.tag != anonymization::tag::ORG) continue;
    for (const auto& name : entity.names) {
      if (!name.decisive || name.surface.size() < SHORTEST) continue;
      surfaces.emplace_back(name.surface);
      types.push_back(is_person ? anonymization::entity_type::PERSON
                                : anonymization::entity_type::ORGANIZATION);
    }
  }
  std::vector<anonymization::RecognizerResult> hits;
  if (surfaces.empty()) return hits;
  const auto is_word = [&](std::size_t at) { return text::is_ascii_alnum(text[at]); };
  text::MultiPattern(surfaces).scan(text, [&](const text::MultiPattern::Hit& hit) {
    const bool inside_left = hit.start > 0 && is_word(hit.start) && is_word(hit.start - 1);
    const bool inside_right = hit.end < text.size() && is_word(hit.end - 1) && is_word(hit.end);
    if (inside_left || inside_right) return;
    hits.push_back({std::string(types[hit.pattern]), static_cast<Offset>(hit.start),
                    static_cast<Offset>(hit.end), SCORE});
  });
  return hits;
}

}  // namespace core::matter
