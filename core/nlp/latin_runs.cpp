#include "core/nlp/latin_runs.hpp"

#include <algorithm>
#include <string>
#include <unordered_set>

#include "core/nlp/characters.hpp"
#include "core/nlp/contract_language.hpp"
#include "core/nlp/latin_tokens.hpp"
#include "core/text/lexicon.hpp"
#include "core/text/word_set.hpp"

namespace core::text::lexicon_data {
extern const std::string_view abbreviations_en;
extern const std::string_view not_names_en;
}  // namespace core::text::lexicon_data

namespace core::nlp {
namespace {

class WordList {
 public:
  explicit WordList(std::string_view list) {
    for (auto& word : text::lexicon_words(list)) words_.insert(std::move(word));
  }
  bool has(const std::u32string& low) const { return words_.contains(low); }

 private:
  std::unordered_set<std::u32string> words_;
};

bool is_abbreviation(const std::u32string& low) {
  static const WordList list(text::lexicon_data::abbreviations_en);
  return list.has(low);
}

bool is_no_name(const std::u32string& low) {
  static const WordList list(text::lexicon_data::not_names_en);
  return list.has(low);
}

// Abbreviations whose full stop ends no sentence: St. Gallen
constexpr auto SHORTENED = text::words({U"St", U"Ste", U"Mt", U"Ft", U"Sta", U"Sto", U"Sv"});

// Small words inside names of other languages. "of" and "and" part two names more often
// than they join one.
constexpr auto RUN_PARTICLES =
    text::words({U"de",    U"del", U"della", U"delle", U"dello", U"dei", U"degli", U"di",  U"da",
                 U"du",    U"des", U"dos",   U"das",   U"do",    U"la",  U"le",    U"les", U"el",
                 U"al",    U"van", U"von",   U"vom",   U"der",   U"den", U"und",   U"zu",  U"zur",
                 U"zum",   U"et",  U"y",     U"e",     U"i",     U"og",  U"och",   U"ve",  U"bin",
                 U"binti", U"ibn", U"ten",   U"ter",   U"&",     U"für", U"w",     U"dla"});

// Words that stand in a title in lower case
constexpr auto TITLE_WORDS = text::words(
    {U"of", U"and",  U"or",   U"the",   U"a",  U"an", U"in",  U"on",      U"at", U"to", U"for",
     U"by", U"with", U"from", U"under", U"no", U"as", U"per", U"between", U"v",  U"vs"});

bool is_word_character(char32_t c) {
  return is_latin_letter(c) || text::is_ascii_digit(c) || c == U'\'' || c == U'-' || c == U'&' ||
         c == 0x2019;
}

bool is_end_of_line(char32_t c) { return is_cell_end(c); }

class Reader {
 public:
  explicit Reader(std::u32string_view t) : t_(t) {}

  LatinRuns read() {
    for (std::size_t i = 0; i < t_.size();) {
      std::size_t end = i;
      while (end < t_.size() && !is_end_of_line(t_[end])) ++end;
      read_line(i, end);
      i = end + 1;
    }
    judge_words();
    return std::move(out_);
  }

 private:
  struct Line {
    std::size_t first_run;
    int lower = 0;    // words in lower case that stand in no title
    int english = 0;  // of which English
    bool capitals = true;
  };

  void read_line(std::size_t start, std::size_t end) {
    Line line{out_.runs.size()};
    bool opens = true;   // a sentence
    bool joins = false;  // to the run before
    for (std::size_t i = start; i < end;) {
      if (text::is_ideograph(t_[i])) {
        joins = false;
        ++i;
        continue;
      }
      if (!is_word_start(i)) {
        if (t_[i] != U' ') joins = false;
        opens |= ends_sentence(i);
        ++i;
        continue;
      }
      std::size_t stop = i;
      while (stop < end && is_word_character(t_[stop])) ++stop;
      i = read_word(i, stop, opens, joins, line);
    }
    close_run();
    finish(line);
  }

  bool is_word_start(std::size_t i) const {
    return is_latin_letter(t_[i]) || t_[i] == U'&' || text::is_ascii_digit(t_[i]);
  }

  // A full stop, but not behind an initial or an abbreviation; a colon; the start of a list.
  bool ends_sentence(std::size_t i) const {
    const char32_t c = t_[i];
    if (c == U'!' || c == U'?' || c == U'。' || c == U'；' || c == U'：') return true;
    if (c != U'.') return false;
    const Token token = token_before(t_, i);
    constexpr std::size_t LONGEST_ABBREVIATION = 3;
    return token.end != i || token.end - token.start > LONGEST_ABBREVIATION ||
           text::is_ascii_digit(t_[i - 1]);
  }

  // Takes the word in; where reading goes on.
  std::size_t read_word(std::size_t start, std::size_t stop, bool& opens, bool& joins, Line& line) {
    LatinWord word;
    word.start = static_cast<std::uint32_t>(start);
    word.end = static_cast<std::uint32_t>(trimmed_end(start, stop));
    const auto surface = t_.substr(start, word.end - start);
    const bool letters = std::any_of(surface.begin(), surface.end(), is_latin_letter);
    const bool digits = std::any_of(surface.begin(), surface.end(), text::is_ascii_digit);
    if (digits || (!letters && surface != U"&")) {  // a number or a code
      joins = false;
      close_run();
      return stop;
    }
    word.connective = RUN_PARTICLES.contains(surface);
    word.shape = shape_of(surface);
    if (word.shape == WordShape::CAPITALS && surface.size() > 1 && is_small_word(surface)) {
      joins = false;
      close_run();
      return stop;
    }
    if (word.shape == WordShape::LOWER && surface != U"&") take_lower(surface, line);
    const bool ends = word.end != stop;
    if (word.shape != WordShape::LOWER) {
      if (word.shape == WordShape::CAPITAL) line.capitals = false;
      if (!joins) open_run(word, opens);
      word.initial = surface.size() == 1 || is_initials(start, stop);
      add(word);
      joins = !ends;
    } else if (joins && word.connective) {
      pending_.push_back(word);
    } else {
      close_run();
      joins = false;
    }
    opens = false;
    // "J. Stone", "St. Gallen": the full stop of a short word does not end the run.
    if (joins && stop < t_.size() && t_[stop] == U'.' &&
        (word.initial || SHORTENED.contains(surface)) && stop + 1 < t_.size() &&
        (t_[stop + 1] == U' ' || is_upper(t_[stop + 1]))) {
      return stop + 1;
    }
    return stop;
  }

  std::size_t trimmed_end(std::size_t start, std::size_t stop) const {
    const auto s = t_.substr(start, stop - start);
    if (s.size() > 2 && (s.back() == U's' || s.back() == U'S') &&
        (s[s.size() - 2] == U'\'' || s[s.size() - 2] == 0x2019)) {
      return stop - 2;
    }
    while (stop > start + 1 && !is_latin_letter(t_[stop - 1]) &&
           !text::is_ascii_digit(t_[stop - 1]) && t_[stop - 1] != U'&') {
      --stop;
    }
    return stop;
  }

  static WordShape shape_of(std::u32string_view s) {
    // d'Abbadie, l'Adour
    const bool elided = s.size() > 3 && s[1] == U'\'' && is_upper(s[2]);
    if (!is_upper(s.front()) && !elided) return WordShape::LOWER;
    return std::none_of(s.begin(), s.end(), is_lower) && s.size() > 1 ? WordShape::CAPITALS
                                                                      : WordShape::CAPITAL;
  }

  bool is_initials(std::size_t start, std::size_t stop) const {
    return stop - start == 1 || (stop - start == 2 && stop < t_.size() && t_[stop] == U'.' &&
                                 text::is_ascii_alpha(t_[start]));
  }

  void take_lower(std::u32string_view surface, Line& line) {
    out_.lower_words.insert(surface);
    if (TITLE_WORDS.contains(surface)) return;
    ++line.lower;
    line.english += is_common_english_word(surface, 1) || is_contract_language(surface) ? 1 : 0;
  }

  void open_run(const LatinWord& word, bool opens) {
    close_run();
    LatinRun run;
    run.first_word = static_cast<std::uint32_t>(out_.words.size());
    run.start = word.start;
    run.sentence_start = opens;
    out_.runs.push_back(run);
    open_ = true;
  }

  void add(const LatinWord& word) {
    for (const auto& w : pending_) out_.words.push_back(w);
    pending_.clear();
    out_.words.push_back(word);
    auto& run = out_.runs.back();
    run.word_count = static_cast<std::uint32_t>(out_.words.size()) - run.first_word;
    run.end = word.end;
  }

  void close_run() {
    pending_.clear();
    open_ = false;
  }

  void finish(const Line& line) {
    for (std::size_t i = line.first_run; i < out_.runs.size(); ++i) {
      auto& run = out_.runs[i];
      run.title_line = line.lower == 0;
      run.capitals_line = line.lower == 0 && line.capitals;
      run.foreign_line = line.lower >= 4 && line.english * 2 < line.lower;
    }
  }

  void judge_words() {
    std::u32string low;
    for (auto& word : out_.words) {
      const auto surface = t_.substr(word.start, word.end - word.start);
      word.facts = latin_word(surface);
      low.assign(surface);
      for (char32_t& c : low) c = lower(c);
      if (is_plural_of_letters(surface)) {  // KPIs
        word.shape = WordShape::CAPITALS;
        word.vocabulary = true;
        continue;
      }
      word.vocabulary = is_contract_language(surface) || is_contract_word(surface) ||
                        is_no_name(low) || (may_abbreviate(word) && is_abbreviation(low));
      const bool english = word.facts.english_frequency > 0 && !is_name_first(word.facts);
      word.particular = !word.connective && !word.initial && !word.vocabulary && !english &&
                        !out_.lower_words.contains(low) && !is_compound(surface) &&
                        !is_derived(low);
    }
  }

  static bool is_plural_of_letters(std::u32string_view s) {
    return s.size() > 2 && s.back() == U's' &&
           std::all_of(s.begin(), s.end() - 1, [](char32_t c) { return is_upper(c); });
  }

  static bool may_abbreviate(const LatinWord& word) {
    return word.shape == WordShape::CAPITALS || word.facts.name_class == LatinNameClass::NONE;
  }

  // Words that are mostly names stand in the dictionary with a low frequency.
  static bool is_name_first(const LatinWordFacts& facts) {
    return facts.english_frequency <= 2 && facts.name_class != LatinNameClass::NONE &&
           facts.name_class != LatinNameClass::PROPER && !facts.name_is_common_word;
  }

  // Co-operation, Sub-Contractor, Take-or-Pay: each part is an ordinary word.
  static bool is_compound(std::u32string_view surface) {
    if (surface.find(U'-') == surface.npos) return false;
    for (std::size_t at = 0; at <= surface.size();) {
      const std::size_t dash = std::min(surface.find(U'-', at), surface.size());
      const auto part = surface.substr(at, dash - at);
      at = dash + 1;
      if (part.size() > 2 && !is_common_english_word(part, 1) && !is_contract_language(part) &&
          !is_prefix(part)) {
        return false;
      }
    }
    return true;
  }

  // Dewatering, Subprocessors, Workspaces: made of an ordinary word
  static bool is_derived(std::u32string_view low) {
    static constexpr std::u32string_view PREFIXES[] = {
        U"de",    U"re",    U"pre",  U"non",  U"sub",   U"un",    U"co",
        U"over",  U"under", U"out",  U"up",   U"multi", U"inter", U"micro",
        U"cyber", U"pro",   U"anti", U"semi", U"mis",   U"geo",   U"bio"};
    static constexpr std::u32string_view ENDS[] = {
        U"work",  U"works", U"space",   U"spaces", U"load",    U"loads",  U"time",
        U"times", U"line",  U"lines",   U"set",    U"sets",    U"base",   U"flow",
        U"flows", U"ware",  U"side",    U"stream", U"streams", U"sheet",  U"sheets",
        U"out",   U"off",   U"down",    U"back",   U"board",   U"boards", U"proof",
        U"wide",  U"able",  U"ability", U"ness",   U"s",       U"ly"};
    constexpr std::size_t SHORTEST = 4;
    constexpr unsigned KNOWN = 3;
    for (const auto prefix : PREFIXES) {
      if (low.starts_with(prefix) && low.size() >= prefix.size() + SHORTEST + 1 &&
          is_common_english_word(low.substr(prefix.size()), KNOWN)) {
        return true;
      }
    }
    for (const auto end : ENDS) {
      if (low.ends_with(end) && low.size() >= end.size() + SHORTEST &&
          is_common_english_word(low.substr(0, low.size() - end.size()), KNOWN)) {
        return true;
      }
    }
    return false;
  }

  static bool is_prefix(std::u32string_view part) {
    static constexpr auto PREFIXES = text::words(
        {U"Anti", U"Multi", U"Bio", U"Geo", U"Electro", U"Inter", U"Intra", U"Micro", U"Macro"});
    return PREFIXES.contains(part);
  }

  std::u32string_view t_;
  LatinRuns out_;
  std::vector<LatinWord> pending_;
  bool open_ = false;
};

}  // namespace

LatinRuns find_latin_runs(std::u32string_view text) { return Reader(text).read(); }

}  // namespace core::nlp
