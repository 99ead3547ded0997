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

}  // namespace

void set_known_parties(const std::vector<KnownParty>& parties) {
  KeyByVariant list;
  for (const auto& party : parties) {
    if (party.canonical_key.empty()) continue;
    for (const auto& variant : party.variants) {
      if (auto name = normalized(variant); !name.empty()) {
        list.try_emplace(std::move(name), party.canonical_key);
      }
    }
  }
  parties_in_force().replace(std::move(list));
}

std::u32string avs_workgroup_party_canonical_org_key_from_span_text(std::u32string_view span) {
  const auto list = parties_in_force().current();
  if (list == nullptr) return {};
  const auto found = list->find(normalized(span));
  return found == list->end() ? std::u32string() : found->second;
}

}  // namespace core::anonymization
