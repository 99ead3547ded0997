// The word vectors of a model: vocab/vectors and vocab/key2row.
#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <utility>
#include <vector>

#include "core/nlp/spacy/mapped_file.hpp"
#include "core/nlp/spacy/string_ids.hpp"

namespace core::nlp::spacy {

// The table stays in its file; a text touches few of its rows.
class StaticVectors {
 public:
  // The files `vectors` and `key2row`. Throws ModelError.
  StaticVectors(std::unique_ptr<const MappedFile> table, const MappedFile& keys);

  std::size_t rows() const { return rows_; }
  std::size_t width() const { return width_; }
  std::size_t keys() const { return key_to_row_.size(); }

  // Writes width() numbers to `out`; false if the word has no vector. Throws
  // ModelError for a vector that holds what is no number.
  bool copy(StringId orth, float* out) const;

 private:
  void read_table();
  void read_keys(const MappedFile& keys);

  std::unique_ptr<const MappedFile> file_;
  std::size_t data_ = 0;  // where the table begins
  std::size_t rows_ = 0;
  std::size_t width_ = 0;
  std::vector<std::pair<StringId, std::uint32_t>> key_to_row_;  // sorted
};

// Those of the folder `vocab`; null if there are none. Throws ModelError, also for
// vectors that are made of parts of words (floret).
std::shared_ptr<const StaticVectors> open_static_vectors(const std::filesystem::path& vocab);

}  // namespace core::nlp::spacy
