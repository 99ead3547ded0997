// Word lists that are compiled in from data/*.txt.
//
// Format of a list: UTF-8, one entry a line, columns separated by tabs; lines
// that begin with # and empty lines are not entries. cmake/lexicon.cmake makes
// data/NAME.txt available as lexicon_data::NAME; who uses it declares it:
//
//   namespace core::text::lexicon_data { extern const std::string_view surnames; }
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace core::text {

// The entries of a list, each as its columns, in the order of the file.
// Throws DecodeError if the list is not UTF-8.
std::vector<std::vector<std::u32string>> lexicon_rows(std::string_view list);

// The first column of every entry.
std::vector<std::u32string> lexicon_words(std::string_view list);

}  // namespace core::text
