#include "core/text/lexicon.hpp"

#include "core/text/utf8.hpp"

namespace core::text {
namespace {

// Calls visit(piece) for what stands between the separators.
template <class Visit>
void split_at(std::u32string_view text, char32_t separator, Visit visit) {
  while (true) {
    const auto end = text.find(separator);
    visit(text.substr(0, end));
    if (end == std::u32string_view::npos) return;
    text.remove_prefix(end + 1);
  }
}

}  // namespace

std::vector<std::vector<std::u32string>> lexicon_rows(std::string_view list) {
  std::vector<std::vector<std::u32string>> rows;
  const std::u32string text = decode_utf8(list);
  split_at(text, U'\n', [&](std::u32string_view line) {
    if (line.empty() || line.front() == U'#') return;
    auto& row = rows.emplace_back();
    split_at(line, U'\t', [&](std::u32string_view cell) { row.emplace_back(cell); });
  });
  return rows;
}

std::vector<std::u32string> lexicon_words(std::string_view list) {
  std::vector<std::u32string> words;
  for (auto& row : lexicon_rows(list)) words.push_back(std::move(row.front()));
  return words;
}

}  // namespace core::text
