#include <string>
#include <unordered_set>

#include "core/nlp/contract_language.hpp"
#include "core/nlp/hits.hpp"
#include "core/nlp/latin_lexicon.hpp"
#include "core/nlp/latin_tokens.hpp"
#include "core/nlp/name_finders.hpp"
#include "core/nlp/rare_characters.hpp"
#include "core/text/lexicon.hpp"
#include "core/text/regex.hpp"
#include "core/text/word_set.hpp"

namespace core::text::lexicon_data {
extern const std::string_view places_en;
}

namespace core::nlp {
namespace {

using recognition::WordClass;
using text::Regex;

constexpr double LATIN_CITY_SCORE = 0.7;
constexpr double LATIN_ADDRESS_SCORE = 0.85;
constexpr std::size_t LONGEST_ADDRESS = 12;  // parts between commas

// A part of a date or an amount, a clause, a telephone: no part of an address.
const Regex RE_NOT_ADDRESS(
    "RE_NOT_ADDRESS",
    UR"((?i)\b(?:jan(?:uary)?|feb(?:ruary)?|mar(?:ch)?|apr(?:il)?|may|june?|july?|aug(?:ust)?|sept?(?:ember)?|oct(?:ober)?|nov(?:ember)?|dec(?:ember)?)\b.{0,8}\d|[@%$€£]|^(?:section|article|clause|schedule|tel|fax|phone|iban|bic|swift|vat|attn)\b(?! Aviv)|branch$|\b(?:usd|eur|rmb|vat|org|iban|hrb|dated)\b|\d[\d ]{9}|\b\d{1,2}[./]\d{1,2}[./](?:19|20)\d{2}\b|\b(?:19|20)\d{2}-\d{2}-\d{2}\b)");

// 69007 Lyon, NJ 07086, EC4N 6AP, K1A 0B1, D02 AF30, 114 79 Stockholm, 01422-000 São
// Paulo, 1017 CB Amsterdam, 339411
const Regex RE_POSTAL_CODE(
    "RE_POSTAL_CODE",
    UR"((?<![\d-])\d{4,6}(?![\d-])|\b[A-Z]{1,2}\d{1,2}[A-Z]? \d[A-Z]{2}\b|\b[A-Z]\d[A-Z] \d[A-Z]\d\b|\b[A-Z]\d{2} [A-Z0-9]{4}\b|\b\d{3} \d{2} \p{Lu}|\b\d{5}-\d{3,4}\b|\b[A-Z]{1,2}-\d{4,5}\b)");

// A street with its number or a post box: enough for an address by itself. 12 Harbour
// Street; Lindenstraße 4a; 14 rue du Gave; Via Roma, 27; ul. Młyńska 14/3; P.O. Box 94
const Regex RE_STREET(
    "RE_STREET",
    UR"((?<![\p{L}\d])(?:\d{1,5}[A-Za-z]?(?:[-/]\d{1,4})?,? (?:(?:[NSEW]\.?|\p{Lu}[\p{L}'.-]+|ka|van|de|der|la|du|von|los|las|el|da|dos) ){1,4}(?:Street|Road|Avenue|Lane|Drive|Boulevard|Way|Court|Place|Terrace|Crescent|Close|Square|Highway|Parkway|Trail|Row|Quay|Wharf|Walk|Mews|Gardens|Hill|Esplanade|Parade|Pike|Loop|Circle|Broadway|Alley|Turnpike|Crossing|Expressway|Freeway|Causeway|Bypass|Promenade|Heights|Cove|Plaza|Croft|Wynd|Arcade|Chase|Rise|Vale|St|Rd|Ave|Av|Blvd|Ln|Hwy|Pkwy|Dr|Ct|Pl|Ter|Cir|Trl|Cv|Sq|Tpke|Expy|Fwy|STREET|ROAD|AVENUE|LANE|DRIVE|BOULEVARD|HIGHWAY|PARKWAY|COURT|PLACE|SQUARE|TERRACE)(?!\p{L})(?:\.? (?:[NSEW]|NE|NW|SE|SW)(?![\p{L}\d]))?|(?:\p{Lu}[\p{L}.-]+ ){1,3}(?:Straße|Strasse|Gasse|Platz|Allee|Weg|Chaussee|Promenade|Damm|Ufer|Ring|Markt|Steig|Zeile|Kai) \d{1,4}(?! ?%)|\p{Lu}[\p{L}-]*(?:stra(?:ß|ss)e|str\.|gasse|weg|platz|allee|ring|damm|ufer|chaussee|gatan?|gaten?|vägen|veien|vegen|vej|gade|straat|laan|plein|kade|gracht|singel|dijk|katu|utca) \d{1,4}(?! ?%)|\d{1,4}(?: ?(?:bis|ter))?,? (?:rue|avenue|boulevard|place|quai|chemin|route|impasse|allée|cours|Rue|Via|Viale|Piazza|Corso|Largo|Calle|C/|Av(?:da?)?\.|Avenida|Paseo|Rua|Rodovia|Travessa|Praça|ul\.|al\.|os\.|Jalan|Jln?\.?|Lorong|Persiaran|Calea|Strada|Bd\.)(?: (?:de|du|des|del|della|di|la|las|los|le|les|da|das|do|dos))* ?(?:(?:dell|l|d)')?\p{Lu}[\p{L}'.-]+(?: (?:[a-z]{1,3} )?\p{Lu}[\p{L}'.-]+){0,3}|(?:rue|avenue|boulevard|place|quai|chemin|route|impasse|allée|cours|Rue|Via|Viale|Piazza|Corso|Largo|Calle|C/|Av(?:da?)?\.|Avenida|Paseo|Rua|Rodovia|Travessa|Praça|ul\.|al\.|os\.|Jalan|Jln?\.?|Lorong|Persiaran|Calea|Strada|Bd\.)(?: (?:de|du|des|del|della|di|la|las|los|le|les|da|das|do|dos))* ?(?:(?:dell|l|d)')?\p{Lu}[\p{L}'.-]+(?: (?:[a-z]{1,3} )?\p{Lu}[\p{L}'.-]+){0,3},? (?:n[.º]?o? ?)?\d{1,5}|(?:P\.? ?O\.? ?Box|PO BOX|P\.O\. BOX|POSTFACH|Postbus|Postboks|Boîte postale|Casella Postale|Apdo\.?|Postfach|Private Bag|Locked Bag|GPO Box|Apartado|Casilla|Caixa Postal|B\.?P\.?|Rural Route|R\.R\.|DX|RMB) [A-Z]?\d[\d-]*(?: ?[\u2013-] ?\d{4,6}(?!\d))?))");

// A street without a number: North Main Street
const Regex RE_STREET_NAME(
    "RE_STREET_NAME",
    UR"((?<![\p{L}\d])(?:\p{Lu}[\p{L}'-]+ ){1,3}(?:Street|Road|Avenue|Lane|Boulevard|Crescent)(?!\p{L}))");

// New York Convention, Hamburg Rules: the place is part of the name of a rule.
constexpr auto NOT_BEHIND_PLACE =
    text::words({U"Convention", U"Rules", U"Act", U"Law", U"Code", U"Ordinance", U"Protocol",
                 U"Regulation", U"Regulations", U"Time", U"Accord", U"Agreement", U"Treaty",
                 U"Arbitration", U"GDPR", U"General", U"Statutes", U"Constitution"});

// What follows the names of places in the names of things: China clay, Portland cement
constexpr auto NAMED_AFTER_PLACES =
    text::words({U"clay", U"ink", U"cement", U"nut", U"nuts", U"syndrome", U"disease", U"fever",
                 U"virus", U"encephalitis", U"pepper", U"rubber", U"gauge", U"stone"});

// Countries, which are places of their own behind a town: Piraeus, Greece. Not states and
// provinces: Wilmington, Delaware.
bool is_country(std::u32string_view name) {
  static const auto countries = [] {
    std::unordered_set<std::u32string> out;
    for (const auto& row : text::lexicon_rows(text::lexicon_data::places_en)) {
      if (row.size() > 1 && row[1] == U"country") out.emplace(row[0]);
    }
    return out;
  }();
  if (name.starts_with(U"the ") || name.starts_with(U"The ")) name.remove_prefix(4);
  return countries.contains(std::u32string(name));
}

struct Piece {
  std::size_t start = 0;
  std::size_t end = 0;
  std::size_t head = 0;  // how far the words from the start fit into an address
  std::size_t tail = 0;  // from where the words to the end fit
  bool open = false;     // no address reaches beyond it to the right
  bool fits() const { return tail == start && head == end && start < end; }
};

constexpr bool is_hard_break(char32_t c) {
  if (text::is_ideograph(c)) return true;
  return is_cell_end(c) || c == U';' || c == U'(' || c == U')' || c == U'"' || c == U':' ||
         c == 0x201C || c == 0x201D || is_han(c) || c == U'，' || c == U'。' || c == U'；' ||
         c == U'、' || c == U'|' || c == U'[' || c == U']' || c == U'_' || c == U'\u300A';
}

// City, state and code, or code and city, in a line of their own below a street
const Regex RE_CITY_LINE(
    "RE_CITY_LINE",
    UR"((?<=[\p{L}\d.])\n(?=(?:\p{Lu}[\p{L}.'-]+ ){0,3}\p{Lu}[\p{L}.'-]+(?:,? [A-Z]{2,3}|, \p{Lu}\p{Ll}+(?: \p{Lu}\p{Ll}+)?) \d{4,5}|(?:[A-Z]{1,2}-)?\d{4,6}(?: [A-Z]{2})? \p{Lu}\p{L}+|\d{3} \d{2} \p{Lu}\p{L}+|(?:\p{Lu}[\p{L}'-]+,? ){1,3}[A-Z]{1,2}\d{1,2}[A-Z]? \d[A-Z]{2}))",
    Regex::Scanned::YES);

// (MO) behind an Italian city
const Regex RE_PROVINCE("RE_PROVINCE", UR"((?<=\p{L} )\([A-Z]{2}\)(?=[, \n]))",
                        Regex::Scanned::YES);

// "Caddesi No: 185": no label
const Regex RE_NUMBER_COLON("RE_NUMBER_COLON", UR"((?<=\p{L} No):(?= ?\d))", Regex::Scanned::YES);

// Words of addresses in lower case
constexpr auto LOWER_STREET_WORDS = text::words(
    {U"rue",     U"avenue",   U"boulevard", U"place", U"quai",  U"allée", U"chemin", U"route",
     U"cours",   U"impasse",  U"via",       U"viale", U"calle", U"paseo", U"rua",    U"ul.",
     U"al.",     U"os.",      U"pl.",       U"út",    U"utca",  U"tér",   U"krt.",   U"mnt",
     U"tee",     U"tn",       U"pst",       U"iela",  U"pr.",   U"g.",    U"bis",    U"ter",
     U"m.",      U"nr",       U"nr.",       U"no.",   U"izq.",  U"dcha.", U"floor",  U"beon-gil",
     U"sok.",    U"cad.",     U"str.",      U"bd.",   U"esq.",  U"unit",  U"près",   U"sur",
     U"ro",      U"gil",      U"daero",     U"kom",   U"cho",   U"apto.", U"apt.",   U"dpto.",
     U"km",      U"piso",     U"étage",     U"c/o",   U"of.",   U"desp.", U"loc.",   U"sala",
     U"náměstí", U"námestie", U"ulica",     U"ulice", U"sokak", U"mah.",  U"trg",    U"cesta",
     U"körút",   U"körútja",  U"prospekt",  U"las",   U"los",   U"les",   U"das",    U"el",
     U"im",      U"bei",      U"ob"});

// Canton of Ticino: the head belongs to the name.
const Regex RE_HEADED_PLACE(
    "RE_HEADED_PLACE",
    UR"((?<![\p{L}])(?:Canton|Parish|Port|Isle|Principality|Emirate|Prefecture|Duchy|Commune|Municipality|Borough) of (?:the )?\p{Lu}[\p{L}'-]+(?: \p{Lu}\p{Ll}[\p{L}'-]+)?)");

// What may stand in front of a street without a number
constexpr auto STREET_LINKS =
    text::words({U"in", U"at", U"on", U"to", U"from", U"off", U"along", U"near", U"of", U"into"});

// A line of an address below its first: Dublin 2, D02 AF30, Switzerland, Fort Wayne, IN 46802
const Regex RE_LINE_BELOW(
    "RE_LINE_BELOW",
    UR"(\n[ >]{0,8}((?:[\p{Lu}\d][\p{L}\d.'-]*(?:,? |,?(?=\n|$))|(?:of|de|the|du|am|an) ){1,6})(?=\n|$))");

std::u32string prepared(const NlpArtifacts& a) {
  const std::u32string_view folded = a.folded;
  std::u32string out = unwrapped(folded);
  const auto next_ordinal = [&](std::size_t from) {
    return find_rare(out, from, {0xBA, 0xAA, 0xB0, 0xB0});
  };
  for (std::size_t i = next_ordinal(0); i < out.size(); i = next_ordinal(i + 1)) out[i] = U'o';
  for (const auto& m : RE_CITY_LINE.find_all(folded, a.index)) {
    const std::size_t line = folded.rfind(U'\n', m.start() - 1) + 1;
    const auto above = folded.substr(line, m.start() - line);
    if (std::any_of(above.begin(), above.end(), text::is_ascii_digit)) out[m.start()] = U' ';
  }
  for (const auto& m : RE_NUMBER_COLON.find_all(folded, a.index)) out[m.start()] = U'.';
  for (const auto& m : RE_PROVINCE.find_all(folded, a.index))
    out[m.start()] = out[m.end() - 1] = U'-';
  return out;
}

class LatinPlaceSearch {
 public:
  explicit LatinPlaceSearch(const NlpArtifacts& a)
      : a_(a), unwrapped_(prepared(a)), t_(unwrapped_) {}

  std::vector<RecognizerResult> run() {
    HitCursor streets(streets_);
    HitCursor places(a_.of(WordClass::EN_PLACE));
    HitCursor street_words(a_.of(WordClass::EN_STREET_WORD));
    for (std::size_t i = 0; i < t_.size();) {
      while (i < t_.size() && is_hard_break(t_[i])) ++i;
      std::size_t end = i;
      while (end < t_.size() && !is_hard_break(t_[end])) ++end;
      find_streets(i, end);
      if (streets.touches(i, end) || places.touches(i, end) || street_words.touches(i, end)) {
        read_stretch(i, end);
      }
      i = end;
    }
    lines_below();
    single_places();
    towns_of_regions();
    return std::move(out_);
  }

 private:
  void add(std::size_t start, std::size_t end, double score) {
    add_by_line(a_.folded, anonymization::entity_type::LOCATION, start, end, score, out_);
  }

  // A stretch without hard breaks: pieces between commas, joined to addresses.
  void read_stretch(std::size_t start, std::size_t end) {
    std::vector<Piece> chain;
    while (start < end) {
      const std::size_t comma =
          start + std::min(t_.substr(start, end - start).find(U", "), end - start);
      add_piece(read_piece(start, comma), chain);
      if (chain.size() == LONGEST_ADDRESS) finish(chain);
      start = comma + 2;
    }
    finish(chain);
  }

  void add_piece(const Piece& piece, std::vector<Piece>& chain) {
    const bool follows = !chain.empty();
    if (follows && ends_address(chain.back(), piece)) finish(chain);
    if (is_foreign(follows ? piece.start : piece.tail, follows ? piece.head : piece.end)) {
      finish(chain);
      return;
    }
    // The address may end within the piece, and the next one begin: "of Building 5".
    bool used = false;
    if (follows && !piece.fits()) {
      used = piece.head > piece.start &&
             (!opens_with_connective(piece) || is_country_with_article(piece));
      if (used) chain.push_back({piece.start, piece.head, piece.head, piece.start});
      finish(chain);
    }
    if (piece.tail < piece.end && (!used || piece.tail > piece.head)) chain.push_back(piece);
  }

  // …, Austria, FN 418273 k: behind the country only a code or another region belongs to the
  // address.
  bool ends_address(const Piece& last, const Piece& next) const {
    const auto name = t_.substr(last.start, last.head - last.start);
    if (last.head != last.end || !is_country(name)) return false;
    const auto rest = t_.substr(next.start, next.end - next.start);
    if (rest.empty() || RE_POSTAL_CODE.full_match(rest)) return false;
    return end_of_word_at(a_.of(WordClass::EN_REGION), next.start) == next.start;
  }

  // 1015 CX Amsterdam, the Netherlands
  bool is_country_with_article(const Piece& piece) const {
    constexpr std::size_t ARTICLE = 4;
    return t_.substr(piece.start, ARTICLE) == U"the " &&
           end_of_word_at(a_.of(WordClass::EN_REGION), piece.start + ARTICLE) == piece.head;
  }

  bool opens_with_connective(const Piece& piece) const {
    return is_connective(token_after(t_, piece.start).in(t_));
  }

  // Whether what would become part of an address is something else.
  bool is_foreign(std::size_t start, std::size_t end) const {
    return start < end && (RE_NOT_ADDRESS.search(t_.substr(start, end - start)).has_value() ||
                           (!is_touched(streets_, start, end) && ends_in_legal_form(end)));
  }

  // Not "Corporation Drive" or "Co. Cork"
  bool ends_in_legal_form(std::size_t end) const {
    const auto& forms = a_.of(WordClass::EN_LEGAL_FORM);
    const auto it = first_from(forms, end);
    if (it == forms.begin() || std::prev(it)->end + 1 < end) return false;
    const std::size_t start = std::prev(it)->start;  // LS10 1AB
    return start == 0 || !text::is_ascii_digit(t_[start - 1]);
  }

  Piece read_piece(std::size_t start, std::size_t end) const {
    while (start < end && t_[start] == U' ') ++start;
    while (end > start && (t_[end - 1] == U' ' || t_[end - 1] == U'.' || t_[end - 1] == U','))
      --end;
    Piece piece{start, end, start, end};
    for (std::size_t at = start; at < end;) {
      const Token token = token_after(t_, at);
      if (token.empty() || !fits(token)) break;
      if (!is_connective(token.in(t_))) piece.head = std::min(token.end, end);
      at = token.end;
      if (at < end && ends_sentence(token.in(t_))) {
        --piece.head;
        break;
      }
    }
    for (std::size_t at = end; at > start;) {
      const Token token = token_before(t_, at);
      if (token.empty() || token.start < start || !fits(token) || ends_other(token, piece)) break;
      if (!is_connective(token.in(t_))) piece.tail = token.start;
      at = token.start;
    }
    return piece;
  }

  bool fits(const Token& token) const {
    const auto word = token.in(t_);
    if (is_connective(word) && word != U"and" && word != U"for") return true;
    if (is_covered(streets_, token.start, token.end)) return true;
    if (is_term_of_trade(word)) return false;
    if (word == U"and" || is_small_capitals(word)) return false;
    // The, In, This: a sentence begins. The Hague
    if (is_upper(word.front()) && is_small_word(word) && word != U"A" && word != U"No." &&
        word != U"May" && !is_covered(a_.of(WordClass::EN_STREET_WORD), token.start, token.end) &&
        word != U"No" && !is_covered(a_.of(WordClass::EN_PLACE), token.start, token.end)) {
      return false;
    }
    return is_upper(word.front()) || text::is_ascii_digit(word.front()) || word.front() == U'#' ||
           (word.front() == U'-' && word.size() == 4) || is_lower_street_word(word) ||
           is_elided(word);
  }

  // CFR Pasir Gudang: terms of delivery
  static bool is_term_of_trade(std::u32string_view word) {
    static constexpr auto TERMS = text::words(
        {U"EXW", U"FCA", U"FAS", U"FOB", U"CFR", U"CIF", U"CPT", U"CIP", U"DAP", U"DPU", U"DDP",
         U"DAT", U"DDU", U"CNF", U"C&F", U"FOR", U"FOT", U"Incoterms", U"INCOTERMS"});
    return TERMS.contains(word);
  }

  // d'Albret, dell'Artigianato
  static bool is_elided(std::u32string_view word) {
    const std::size_t apostrophe = word.find(U'\'');
    return apostrophe != word.npos && apostrophe > 0 && apostrophe < 5 &&
           apostrophe + 1 < word.size() && is_upper(word[apostrophe + 1]);
  }

  // Also where the comma behind has cost the word its full stop: 2o izq., 28027 Madrid
  static bool is_lower_street_word(std::u32string_view word) {
    return LOWER_STREET_WORDS.contains(word) ||
           (is_lower(word.front()) && LOWER_STREET_WORDS.contains(std::u32string(word) + U'.'));
  }

  // LOCATED AT, SHALL: in a text set in capitals
  static bool is_small_capitals(std::u32string_view word) {
    return word.size() > 1 && std::none_of(word.begin(), word.end(), is_lower) &&
           is_small_word(word);
  }

  // 5AD. The: the sentence ends, as it does not behind St. or Blvd.
  static bool ends_sentence(std::u32string_view word) {
    constexpr std::size_t LONGEST_ABBREVIATION = 5;
    return word.back() == U'.' &&
           (word.size() > LONGEST_ABBREVIATION || text::is_ascii_digit(word.front()));
  }

  // "Brokers Limited of" before 30 Fenchurch Avenue, "Note." before a street
  bool ends_other(const Token& token, const Piece& piece) const {
    const auto word = token.in(t_);
    if (is_covered(streets_, token.start, token.end)) return false;
    const bool goes_on = token.end + 1 < piece.end && is_upper(t_[token.end + 1]);
    if (!goes_on && is_covered(a_.of(WordClass::EN_LEGAL_FORM), token.start, token.end)) {
      return true;
    }
    if (piece.tail >= piece.end) return false;
    if (word == U"of" && is_person_before(token, piece)) return true;
    return ends_sentence(word) || ((word == U"of" || word == U"at" || word == U"in") &&
                                   text::is_ascii_digit(t_[piece.tail]));
  }

  // Graham Ellerby of Rosehill Cottage. Not City of London.
  bool is_person_before(const Token& of, const Piece& piece) const {
    constexpr int MOST_WORDS = 3;
    std::size_t at = of.start;
    for (int n = 0; n < MOST_WORDS; ++n) {
      const Token word = token_before(t_, at);
      if (word.empty() || word.start < piece.start || !is_upper(t_[word.start])) return false;
      if (is_touched(a_.of(WordClass::EN_STREET_WORD), word.start, word.end) ||
          is_touched(a_.of(WordClass::EN_PLACE), word.start, word.end)) {
        return false;
      }
      const auto kind = latin_name_class(word.in(t_));
      if (n > 0 && (kind == LatinNameClass::GIVEN || kind == LatinNameClass::BOTH)) return true;
      at = word.start;
    }
    return false;
  }

  void finish(std::vector<Piece>& chain) {
    chain.erase(chain.begin(), std::find_if(chain.begin(), chain.end(),
                                            [this](const Piece& p) { return begins_address(p); }));
    if (!chain.empty()) chain.front().tail = with_house_name(chain.front().tail);
    if (!chain.empty()) report(chain);
    chain.clear();
  }

  // Not the name of the person who lives there, not the number of a register.
  bool begins_address(const Piece& piece) const {
    std::size_t start = piece.tail;
    // Dr. Reinhild Mögling: no Drive
    if (t_.substr(start, 3) == U"Dr " || t_.substr(start, 3) == U"Dr.") start += 3;
    return holds_house_number(start, piece.end) || is_touched(streets_, start, piece.end) ||
           is_touched(a_.of(WordClass::EN_PLACE), start, piece.end) ||
           is_touched(a_.of(WordClass::EN_STREET_WORD), start, piece.end);
  }

  // at The Old Mill, 14 Bridge Street: where the address begins with the name of its house
  std::size_t with_house_name(std::size_t start) const {
    constexpr int MOST_WORDS = 4;
    if (start < 2 || t_.substr(start - 2, 2) != U", " || !text::is_ascii_digit(t_[start])) {
      return start;
    }
    std::size_t at = start - 2;
    for (int n = 0; n <= MOST_WORDS; ++n) {
      const Token token = token_before(t_, at);
      if (token.empty() || token.end != at) return start;
      if (token.in(t_) == U"at" && n > 0) return token.end + 1;
      if (!is_upper(t_[token.start]) || token.start == 0 || t_[token.start - 1] != U' ') {
        return start;
      }
      at = token.start - 1;
    }
    return start;
  }

  // 19/F, Unit 3; not UEN 202018842M, Licence No. TC007418
  bool holds_house_number(std::size_t start, std::size_t end) const {
    constexpr auto LONGEST = 5;
    for (std::size_t at = start; at < end;) {
      const Token token = token_after(t_, at);
      if (token.empty()) {
        ++at;
        continue;
      }
      const auto word = token.in(t_);
      const auto digits = std::count_if(word.begin(), word.end(), text::is_ascii_digit);
      if (digits > 0 && digits <= LONGEST) return true;
      at = token.end;
    }
    return false;
  }

  void report(const std::vector<Piece>& chain) {
    const std::size_t start = chain.front().tail;
    const std::size_t end = chain.back().head > chain.back().start && chain.size() > 1
                                ? chain.back().head
                                : chain.back().end;
    const auto surface = t_.substr(start, end - start);
    const bool place = is_touched(a_.of(WordClass::EN_PLACE), start, end);
    const bool street = is_touched(a_.of(WordClass::EN_STREET_WORD), start, end);
    const bool digit = std::any_of(surface.begin(), surface.end(), text::is_ascii_digit);
    const bool code = has_postal_code(surface, place);
    const bool address =
        (digit && chain.size() >= 2 && (place || code) &&
         (street || code || (chain.size() >= 3 && begins_with_house(start, end)))) ||
        is_touched(streets_, start, end) ||
        (chain.size() >= 2 && (place || chain.size() >= 3) &&
         RE_STREET_NAME.search(surface).has_value());
    if (address) {
      add(start, end, LATIN_ADDRESS_SCORE);
    } else if (chain.size() >= 2) {
      joined_places(chain);
    }
  }

  // A year counts only beside a place: 2023 Marlinspike
  static bool has_postal_code(std::u32string_view surface, bool place) {
    const auto m = RE_POSTAL_CODE.search(surface);
    if (!m) return false;
    const bool year =
        m->text().size() == 4 && (m->text().starts_with(U"19") || m->text().starts_with(U"20"));
    return place || !year;
  }

  // 3-14-8 Ginza, Plot 45, Ilica 242, but not 1 SB Qingdao
  bool begins_with_house(std::size_t start, std::size_t end) const {
    const auto first = t_.substr(start, t_.substr(0, end).find(U',', start) - start);
    const auto digits = std::count_if(first.begin(), first.end(), text::is_ascii_digit);
    return digits >= 2 || (digits == 1 && !text::is_ascii_digit(first.front()));
  }

  // Wilmington, Delaware
  void joined_places(const std::vector<Piece>& chain) {
    for (std::size_t i = 0; i + 1 < chain.size(); ++i) {
      const auto& places = a_.of(WordClass::EN_PLACE);
      const bool first = is_covered(places, chain[i].tail, chain[i].end);
      const bool second =
          is_covered(a_.of(WordClass::EN_REGION), chain[i + 1].start, chain[i + 1].head);
      const bool region = is_covered(a_.of(WordClass::EN_REGION), chain[i].tail, chain[i].end);
      const auto name = t_.substr(chain[i + 1].start, chain[i + 1].head - chain[i + 1].start);
      if (first && second && !region && !is_country(name))
        add(chain[i].tail, chain[i + 1].head, LATIN_ADDRESS_SCORE);
    }
  }

  // The lines of an address below the one that was found
  void lines_below() {
    constexpr int MOST_LINES = 3;
    const std::size_t found = out_.size();
    for (std::size_t i = 0; i < found; ++i) {
      auto at = static_cast<std::size_t>(out_[i].end);
      for (int n = 0; n < MOST_LINES; ++n) {
        while (at < t_.size() && (t_[at] == U',' || t_[at] == U' ')) ++at;
        const auto line = RE_LINE_BELOW.match_at(a_.folded, at);
        if (!line || !is_place_line(line->text(1))) break;
        out_.push_back(make_hit(anonymization::entity_type::LOCATION, line->start(1), line->end(1),
                                LATIN_ADDRESS_SCORE));
        at = line->end(1);
      }
    }
  }

  bool is_place_line(std::u32string_view line) const {
    const auto start = static_cast<std::size_t>(line.data() - a_.folded.data());
    if (RE_NOT_ADDRESS.search(line)) return false;
    return end_of_word_at(a_.of(WordClass::EN_PLACE), start) > start ||
           world_city_length(line) > 2 || RE_POSTAL_CODE.search(line).has_value();
  }

  // Chinese text is not searched.
  void find_streets(std::size_t start, std::size_t end) {
    const auto stretch = t_.substr(start, end - start);
    if (std::none_of(stretch.begin(), stretch.end(), is_upper)) return;
    if (std::any_of(stretch.begin(), stretch.end(), text::is_ascii_digit)) {
      for (const auto& m : RE_STREET.find_all(stretch)) {
        streets_.push_back({start + m.start(), start + m.end()});
      }
    }
    for (const auto& m : RE_HEADED_PLACE.find_all(stretch)) {
      add(start + m.start(), start + m.end(), LATIN_CITY_SCORE);
    }
    if (is_touched(a_.of(WordClass::EN_STREET_WORD), start, end)) {
      streets_without_number(start, stretch);
    }
  }

  void streets_without_number(std::size_t start, std::u32string_view stretch) {
    for (const auto& m : RE_STREET_NAME.find_all(stretch)) {
      const auto link = token_before(t_, start + m.start()).in(t_);
      const auto first = m.text().substr(0, m.text().find(U' '));
      if (STREET_LINKS.contains(link) && !is_contract_language(first)) {
        add(start + m.start(), start + m.end(), LATIN_CITY_SCORE);
      }
    }
  }

  void single_places() {
    for (const auto& place : a_.of(WordClass::EN_PLACE)) {
      if (place.end < t_.size() && t_[place.end] == U'$') continue;
      const Token next = token_after(t_, place.end);
      if (!next.empty() &&
          (NOT_BEHIND_PLACE.contains(next.in(t_)) || NAMED_AFTER_PLACES.contains(next.in(t_)))) {
        continue;
      }
      // York-Antwerp Rules
      const bool joined = !next.empty() && t_[next.start] == U'-';
      if (joined && NOT_BEHIND_PLACE.contains(token_after(t_, next.end).in(t_))) continue;
      add(place.start, place.end, LATIN_CITY_SCORE);
    }
  }

  // "to Research Triangle Park, North Carolina", "in Lowell, MA": a town that is not known,
  // before a region that is.
  void towns_of_regions() {
    for (const auto& region : a_.of(WordClass::EN_REGION)) {
      if (region.start < 3 || t_[region.start - 1] != U' ' || t_[region.start - 2] != U',')
        continue;
      const std::size_t start = town_start(region.start - 2);
      if (!is_town(start, region)) continue;
      // Muuga, Estonia: two places
      if (is_country(t_.substr(region.start, region.end - region.start))) {
        add(start, region.start - 2, LATIN_CITY_SCORE);
      } else {
        add(start, region.end, LATIN_CITY_SCORE + 0.05);
      }
    }
  }

  // Where the words with capitals begin that end at `end`.
  std::size_t town_start(std::size_t end) const {
    constexpr int LONGEST_TOWN = 4;
    for (int i = 0; i < LONGEST_TOWN; ++i) {
      const Token token = token_before(t_, end);
      if (token.empty() || !is_upper(token.in(t_).front())) break;
      end = token.start;
    }
    return end;
  }

  bool is_town(std::size_t start, const WordHit& region) const {
    constexpr auto LINKS = text::words({U"IN", U"at", U"from", U"in", U"near", U"of", U"to"});
    const std::size_t end = region.start - 2;
    const bool linked = LINKS.contains(token_before(t_, start).in(t_));
    const bool other = is_touched(a_.of(WordClass::EN_LEGAL_FORM), start, region.start) ||
                       is_touched(a_.of(WordClass::EN_ORGANIZATION_HEAD), start, region.start);
    // "Hong Kong, Macao": a list of two.
    if (is_covered(a_.of(WordClass::EN_REGION), start, end)) return false;
    return (linked || is_world_city(t_.substr(start, end - start))) && !other && start < end &&
           !is_contract_language(t_.substr(start, t_.find(U',', start) - start));
  }

  const NlpArtifacts& a_;
  std::u32string unwrapped_;
  std::u32string_view t_;
  std::vector<WordHit> streets_;  // with numbers
  std::vector<RecognizerResult> out_;
};

}  // namespace

LatinPlaceFinder::LatinPlaceFinder()
    : EntityRecognizer("LatinPlaceFinder", {std::string(anonymization::entity_type::LOCATION)}) {}

std::vector<RecognizerResult> LatinPlaceFinder::analyze(const NlpArtifacts& artifacts) const {
  return LatinPlaceSearch(artifacts).run();
}

}  // namespace core::nlp
