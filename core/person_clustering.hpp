// Which spellings name one person.
//
// Offsets count code points of the document.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include "core/anonymization/result.hpp"
#include "core/person_name.hpp"

namespace core {

// A person and the spellings that are read as `name` is.
struct KnownPerson {
  std::u32string name;
  std::vector<std::u32string> variants;
};

// Persons that are known on this thread, as long as the scope lives. Of scopes
// within scopes the inner one is asked first.
//
//   const std::vector<KnownPerson> persons = {{U"王建国", {U"王经理"}}};
//   const KnownPersonsScope scope(persons);
class KnownPersonsScope {
 public:
  // Of a variant that stands twice the first person wins; one without a name is
  // ignored, and so is a person without one.
  explicit KnownPersonsScope(const std::vector<KnownPerson>& persons);
  ~KnownPersonsScope();
  KnownPersonsScope(const KnownPersonsScope&) = delete;
  KnownPersonsScope& operator=(const KnownPersonsScope&) = delete;

  // The innermost scope of this thread; nullptr if there is none.
  static const KnownPersonsScope* innermost();
  const KnownPersonsScope* outer() const { return outer_; }
  // The name that the spelling with this key is read as; nullptr if unknown.
  const PersonName* find(const std::u32string& key) const;

 private:
  std::unordered_map<std::u32string, PersonName> name_by_variant_;
  const KnownPersonsScope* outer_;
};

// The spelling of a name in which its variants are equal: in folded case,
// "SMITH, John" as "john smith", without the spaces inside a Chinese name and the
// middle dots of a transliterated one, without titles and honorifics (先生, 女士,
// Mr., Dr.) where more remains than a surname, or a surname with initials. Empty
// if the span holds no name at all. Reads nothing but the span and the persons
// that are known.
//
//   张 伟 = 张伟     Mr. John A. Smith = JOHN A. SMITH     王先生 and 王女士 differ
std::u32string person_identity_key(std::u32string_view text, anonymization::Offset start,
                                   anonymization::Offset end);

// The number of each PERSON span (start, end) among `persons`, counted from 1
// in order of first appearance, dense; spellings of one person share it. A span
// whose key is empty has no number. Initials are bridged (John Smith and John
// A. Smith, J. Smith and John Smith) only where a single person that they may
// stand for is among `persons`.
std::map<std::pair<anonymization::Offset, anonymization::Offset>, std::int64_t>
person_span_to_placeholder_num(std::u32string_view text,
                               const std::vector<anonymization::RecognizerResult>& persons);

}  // namespace core
