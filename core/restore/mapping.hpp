// What the placeholders of a masked document stand for: the way back.
//
// An entity may be spelled in several ways and has one placeholder. So the mapping
// knows which spelling stood at which occurrence: by their order, and, for a text
// that is edited, by what stands around them.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "core/anonymization_core.hpp"
#include "core/restore/placeholder_reader.hpp"

namespace core::restore {

// One place of the masked document at which a placeholder stands.
struct Occurrence {
  std::size_t surface = 0;  // which of the surfaces of its entry
  // What stands around it, up to CONTEXT_LENGTH characters; see Contexts.
  std::u32string before = {};
  std::u32string after = {};

  bool operator==(const Occurrence&) const = default;
};

inline constexpr std::size_t CONTEXT_LENGTH = 16;
// How the end of a line reads in a context.
inline constexpr char32_t LINE_END = U'\n';

struct Entry {
  std::u32string placeholder;
  // What stood in its place, in the order of the text, each spelling once. One that
  // itself is written like the placeholder is text of the document, which was kept.
  std::vector<std::u32string> surfaces;
  std::size_t count = 0;  // of all occurrences
  // In the order of the text; none where there is one surface.
  std::vector<Occurrence> occurrences;

  // The surface for an occurrence of which nothing is known: the first one that is
  // no text of the document.
  std::size_t first_surface() const;

  bool operator==(const Entry&) const = default;
};

struct Mapping {
  std::string language;        // "zh" or "en"
  std::string masked_sha256;   // of the masked output, in lower-case hexadecimal; may be empty
  std::vector<Entry> entries;  // in the order of the text
  // The encoding of the document, "gb18030", where the bytes of a masked or edited text
  // may not show it; else empty.
  std::string encoding = {};

  bool operator==(const Mapping&) const = default;
};

// Of which entries a mapping holds the occurrences.
enum class Occurrences {
  WHERE_NEEDED,  // of those with several surfaces
  ALL,
};

// The mapping of a masked document, without the hash. Text of the document that is
// written like a placeholder is in it, with itself as its surface.
Mapping make_mapping(const anonymization::AnonymizedDocument& document,
                     Occurrences occurrences = Occurrences::WHERE_NEEDED);

// Finds the entry that a placeholder belongs to. It must not outlive the entries.
class EntryIndex {
 public:
  static constexpr std::size_t NONE = static_cast<std::size_t>(-1);
  static constexpr std::size_t SEVERAL = static_cast<std::size_t>(-2);

  explicit EntryIndex(const std::vector<Entry>& entries);

  // NONE if there is no such entry; SEVERAL if more than one has the placeholder,
  // spelled otherwise.
  std::size_t find(std::u32string_view text, const WrittenPlaceholder& placeholder) const;
  // Whether a placeholder of this tag is in the mapping.
  bool has_tag(std::u32string_view tag) const { return tags_.contains(std::u32string(tag)); }

 private:
  std::unordered_map<std::u32string, std::size_t> by_spelling_;
  std::unordered_map<std::u32string, std::size_t> by_key_;
  std::unordered_set<std::u32string> tags_;
};

// A placeholder in a text, and its entry.
struct FoundPlaceholder {
  WrittenPlaceholder written;
  std::size_t entry = EntryIndex::NONE;  // or SEVERAL
};
std::vector<FoundPlaceholder> find_placeholders(std::u32string_view text, const EntryIndex& index);

// What stands around the placeholders of a text, in a form that edits of its layout
// leave alone: without white space and invisible characters, narrow, in lower case,
// placeholders as the mapping spells them; each of those counts as one character. The
// ends of lines that are not empty are kept, as line feeds, and do not count.
class Contexts {
 public:
  // All of them outlive it.
  Contexts(std::u32string_view text, const std::vector<FoundPlaceholder>& placeholders,
           const std::vector<Entry>& entries);

  // Of number `i` of the placeholders.
  std::u32string before(std::size_t i) const;
  std::u32string after(std::size_t i) const;

 private:
  std::u32string spelled(std::size_t from, std::size_t to) const;

  const std::vector<Entry>& entries_;
  std::vector<char32_t> items_;
  std::vector<std::size_t> item_of_;  // by placeholder
};

}  // namespace core::restore
