// How far the system is from the limits: the same text through the whole path, the core
// alone, one pass for the beginnings of all patterns, the patterns one by one, and a
// copy in memory. bench/compare.sh runs it and writes the tables of bench/compare.md.
#include <algorithm>
#include <cstring>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iostream>
#include <iterator>

#define PCRE2_CODE_UNIT_WIDTH 32
#include <nlohmann/json.hpp>
#include <pcre2.h>

#include "bench/documents.hpp"
#include "core/anonymization/analyzer/embedded_analyzer.hpp"
#include "core/anonymization_core.hpp"
#include "core/evaluation/labelled_document.hpp"
#include "core/text/regex.hpp"
#include "core/text/utf8.hpp"

namespace {

using core::anonymization::Aliases;
using core::anonymization::anonymize_document;

constexpr std::string_view PROFILE = "contract_default";

constexpr std::string_view USAGE = R"(veildoc_compare text LANGUAGE N FOLDER...
    writes a text of N code points: the labelled documents of that language (zh, en) in
    the folders one behind the other, without their marks, as often as needed
veildoc_compare entities N CHARACTERS
    writes a generated contract of N different names, dates and amounts, and as many
    characters
veildoc_compare documents FILE N SIZE
    writes N documents of SIZE code points, cut out of the file, as JSON Lines
veildoc_compare measure FILE LANGUAGE
    prints a row of times for each way through the text, as Markdown
)";

std::string read(const std::filesystem::path& path) {
  std::ifstream in(path, std::ios::binary);
  if (!in) throw std::runtime_error("cannot read " + path.string());
  return {std::istreambuf_iterator<char>(in), {}};
}

std::u32string labelled_texts(const std::string& language,
                              const std::vector<std::string>& folders) {
  std::vector<std::filesystem::path> paths;
  for (const auto& folder : folders) {
    for (const auto& entry : std::filesystem::directory_iterator(folder)) {
      if (entry.path().filename().string().starts_with(language)) paths.push_back(entry.path());
    }
  }
  std::sort(paths.begin(), paths.end());
  std::u32string all;
  for (const auto& path : paths) {
    all += core::evaluation::parse_labelled(core::text::decode_utf8(read(path))).text;
    all.push_back(U'\n');
  }
  if (all.empty()) throw std::runtime_error("no document of this language in the folders");
  return all;
}

std::u32string repeated(const std::u32string& text, std::size_t size) {
  std::u32string out;
  out.reserve(size + text.size());
  while (out.size() < size) out += text;
  out.resize(size);
  return out;
}

void write_documents(const std::string& file, std::size_t count, std::size_t size) {
  const std::u32string text = core::text::decode_utf8(read(file));
  if (size >= text.size()) throw std::runtime_error("the file is too short");
  for (std::size_t i = 0; i < count; ++i) {
    const auto part = text.substr(i * size % (text.size() - size), size);
    std::cout << nlohmann::json{{"id", std::to_string(i)}, {"text", core::text::encode_utf8(part)}}
              << '\n';
  }
}

// The least of several runs, in seconds of processor time: others may use the machine, too.
double least_seconds(const std::function<void()>& run) {
  constexpr int RUNS = 5;
  double least = 1e9;
  for (int i = 0; i < RUNS; ++i) {
    const auto before = std::clock();
    run();
    least = std::min(least, static_cast<double>(std::clock() - before) / CLOCKS_PER_SEC);
  }
  return least;
}

// The patterns that the shipped recognizers search whole documents for, each with the
// engine's own search, which is what the system would do without any of its indexes.
class PatternsOneByOne {
 public:
  PatternsOneByOne() {
    for (const auto pattern : core::text::scanned_patterns()) {
      int error = 0;
      PCRE2_SIZE offset = 0;
      auto* code =
          pcre2_compile(reinterpret_cast<PCRE2_SPTR>(pattern.data()), pattern.size(),
                        PCRE2_UCP | PCRE2_ALT_BSUX | PCRE2_NEVER_UTF, &error, &offset, nullptr);
      if (code == nullptr) throw std::runtime_error("a pattern does not compile");
      pcre2_jit_compile(code, PCRE2_JIT_COMPLETE);
      codes_.push_back(code);
    }
  }
  PatternsOneByOne(const PatternsOneByOne&) = delete;
  PatternsOneByOne& operator=(const PatternsOneByOne&) = delete;
  ~PatternsOneByOne() {
    for (auto* code : codes_) pcre2_code_free(code);
    pcre2_match_data_free(data_);
  }

  std::size_t size() const { return codes_.size(); }

  // The number of matches.
  std::size_t search(std::u32string_view text) const {
    std::size_t found = 0;
    for (auto* code : codes_) {
      std::size_t at = 0;
      while (at <= text.size() && pcre2_match(code, reinterpret_cast<PCRE2_SPTR>(text.data()),
                                              text.size(), at, 0, data_, nullptr) > 0) {
        at = std::max(pcre2_get_ovector_pointer(data_)[1], at + 1);
        ++found;
      }
    }
    return found;
  }

 private:
  std::vector<pcre2_code*> codes_;
  pcre2_match_data* data_ = pcre2_match_data_create(64, nullptr);
};

void measure(const std::string& file, const std::string& language) {
  const std::u32string text = core::text::decode_utf8(read(file));
  const auto analyzer = core::anonymization::make_embedded_analyzer();
  bench::ScriptedAnalyzer scripted;
  scripted.hits = analyzer->analyze(text, language);
  const PatternsOneByOne patterns;
  std::u32string copy(text.size(), U'\0');
  const auto row = [&](const std::string& what, const std::function<void()>& run) {
    const double seconds = least_seconds(run);
    const double characters = static_cast<double>(text.size());
    std::cout << "| " << what << " | " << seconds * 1e3 << " | " << characters / seconds / 1e6
              << " | " << seconds / characters * 1e9 << " |\n";
  };
  std::cout << "| " << text.size() << " code points, " << scripted.hits.size()
            << " hits | ms | million characters/s | ns/character |\n|---|---:|---:|---:|\n";
  row("whole path", [&] { anonymize_document(text, *analyzer, language, PROFILE, Aliases::ONE); });
  row("analyzer alone", [&] { analyzer->analyze(text, language); });
  row("core alone, parties known by their spelling",
      [&] { anonymize_document(text, scripted, language); });
  row("core alone, parties gathered",
      [&] { anonymize_document(text, scripted, language, PROFILE, Aliases::ONE); });
  row("one pass for the beginnings of " + std::to_string(patterns.size()) + " patterns", [&] {
    core::text::SearchIndex index(text);
    core::text::scan_patterns(text, index);
  });
  row("PCRE2, the same patterns one by one", [&] { patterns.search(text); });
  row("copy in memory", [&] {
    std::memcpy(copy.data(), text.data(), text.size() * sizeof(char32_t));
    if (copy.back() == U'\1') std::cout << ' ';  // the copy is used
  });
}

int run(const std::vector<std::string>& args) {
  const std::string command = args.empty() ? "" : args[0];
  if (command == "text" && args.size() > 3) {
    const auto text = labelled_texts(args[1], {args.begin() + 3, args.end()});
    std::cout << core::text::encode_utf8(repeated(text, std::stoul(args[2])));
  } else if (command == "entities" && args.size() == 3) {
    const std::size_t characters = std::stoul(args[2]);
    const auto document =
        bench::make_contract({.characters = characters,
                              .characters_per_entity = characters / std::stoul(args[1]),
                              .characters_per_paragraph = 0,
                              .share_of_repeats = 0});
    std::cout << core::text::encode_utf8(document.text);
  } else if (command == "documents" && args.size() == 4) {
    write_documents(args[1], std::stoul(args[2]), std::stoul(args[3]));
  } else if (command == "measure" && args.size() == 3) {
    measure(args[1], args[2]);
  } else {
    std::cerr << USAGE;
    return 2;
  }
  return 0;
}

}  // namespace

int main(int argc, char** argv) {
  try {
    return run({argv + 1, argv + argc});
  } catch (const std::exception& error) {
    std::cerr << "veildoc_compare: " << error.what() << '\n';
    return 1;
  }
}
