// Characters of a document that the joiners between its paragraphs are framed by.
#pragma once

#include <string>
#include <string_view>

namespace documents {

// Two code points that stand for U+E000 and U+E001 while the document is analysed:
// left as they are, they could read as a joiner and be taken out. Offsets stay.
//
//   const auto escapes = JoinerEscapes::of(text);
//   escapes.restore(escapes.escape(text)) == text
class JoinerEscapes {
 public:
  // The first two of a private plane that `text` does not hold.
  static JoinerEscapes of(std::u32string_view text);

  std::u32string escape(std::u32string text) const;
  std::u32string restore(std::u32string text) const;

 private:
  char32_t opening_ = 0xF0000;
  char32_t closing_ = 0xF0001;
};

}  // namespace documents
