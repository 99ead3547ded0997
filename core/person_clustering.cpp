#include "core/person_clustering.hpp"

#include <algorithm>
#include <array>
#include <optional>
#include <unordered_map>

#include "core/text/unicode.hpp"
#include "core/text/view_map.hpp"

namespace core {
namespace {

using anonymization::Offset;
using anonymization::RecognizerResult;

// A word of a name and the initial that stands for it; empty where it was not seen.
struct Word {
  std::u32string initial;
  std::u32string full;

  explicit Word(const std::u32string& word) { (word.size() == 1 ? initial : full) = word; }

  char32_t letter() const { return full.empty() ? initial.front() : full.front(); }

  // False if no one word is spelled both ways.
  bool merge(const Word& other) {
    const auto take = [](std::u32string& to, const std::u32string& from) {
      if (to.empty()) to = from;
      return from.empty() || to == from;
    };
    return take(initial, other.initial) && take(full, other.full) &&
           (initial.empty() || full.empty() || full.starts_with(initial));
  }
};

// Spellings that are one person.
struct Person {
  std::vector<std::size_t> keys;
  std::vector<Word> given;  // the first name and the middle names
  Gender gender = Gender::UNKNOWN;

  bool has_full_first_name() const { return !given.front().full.empty(); }
  bool has_middle() const { return given.size() > 1; }
  // Whether a spelling without the middle name is likely: an initial comes and
  // goes, but Li Xiao Ming is not Li Ming.
  bool may_lack_middle() const { return !has_middle() || !given[1].initial.empty(); }

  // False, and the person is of no further use, if `other` cannot be the same.
  bool merge(const Person& other) {
    for (std::size_t i = 0; i < other.given.size(); ++i) {
      if (i == given.size()) given.push_back(other.given[i]);
      if (!given[i].merge(other.given[i])) return false;
    }
    keys.insert(keys.end(), other.keys.begin(), other.keys.end());
    if (gender == Gender::UNKNOWN) gender = other.gender;
    return other.gender == Gender::UNKNOWN || other.gender == gender;
  }
};

using Persons = std::vector<Person>;

// All of them as one; nullopt if they cannot be one person, or are none.
std::optional<Person> as_one(const Persons& persons) {
  if (persons.empty()) return {};
  Person one = persons.front();
  const bool fits = std::all_of(persons.begin() + 1, persons.end(),
                                [&one](const Person& person) { return one.merge(person); });
  return fits ? std::optional(std::move(one)) : std::nullopt;
}

template <class T>
void append_all(std::vector<T>& to, const std::vector<T>& from) {
  to.insert(to.end(), from.begin(), from.end());
}

// As one person where that can be, as they are otherwise.
void append_as_one(Persons& to, const Persons& from) {
  if (auto one = as_one(from)) {
    to.push_back(std::move(*one));
  } else {
    append_all(to, from);
  }
}

// Of spellings with one first and one last name. John Smith is John A. Smith
// unless there is a John B. Smith as well.
Persons bridge_middle_names(const Persons& spellings) {
  Persons with_middle;
  Persons without;
  std::map<char32_t, Persons> by_middle_letter;
  for (const auto& person : spellings) {
    (person.has_middle() ? with_middle : without).push_back(person);
    if (person.has_middle()) by_middle_letter[person.given[1].letter()].push_back(person);
  }
  Persons out;
  if (const auto one = as_one(with_middle); one && one->may_lack_middle()) {
    without.push_back(*one);
  } else {
    for (const auto& [letter, persons] : by_middle_letter) append_as_one(out, persons);
  }
  append_as_one(out, without);
  return out;
}

// Persons of one last name whose first names begin with one letter.
class FirstNames {
 public:
  explicit FirstNames(const Persons& persons) {
    for (const auto& person : persons) {
      (person.has_full_first_name() ? full_ : initial_).push_back(person);
    }
    for (std::size_t i = 0; i < full_.size(); ++i) {
      const auto& person = full_[i];
      (person.has_middle() ? by_middle_letter_[person.given[1].letter()] : without_middle_)
          .push_back(i);
    }
  }

  // J. Smith is John Smith unless there is a James Smith as well.
  Persons bridge() const {
    Persons out;
    std::vector<Persons> candidates(full_.size());
    for (std::size_t i = 0; i < full_.size(); ++i) candidates[i].push_back(full_[i]);
    for (const auto& person : initial_) {
      if (const auto single = single_candidate(person)) {
        candidates[*single].push_back(person);
      } else {
        out.push_back(person);
      }
    }
    for (const auto& persons : candidates) append_as_one(out, persons);
    return out;
  }

 private:
  // The one person that an initial may stand for, if there is no second.
  std::optional<std::size_t> single_candidate(const Person& person) const {
    std::optional<std::size_t> single;
    if (!person.has_middle()) {
      if (full_.size() == 1 && initial_.size() == 1) single = 0;
    } else {
      const auto found = by_middle_letter_.find(person.given[1].letter());
      const bool none = found == by_middle_letter_.end();
      if (without_middle_.size() + (none ? 0 : found->second.size()) == 1) {
        single = none ? without_middle_.front() : found->second.front();
      }
    }
    if (!single || full_[*single].has_middle() == person.has_middle()) return single;
    const auto& longer = person.has_middle() ? person : full_[*single];
    return longer.may_lack_middle() ? single : std::nullopt;
  }

  Persons full_;
  Persons initial_;
  std::vector<std::size_t> without_middle_;
  std::map<char32_t, std::vector<std::size_t>> by_middle_letter_;
};

// What spellings must share to be bridged: a form of the first name, the last
// name, the generation.
using NameFrame = std::array<std::u32string, 3>;

// The spellings of a document, numbered in the order in which they come.
class Spellings {
 public:
  std::size_t add(const PersonName& name, std::u32string key) {
    const auto [found, is_new] = number_by_key_.try_emplace(std::move(key), number_by_key_.size());
    if (is_new && name.names.size() > 1) add_to_frame(name, found->second);
    return found->second;
  }

  // For every spelling the first one of the same person.
  std::vector<std::size_t> persons() const {
    std::map<NameFrame, Persons> by_letter;
    for (const auto& [frame, spellings] : by_first_name_) {
      const NameFrame wider = {frame[0].substr(0, 1), frame[1], frame[2]};
      append_all(by_letter[wider], bridge_middle_names(spellings));
    }
    std::vector<std::size_t> person_of(number_by_key_.size());
    for (std::size_t i = 0; i < person_of.size(); ++i) person_of[i] = i;
    for (const auto& [frame, persons] : by_letter) {
      for (const auto& person : FirstNames(persons).bridge()) {
        const auto first = *std::min_element(person.keys.begin(), person.keys.end());
        for (const auto key : person.keys) person_of[key] = first;
      }
    }
    return person_of;
  }

 private:
  void add_to_frame(const PersonName& name, std::size_t number) {
    Person person;
    person.keys = {number};
    person.given = std::vector<Word>(name.names.begin(), name.names.end() - 1);
    person.gender = gender_of(name);
    std::u32string generation;
    for (const auto& word : name.generation) generation += word;
    by_first_name_[{name.names.front(), name.names.back(), generation}].push_back(
        std::move(person));
  }

  std::unordered_map<std::u32string, std::size_t> number_by_key_;
  std::map<NameFrame, Persons> by_first_name_;
};

std::vector<const RecognizerResult*> in_text_order(const std::vector<RecognizerResult>& persons) {
  std::vector<const RecognizerResult*> ordered;
  ordered.reserve(persons.size());
  for (const auto& person : persons) ordered.push_back(&person);
  const auto begins_first = [](const auto* a, const auto* b) { return a->start < b->start; };
  if (!std::is_sorted(ordered.begin(), ordered.end(), begins_first)) {
    std::stable_sort(ordered.begin(), ordered.end(), begins_first);
  }
  return ordered;
}

thread_local const KnownPersonsScope* innermost_scope = nullptr;

// The name that a spelling is, or that it is known to stand for.
PersonName name_of(std::u32string_view spelling) {
  auto name = parse_person_name(spelling);
  if (innermost_scope == nullptr) return name;
  const auto key = name.key();
  for (const auto* scope = innermost_scope; scope != nullptr; scope = scope->outer()) {
    if (const auto* known = scope->find(key)) return *known;
  }
  return name;
}

}  // namespace

KnownPersonsScope::KnownPersonsScope(const std::vector<KnownPerson>& persons)
    : outer_(innermost_scope) {
  for (const auto& person : persons) {
    const auto name = parse_person_name(person.name);
    if (name.names.empty()) continue;
    for (const auto& variant : person.variants) {
      if (auto key = parse_person_name(variant).key(); !key.empty()) {
        name_by_variant_.try_emplace(std::move(key), name);
      }
    }
  }
  innermost_scope = this;
}

KnownPersonsScope::~KnownPersonsScope() { innermost_scope = outer_; }

const KnownPersonsScope* KnownPersonsScope::innermost() { return innermost_scope; }

const PersonName* KnownPersonsScope::find(const std::u32string& key) const {
  const auto found = name_by_variant_.find(key);
  return found == name_by_variant_.end() ? nullptr : &found->second;
}

std::u32string person_identity_key(std::u32string_view text, Offset start, Offset end) {
  return name_of(text::slice(text, start, end)).key();
}

std::map<std::pair<Offset, Offset>, std::int64_t> person_span_to_placeholder_num(
    std::u32string_view text, const std::vector<RecognizerResult>& persons) {
  Spellings spellings;
  text::ViewMap<std::optional<std::size_t>> spelling_of_surface;
  std::vector<std::pair<std::pair<Offset, Offset>, std::size_t>> spelling_of_span;
  for (const auto* person : in_text_order(persons)) {
    const auto surface = text::slice(text, person->start, person->end);
    const auto [entry, is_new] = spelling_of_surface.add(surface);
    if (is_new) {
      const auto name = name_of(surface);
      if (auto key = name.key(); !key.empty()) entry.value = spellings.add(name, std::move(key));
    }
    if (!entry.value) continue;
    spelling_of_span.push_back({{person->start, person->end}, *entry.value});
  }

  const auto person_of = spellings.persons();
  std::unordered_map<std::size_t, std::int64_t> number_of_person;
  std::map<std::pair<Offset, Offset>, std::int64_t> out;
  for (const auto& [span, spelling] : spelling_of_span) {
    const auto next = static_cast<std::int64_t>(number_of_person.size()) + 1;
    const auto number = number_of_person.try_emplace(person_of[spelling], next).first->second;
    out.insert_or_assign(out.end(), span, number);  // where most belong
  }
  return out;
}

}  // namespace core
