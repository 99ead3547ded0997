#include "core/nlp/other_scripts.hpp"

#include <algorithm>
#include <array>
#include <optional>
#include <string>
#include <utility>

#include "core/nlp/characters.hpp"
#include "core/nlp/hits.hpp"
#include "core/nlp/latin_tokens.hpp"
#include "core/nlp/refinements.hpp"
#include "core/nlp/span_cover.hpp"
#include "core/text/regex.hpp"
#include "core/text/unicode.hpp"
#include "core/text/word_set.hpp"

namespace core::nlp {
namespace {

using recognition::WordClass;
using text::Regex;
namespace entity_type = anonymization::entity_type;

constexpr double OTHER_SCRIPT_SCORE = 0.6;

enum class Script : std::uint8_t { NONE, CASED, KANA, HANGUL, IDEOGRAPHS, OTHER };

struct Block {
  char32_t first;
  char32_t last;
  Script script;
};

// Unicode blocks, sorted. CASED: Greek, Cyrillic, Armenian, whose names have capitals.
constexpr std::array BLOCKS = {
    Block{0x370, 0x58F, Script::CASED},          Block{0x590, 0x109F, Script::OTHER},
    Block{0x10A0, 0x10FF, Script::OTHER},        Block{0x1100, 0x11FF, Script::HANGUL},
    Block{0x1200, 0x1C7F, Script::OTHER},        Block{0x1C80, 0x1C8F, Script::CASED},
    Block{0x1F00, 0x1FFF, Script::CASED},        Block{0x2DE0, 0x2DFF, Script::CASED},
    Block{0x3041, 0x30FF, Script::KANA},         Block{0x3105, 0x312F, Script::OTHER},
    Block{0x3131, 0x318F, Script::HANGUL},       Block{0x31F0, 0x31FF, Script::KANA},
    Block{0x3400, 0x4DBF, Script::IDEOGRAPHS},   Block{0xA000, 0xA4CF, Script::OTHER},
    Block{0xA640, 0xA69F, Script::CASED},        Block{0xAC00, 0xD7AF, Script::HANGUL},
    Block{0xF900, 0xFAFF, Script::IDEOGRAPHS},   Block{0xFB13, 0xFDFF, Script::OTHER},
    Block{0xFE70, 0xFEFC, Script::OTHER},        Block{0xFF66, 0xFF9F, Script::KANA},
    Block{0x20000, 0x3FFFF, Script::IDEOGRAPHS},
};

Script script_of(char32_t c) {
  if (c < BLOCKS.front().first || text::is_ideograph(c)) return Script::NONE;
  const auto it = std::upper_bound(BLOCKS.begin(), BLOCKS.end(), c,
                                   [](char32_t x, const Block& b) { return x < b.first; });
  return c <= std::prev(it)->last ? std::prev(it)->script : Script::NONE;
}

// Labels in the scripts themselves, with their colon.
const Regex RE_PERSON_LABEL(
    "RE_PERSON_LABEL",
    UR"((?i)(?:директор|представитель|ФИО|ф\.и\.о\.|в лице|подпись|διευθυντής|εκπρόσωπος)"
    UR"(|담당자|대표이사|대표자|성명|이름|担当者?|氏名|名前|代表者|代表取締役|الاسم|המנהל|שם) ?:$)");
const Regex RE_ORGANIZATION_LABEL(
    "RE_ORGANIZATION_LABEL",
    UR"((?i)(?:продавец|покупатель|заказчик|исполнитель|поставщик|банк|εταιρεία|상호|회사명|매도인|매수인|会社名|売主|買主|الشركة) ?:$)");
const Regex RE_ADDRESS_LABEL("RE_ADDRESS_LABEL",
                             UR"((?i)(?:адрес|διεύθυνση|주소|住所|所在地|العنوان|כתובת) ?:$)");

// Behind a name: 様, さん, 님, 씨
const Regex RE_HONORIFIC("RE_HONORIFIC", UR"( ?(?:様|さま|さん|氏|님|씨|귀하))");

// ООО, ЗАО «…»: a company
const Regex RE_CYRILLIC_COMPANY(
    "RE_CYRILLIC_COMPANY",
    UR"(\b(?:ООО|ОАО|ЗАО|ПАО|НАО|АО|ИП|ТОО|ТОВ|ПАТ|ГУП|ФГУП|ЧП|ОсОО) ?(?:[«"“„][^«»"“”„\n\t]{1,60}[»"”]|\p{Lu}[\p{L}.-]+(?: \p{Lu}[\p{L}.-]+){0,3}))");

// 株式会社ソニー, ソニー株式会社, (주)한빛, 한빛 주식회사
const Regex RE_EASTERN_COMPANY(
    "RE_EASTERN_COMPANY",
    UR"((?:株式会社|有限会社|合同会社|[(（]株[)）]|㈱) ?[\u4e00-\u9fff]{0,4}?[\u30a1-\u30fcA-Za-z&]{1,20})"
    UR"(|(?:(?![由与和向对及在为])[\u4e00-\u9fff]){0,3}[\u30a1-\u30fcA-Za-z]{1,20}[\u4e00-\u9fff]{0,4}(?:株式会社|有限会社|合同会社|[(（]株[)）]))"
    UR"(|(?:[(（]주[)）]|㈜|주식회사|유한회사) ?[\uac00-\ud7a3A-Za-z0-9]{1,20})"
    UR"(|[\uac00-\ud7a3A-Za-z0-9]{1,20}(?: ?[(（]주[)）]|㈜| ?주식회사| ?유한회사))");

// Иванов Иван, И. И. Иванов, Πέτρος Παπαδόπουλος: two capitals in a row
const Regex RE_CASED_NAME(
    "RE_CASED_NAME",
    UR"((?:\p{Lu}[\p{Ll}\p{M}]+(?:-\p{Lu}\p{Ll}+)?|\p{Lu}\.|\p{Lu}{3,})(?: ?(?:\p{Lu}[\p{Ll}\p{M}]+(?:-\p{Lu}\p{Ll}+)?|\p{Lu}\.|\p{Lu}{3,})){1,3})");

// ジョン・スミス
const Regex RE_DOTTED_KANA("RE_DOTTED_KANA",
                           UR"([\u30a1-\u30faー]{2,}(?:[・=][\u30a1-\u30faー]{2,}){1,3})");

bool is_content(char32_t c) {
  return text::is_ascii_alnum(c) || text::is_ideograph(c) || (c >= 0xFF10 && c <= 0xFF19) ||
         (c >= 0xFF21 && c <= 0xFF3A) || (c >= 0xFF41 && c <= 0xFF5A);
}

// What may stand inside a name, between two of its letters.
bool is_inner(char32_t c) {
  constexpr std::u32string_view INNER = U" .-'’·・=‐";
  return INNER.find(c) != INNER.npos;
}

class Finder {
 public:
  Finder(const NlpArtifacts& a, std::vector<RecognizerResult> results)
      : a_(a), t_(a.text), results_(std::move(results)) {}

  std::vector<RecognizerResult> run() {
    find_runs();
    if (runs_.empty()) return std::move(results_);
    index_results();
    for (const auto* regex : {&RE_CYRILLIC_COMPANY, &RE_EASTERN_COMPANY}) {
      for_matches(*regex, entity_type::ORGANIZATION);
    }
    for (const auto* regex : {&RE_CASED_NAME, &RE_DOTTED_KANA}) {
      for_matches(*regex, entity_type::PERSON);
    }
    for (const Run& run : runs_) read(run);
    for (std::size_t i = 0; i < known_; ++i) widen(i);
    return merged();
  }

 private:
  // Words of one script, with what stands between them.
  struct Run {
    std::size_t start;
    std::size_t end;
    Script script;
  };

  void find_runs() {
    for (std::size_t i = 0; i < t_.size(); ++i) {
      const Script script = script_of(t_[i]);
      if (script == Script::NONE) continue;
      Run run{i, i + 1, script};
      for (++i; i < t_.size(); ++i) {
        if (script_of(t_[i]) == script)
          run.end = i + 1;
        else if (!is_inner(t_[i]))
          break;
      }
      i = run.end - 1;
      runs_.push_back(run);
    }
  }

  void index_results() {
    known_ = results_.size();
    for (std::size_t i = 0; i < known_; ++i) by_end_.emplace_back(results_[i].end, i);
    std::sort(by_end_.begin(), by_end_.end());
  }

  void add(std::string_view type, std::size_t start, std::size_t end) {
    while (end > start && (is_inner(t_[end - 1]) && t_[end - 1] != U'.')) --end;
    if (end > start) found_.push_back(make_hit(type, start, end, OTHER_SCRIPT_SCORE));
  }

  // Looks only at lines that hold such letters.
  void for_matches(const Regex& regex, std::string_view type) {
    std::size_t read_to = 0;
    for (const Run& run : runs_) {
      if (run.start < read_to) continue;
      const std::size_t base = line_start(run, read_to);
      const auto line = line_of(run, base);
      for (const auto& m : regex.find_all(line)) {
        const auto surface = m.text();
        const bool other = std::any_of(surface.begin(), surface.end(),
                                       [](char32_t c) { return script_of(c) != Script::NONE; });
        if (other) add(type, base + m.start(), ideographs_end(base + m.end()));
      }
      read_to = base + line.size();
    }
  }

  // 株式会社トヨタ + 自動車, but not + 签署
  std::size_t ideographs_end(std::size_t at) const {
    constexpr std::size_t LONGEST_REST = 4;
    if (script_of(t_[at - 1]) != Script::KANA) return at;
    std::size_t end = at;
    while (end < t_.size() && text::is_ideograph(t_[end])) ++end;
    const bool rest = end - at <= LONGEST_REST;
    return rest && !is_touched(a_.of(WordClass::CLAUSE_WORD), at, end) ? end : at;
  }

  std::size_t line_start(const Run& run, std::size_t least) const {
    std::size_t at = run.start;
    while (at > least && !is_cell_end(t_[at - 1])) --at;
    return at;
  }
  std::u32string_view line_of(const Run& run, std::size_t start) const {
    std::size_t end = run.end;
    while (end < t_.size() && !is_cell_end(t_[end])) ++end;
    return t_.substr(start, end - start);
  }

  // What stands around the run tells whether it is a name.
  void read(const Run& run) {
    const std::size_t start = run.script == Script::KANA ? surname_start(run.start) : run.start;
    if (const auto type = type_by_label(start)) {
      const auto m = RE_HONORIFIC.match_at(t_, run.end);
      const std::size_t end = m ? m->end() : run.end;
      add(*type, start, *type == entity_type::LOCATION ? end_of_address(run) : end);
      return;
    }
    if (const auto m = RE_HONORIFIC.match_at(t_, run.end); m && run.end - run.start <= LONGEST) {
      add(entity_type::PERSON, last_words(run), m->end());
      return;
    }
    read_titles(run);
    read_company_form(run);
    read_brackets(run);
  }

  static constexpr std::size_t LONGEST = 20;  // of a name without marks of its own

  // 田中 + さくら
  std::size_t surname_start(std::size_t at) const {
    constexpr std::size_t LONGEST_SURNAME = 3;
    std::size_t start = at;
    while (start > 0 && at - start < LONGEST_SURNAME && text::is_ideograph(t_[start - 1])) --start;
    return start;
  }

  // Of a longer sentence the last two words may be a name.
  std::size_t last_words(const Run& run) const {
    std::size_t start = run.end;
    int blanks = 0;
    while (start > run.start && (t_[start - 1] != U' ' || ++blanks < 2)) --start;
    return start;
  }

  std::optional<std::string_view> type_by_label(std::size_t start) const {
    std::size_t at = start;
    while (at > 0 && (t_[at - 1] == U' ' || t_[at - 1] == U'\u3000' || t_[at - 1] == U'\t')) --at;
    if (at == 0 || a_.folded[at - 1] != U':') return std::nullopt;
    constexpr std::size_t LONGEST_LABEL = 24;
    const auto before = std::u32string_view(a_.folded).substr(at - std::min(at, LONGEST_LABEL),
                                                              std::min(at, LONGEST_LABEL));
    if (RE_PERSON_LABEL.search(before)) return entity_type::PERSON;
    if (RE_ORGANIZATION_LABEL.search(before)) return entity_type::ORGANIZATION;
    if (RE_ADDRESS_LABEL.search(before)) return entity_type::LOCATION;
    --at;
    while (at > 0 && a_.folded[at - 1] == U' ') --at;
    if (label_ends_at(WordClass::PERSON_LABEL, at)) return entity_type::PERSON;
    if (label_ends_at(WordClass::ORGANIZATION_LABEL, at)) return entity_type::ORGANIZATION;
    if (label_ends_at(WordClass::ADDRESS_LABEL, at)) return entity_type::LOCATION;
    return std::nullopt;
  }

  bool label_ends_at(WordClass label, std::size_t at) const { return word_before(label, at) < at; }

  // The start of the word that ends at `at`; `at` if there is none.
  std::size_t word_before(WordClass word_class, std::size_t at) const {
    const auto& words = a_.of(word_class);
    const auto it = first_from(words, at);
    return it != words.begin() && std::prev(it)->end == at ? std::prev(it)->start : at;
  }

  // ул. Ленина, д. 5, кв. 12
  std::size_t end_of_address(const Run& run) const {
    constexpr std::size_t LONGEST_ADDRESS = 100;
    constexpr std::u32string_view MARKS = U" .,-/№#'’";
    std::size_t end = run.end;
    for (std::size_t i = end; i < t_.size() && i - run.start < LONGEST_ADDRESS; ++i) {
      if (script_of(t_[i]) == run.script || text::is_ascii_digit(t_[i]))
        end = i + 1;
      else if (MARKS.find(t_[i]) == MARKS.npos)
        break;
    }
    return end;
  }

  // Mr. Иванов, Иванов先生
  void read_titles(const Run& run) {
    std::size_t at = run.start;
    if (at > 0 && t_[at - 1] == U' ') --at;
    if (at > 0 && t_[at - 1] == U'.' && word_before(WordClass::EN_TITLE, at) == at) --at;
    if (const std::size_t title = word_before(WordClass::EN_TITLE, at); title < at) {
      add(entity_type::PERSON, title, first_words(run));
    }
    const std::size_t behind = run.end + (run.end < t_.size() && t_[run.end] == U' ' ? 1 : 0);
    const std::size_t end = end_of_word_at(a_.of(WordClass::PERSON_TITLE), behind);
    if (end > behind && run.end - run.start <= LONGEST) {
      add(entity_type::PERSON, run.start, end);
    }
  }

  // The words of a name at the start of a run: those with capitals, or the first two.
  std::size_t first_words(const Run& run) const {
    if (const auto m = RE_CASED_NAME.match_at(t_, run.start)) return m->end();
    std::size_t end = run.start;
    int blanks = 0;
    while (end < run.end && (t_[end] != U' ' || ++blanks < (run.script == Script::CASED ? 1 : 2))) {
      ++end;
    }
    return end;
  }

  // Ромашка Co., Ltd.; Ромашка有限公司
  void read_company_form(const Run& run) {
    std::size_t at = run.end;
    constexpr std::u32string_view GAP = U" »”\",";
    while (at < t_.size() && at - run.end < 3 && GAP.find(t_[at]) != GAP.npos) ++at;
    for (const auto form : {WordClass::EN_LEGAL_FORM, WordClass::COMPANY_FORM}) {
      const std::size_t end = end_of_word_at(a_.of(form), at);
      if (end == at) continue;
      const std::size_t start = run.end - run.start > LONGEST ? last_words(run) : run.start;
      add(entity_type::ORGANIZATION, start, end);
    }
  }

  // Ivan Petrov (Иван Петров), 田中（たなか）: of the kind of the name before
  void read_brackets(const Run& run) {
    if (run.start == 0 || run.end >= t_.size()) return;
    if (a_.folded[run.start - 1] != U'(' || a_.folded[run.end] != U')') return;
    std::size_t at = run.start - 1;
    if (at > 0 && t_[at - 1] == U' ') --at;
    const auto end = static_cast<std::ptrdiff_t>(at);
    const auto it =
        std::lower_bound(by_end_.begin(), by_end_.end(), std::pair(end, std::size_t{0}));
    for (auto hit = it; hit != by_end_.end() && hit->first == end; ++hit) {
      const auto& r = results_[hit->second];
      if (!is_name(r.entity_type)) continue;
      add(r.entity_type, static_cast<std::size_t>(r.start), run.end + 1);
      return;
    }
  }

  static bool is_name(std::string_view type) {
    return type == entity_type::PERSON || type == entity_type::ORGANIZATION ||
           type == entity_type::LOCATION;
  }

  // A hit that ends inside such a word, or a hit on it beside a letter of its own.
  void widen(std::size_t index) {
    auto& r = results_[index];
    if (!is_name(r.entity_type)) return;
    const auto it = std::upper_bound(runs_.begin(), runs_.end(), static_cast<std::size_t>(r.end),
                                     [](std::size_t at, const Run& run) { return at < run.end; });
    if (it == runs_.end() || it->script == Script::IDEOGRAPHS) return;
    if (it->start < static_cast<std::size_t>(r.end) &&
        it->start >= static_cast<std::size_t>(r.start)) {
      std::size_t end = static_cast<std::size_t>(r.end);
      while (end < it->end && script_of(t_[end]) == it->script) ++end;
      r.end = static_cast<std::ptrdiff_t>(end);
    }
  }

  // The results, with the longest of what was found in place of what lies within it.
  std::vector<RecognizerResult> merged() {
    std::sort(found_.begin(), found_.end(), [](const auto& x, const auto& y) {
      return x.start != y.start ? x.start < y.start : x.end > y.end;
    });
    std::vector<RecognizerResult> kept;
    SpanCover cover;
    for (auto& r : found_) {
      if (!kept.empty() && r.start < kept.back().end) {
        kept.back().end = std::max(kept.back().end, r.end);
      } else {
        kept.push_back(std::move(r));
      }
    }
    for (const auto& r : kept) cover.add(r.start, r.end);
    cover.finish();
    std::erase_if(results_, [&](const auto& r) {
      return is_name(r.entity_type) && cover.contains(r.start, r.end);
    });
    results_.insert(results_.end(), kept.begin(), kept.end());
    return std::move(results_);
  }

  const NlpArtifacts& a_;
  std::u32string_view t_;
  std::vector<RecognizerResult> results_;
  std::vector<Run> runs_;
  std::vector<RecognizerResult> found_;
  std::vector<std::pair<std::ptrdiff_t, std::size_t>> by_end_;
  std::size_t known_ = 0;
};

}  // namespace

std::vector<RecognizerResult> add_names_in_other_scripts(const NlpArtifacts& artifacts,
                                                         std::vector<RecognizerResult> results) {
  return Finder(artifacts, std::move(results)).run();
}

std::vector<RecognizerResult> unmaskable_names(std::u32string_view text,
                                               const std::vector<RecognizerResult>& results) {
  std::vector<RecognizerResult> out;
  for (const auto& r : results) {
    const auto surface = text::slice(text, r.start, r.end);
    const bool letter = std::any_of(surface.begin(), surface.end(),
                                    [](char32_t c) { return script_of(c) != Script::NONE; });
    if (letter && std::none_of(surface.begin(), surface.end(), is_content)) out.push_back(r);
  }
  return out;
}

}  // namespace core::nlp
