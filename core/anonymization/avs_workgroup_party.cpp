#include "core/anonymization/avs_workgroup_party.hpp"

#include <atomic>
#include <memory>
#include <mutex>
#include <unordered_map>

#include "core/text/unicode.hpp"

namespace core::anonymization {
namespace {

using KeyByVariant = std::unordered_map<std::u32string, std::u32string>;

std::u32string normalized(std::u32string_view name) {
  return text::case_fold(text::fold_parentheses(text::remove_space(name)));
}

// The list that is in force. A reader holds on to the list it began with.
class PartyList {
 public:
  void replace(KeyByVariant list) {
    auto next = list.empty() ? nullptr : std::make_shared<const KeyByVariant>(std::move(list));
    const std::lock_guard lock(mutex_);
    current_.swap(next);
    is_empty_.store(current_ == nullptr, std::memory_order_release);
  }

  // nullptr if no party is known; without a lock then, as this is asked for
  // every organization.
  std::shared_ptr<const KeyByVariant> current() const {
    if (is_empty_.load(std::memory_order_acquire)) return nullptr;
    const std::lock_guard lock(mutex_);
    return current_;
  }

 private:
  mutable std::mutex mutex_;
  std::shared_ptr<const KeyByVariant> current_;
  std::atomic<bool> is_empty_ = true;
};

PartyList& parties_in_force() {
  static PartyList list;
  return list;
}

thread_local const KnownPartiesScope* innermost_scope = nullptr;

KeyByVariant keys_of(const std::vector<KnownParty>& parties) {
  KeyByVariant list;
  for (const auto& party : parties) {
    if (party.canonical_key.empty()) continue;
    for (const auto& variant : party.variants) {
      if (auto name = normalized(variant); !name.empty()) {
        list.try_emplace(std::move(name), party.canonical_key);
      }
    }
  }
  return list;
}

}  // namespace

void set_known_parties(const std::vector<KnownParty>& parties) {
  parties_in_force().replace(keys_of(parties));
}

KnownPartiesScope::KnownPartiesScope(const std::vector<KnownParty>& parties)
    : key_by_variant_(keys_of(parties)), outer_(innermost_scope) {
  innermost_scope = this;
}

KnownPartiesScope::~KnownPartiesScope() { innermost_scope = outer_; }

const KnownPartiesScope* KnownPartiesScope::innermost() { return innermost_scope; }

const std::u32string* KnownPartiesScope::find(const std::u32string& normalized_name) const {
  const auto found = key_by_variant_.find(normalized_name);
  return found == key_by_variant_.end() ? nullptr : &found->second;
}

std::u32string avs_workgroup_party_canonical_org_key_from_span_text(std::u32string_view span) {
  const auto list = parties_in_force().current();
  if (list == nullptr && innermost_scope == nullptr) return {};
  const auto name = normalized(span);
  for (const auto* scope = innermost_scope; scope != nullptr; scope = scope->outer()) {
    if (const auto* key = scope->find(name)) return *key;
  }
  if (list == nullptr) return {};
  const auto found = list->find(name);
  return found == list->end() ? std::u32string() : found->second;
}

}  // namespace core::anonymization
