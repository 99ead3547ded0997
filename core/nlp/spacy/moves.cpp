// The classes of a transition model in the order in which it was trained.
#include <algorithm>
#include <set>
#include <tuple>
#include <utility>

#include <nlohmann/json.hpp>

#include "core/nlp/spacy/model_error.hpp"
#include "core/nlp/spacy/msgpack.hpp"
#include "core/nlp/spacy/transition_model.hpp"

namespace core::nlp::spacy {
namespace {

constexpr int LAST_ACTION = 5;

using LabelCounts = std::vector<std::pair<std::int64_t, std::string>>;

// Descending by count, then by label; bytes of UTF-8 sort as code points do.
void sort_labels(LabelCounts& labels) { std::sort(labels.rbegin(), labels.rend()); }

nlohmann::json moves_json(const MappedFile& file) {
  MsgpackReader reader(file.bytes(), file.name());
  nlohmann::json out;
  for (auto left = reader.read_map(); left > 0; --left) {
    if (reader.read_bytes() == "moves") {
      out = nlohmann::json::parse(reader.read_bytes(), nullptr, false);
    } else {
      reader.skip();
    }
  }
  reader.expect_end();
  if (!out.is_object()) reader.fail("moves is not a JSON object");
  return out;
}

int action_of(const std::string& key, const MappedFile& file) {
  if (key.size() == 1 && key[0] >= '0' && key[0] - '0' <= LAST_ACTION) return key[0] - '0';
  throw ModelError(file.name(), "moves", "an action that is not known");
}

LabelCounts labels_of(const nlohmann::json& counts, const MappedFile& file) {
  LabelCounts out;
  if (!counts.is_object()) throw ModelError(file.name(), "moves", "not counts of labels");
  for (const auto& [label, count] : counts.items()) {
    if (!count.is_number_integer())
      throw ModelError(file.name(), "moves", "a count is no whole number");
    out.emplace_back(count.get<std::int64_t>(), label);
  }
  sort_labels(out);
  return out;
}

}  // namespace

std::vector<TransitionClass> read_moves(const MappedFile& file, bool skip_first_action) {
  // What was added after training began stands behind everything else.
  struct Late {
    std::int64_t count;
    TransitionClass value;
  };
  std::vector<TransitionClass> out;
  std::vector<Late> late;
  std::set<std::pair<int, std::string>> known;
  const auto json = moves_json(file);
  const auto is_used = [&](int action, const std::string& label) {
    if (!skip_first_action) return true;
    return action != 0 && (action != LAST_ACTION || label.empty());
  };
  const auto add = [&](int action, const std::string& label) {
    if (known.emplace(action, label).second) out.push_back({action, label});
  };
  for (const auto& [key, counts] : json.items()) {  // sorted as strings
    const int action = action_of(key, file);
    for (const auto& [count, label] : labels_of(counts, file)) {
      if (!is_used(action, label)) continue;
      if (count < 0) {
        late.push_back({count, {action, label}});
      } else {
        add(action, label);
      }
    }
  }
  std::stable_sort(late.begin(), late.end(), [](const Late& a, const Late& b) {
    return std::tie(a.count, a.value.label) > std::tie(b.count, b.value.label);
  });
  for (const auto& one : late) add(one.value.action, one.value.label);
  return out;
}

}  // namespace core::nlp::spacy
