#include "core/anonymization/result.hpp"

namespace core::anonymization {

bool PlaceholderByKey::insert(std::u32string key, std::u32string placeholder) {
  if (!index_.try_emplace(key, entries_.size()).second) return false;
  entries_.emplace_back(std::move(key), std::move(placeholder));
  return true;
}

const std::u32string* PlaceholderByKey::find(const std::u32string& key) const {
  const auto found = index_.find(key);
  return found == index_.end() ? nullptr : &entries_[found->second].second;
}

}  // namespace core::anonymization
