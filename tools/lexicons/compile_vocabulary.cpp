// Compiles the words that the embedded analyzer looks for in every text into a trie
// (core/text/flat_trie.hpp) and the tables of core/nlp/vocabulary_data.hpp.
//
//   compile_vocabulary DATA-FOLDER TRIE TABLES.cpp
#include <algorithm>
#include <cstdint>
#include <exception>
#include <fstream>
#include <iostream>
#include <map>
#include <span>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "tools/lexicons/trie_builder.hpp"
#include "tools/lexicons/vocabulary_words.hpp"

#include "core/nlp/characters.hpp"
#include "core/nlp/vocabulary_data.hpp"

namespace {

using core::recognition::WordClass;
// The classes of a word, each with the spelling that counts.
using Uses = std::vector<std::pair<WordClass, std::u32string>>;

struct Vocabulary {
  std::vector<Uses> uses;  // by payload
  tools::TrieEntries words;
};

Vocabulary read_words(const std::string& folder) {
  std::map<std::u32string, Uses> by_key;
  for (auto& word : tools::vocabulary_words(folder)) {
    auto key = core::nlp::lowered(word.spelling);
    const bool counts = core::nlp::case_of(word.word_class) == core::nlp::Case::EXACT;
    by_key[std::move(key)].emplace_back(word.word_class,
                                        counts ? std::move(word.spelling) : std::u32string());
  }
  Vocabulary out;
  std::map<Uses, std::uint32_t> payloads;
  for (const auto& [key, uses] : by_key) {
    const auto [entry, is_new] =
        payloads.try_emplace(uses, static_cast<std::uint32_t>(out.uses.size()));
    if (is_new) out.uses.push_back(uses);
    out.words.emplace(key, entry->second);
  }
  return out;
}

void write_trie(const tools::TrieEntries& entries, const std::string& path) {
  const auto words = tools::build_flat_trie(entries);
  std::ofstream out(path, std::ios::binary);
  out.write(reinterpret_cast<const char*>(words.data()),
            static_cast<std::streamsize>(words.size() * sizeof words[0]));
  if (!out.flush()) throw std::runtime_error(path + " cannot be written");
}

void write_tables(const std::vector<Uses>& all, const std::string& path) {
  std::ofstream out(path);
  std::u32string spellings;
  out << "// Made by compile_vocabulary from data/.\n"
         "#include \"core/nlp/vocabulary_data.hpp\"\n\n"
         "namespace core::nlp::vocabulary_data {\n\n"
         "using recognition::WordClass;\n\n"
         "const VocabularyUse uses[] = {\n";
  std::vector<std::size_t> first_uses{0};
  for (const Uses& uses : all) {
    for (const auto& [word_class, spelling] : uses) {
      out << "{WordClass{" << static_cast<unsigned>(word_class) << "}, " << spelling.size() << ", "
          << spellings.size() << "},\n";
      spellings += spelling;
    }
    first_uses.push_back(first_uses.back() + uses.size());
  }
  out << "};\nconst std::uint32_t first_uses[] = {\n";
  for (const std::size_t first : first_uses) out << first << ",\n";
  out << "};\nconst char32_t spellings[] = {\n";
  for (const char32_t c : spellings) out << static_cast<std::uint32_t>(c) << ",\n";
  out << "0};\n\n}  // namespace core::nlp::vocabulary_data\n";
  if (!out.flush()) throw std::runtime_error(path + " cannot be written");
}

void compile(std::span<char*> arguments) {
  if (arguments.size() != 3) {
    throw std::runtime_error("usage: compile_vocabulary DATA-FOLDER TRIE TABLES.cpp");
  }
  const Vocabulary vocabulary = read_words(arguments[0]);
  write_trie(vocabulary.words, arguments[1]);
  write_tables(vocabulary.uses, arguments[2]);
}

}  // namespace

int main(int count, char** arguments) {
  try {
    compile(std::span(arguments, static_cast<std::size_t>(count)).subspan(1));
    return 0;
  } catch (const std::exception& error) {
    std::cerr << "compile_vocabulary: " << error.what() << "\n";
    return 1;
  }
}
