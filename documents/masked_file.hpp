// Masked files on their way back: where placeholders can stand, and the file with what
// they stand for.
//
//   auto file = documents::read_masked_file(bytes);
//   const auto findings = core::restore::find_restorable(file->text(), mapping);
//   const auto restored = file->write(mapping, findings);  // of the same format
//
// What a file holds is told from its content. It may have been edited since it was
// masked, or may have been made of a masked text in another format.
#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "core/restore/restore.hpp"

namespace documents {

class MaskedFile {
 public:
  MaskedFile() = default;
  virtual ~MaskedFile() = default;
  MaskedFile(const MaskedFile&) = delete;
  MaskedFile& operator=(const MaskedFile&) = delete;

  // What is read of it, a line for each paragraph.
  virtual const std::u32string& text() const = 0;
  // The story that offset `at` lies in, as in "footnotes"; empty where the file is
  // text itself.
  virtual std::string story_at(std::size_t at) const = 0;
  // The file with the findings in text() put in their place; to be called once.
  virtual std::string write(const core::restore::Mapping& mapping,
                            const std::vector<core::restore::Finding>& findings) = 0;
  // What a person has to know of the file, whatever its placeholders.
  virtual std::vector<std::string> warnings() const { return {}; }
  bool is_text() const { return story_at(0).empty(); }
};

// Reads what read_document() reads, and throws what it throws. `encoding` is that of
// the text that was masked, by its name in the mapping: bytes that are ASCII are of it.
std::unique_ptr<MaskedFile> read_masked_file(std::string_view bytes,
                                             std::string_view encoding = {});

}  // namespace documents
