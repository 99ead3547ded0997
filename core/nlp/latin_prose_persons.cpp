#include "core/nlp/latin_prose_persons.hpp"

#include <algorithm>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>

#include "core/nlp/characters.hpp"
#include "core/nlp/contract_language.hpp"
#include "core/nlp/hits.hpp"
#include "core/nlp/latin_lexicon.hpp"
#include "core/nlp/latin_tokens.hpp"
#include "core/nlp/span_cover.hpp"
#include "core/text/word_set.hpp"

namespace core::nlp {
namespace {

using recognition::NlpArtifacts;
using recognition::RecognizerResult;
using recognition::WordClass;
namespace entity_type = anonymization::entity_type;

constexpr double LATIN_PROSE_PERSON_SCORE = 0.6;

constexpr auto NAME_PARTICLES = text::words(
    {U"van",   U"der",  U"den", U"de",    U"la",       U"las",  U"los",    U"von",    U"zu",
     U"zur",   U"vom",  U"bin", U"binti", U"bint",     U"ibn",  U"al",     U"el",     U"ul",
     U"ur",    U"dela", U"del", U"della", U"delle",    U"dei",  U"di",     U"da",     U"das",
     U"do",    U"dos",  U"du",  U"des",   U"le",       U"lo",   U"y",      U"e",      U"ter",
     U"ten",   U"ole",  U"ap",  U"ab",    U"ni",       U"ní",   U"nic",    U"uí",     U"ui",
     U"ó",     U"mac",  U"mc",  U"st",    U"st.",      U"san",  U"santa",  U"abu",    U"ben",
     U"bat",   U"ould", U"a/p", U"a/l",   U"s/o",      U"d/o",  U"v.d.",   U"v.",     U"freiin",
     U"binte", U"bte",  U"w/o", U"anak",  U"freiherr", U"graf", U"gräfin", U"giolla", U"de'"});

// Those that stand in names of persons alone
constexpr auto PERSON_PARTICLES = text::words(
    {U"ní",  U"nic",  U"uí",   U"ó",      U"mac",      U"bin", U"binti", U"binte", U"bte",
     U"w/o", U"anak", U"bint", U"ibn",    U"a/p",      U"a/l", U"s/o",   U"d/o",   U"van",
     U"von", U"ole",  U"ould", U"freiin", U"freiherr", U"ap",  U"v.d."});

// Behind a name
constexpr auto SUFFIXES =
    text::words({U"jr", U"jr.", U"sr", U"sr.", U"ii", U"iii", U"iv", U"neto", U"filho"});

constexpr auto POST_NOMINALS =
    text::words({U"kc",  U"qc",    U"sc",    U"rn",  U"md",  U"phd", U"cpa", U"mba", U"llm", U"llb",
                 U"jd",  U"jp",    U"obe",   U"mbe", U"cbe", U"fca", U"aca", U"cfa", U"pe",  U"np",
                 U"dds", U"frics", U"mrics", U"esq", U"san", U"ca",  U"cs",  U"pc",  U"sj"});

// What is abbreviated like the initials of a name
constexpr auto NO_INITIALS =
    text::words({U"U.S.", U"U.K.",   U"E.U.",   U"U.N.",   U"N.V.",   U"S.A.", U"B.V.", U"P.O.",
                 U"L.P.", U"D.C.",   U"L.C.",   U"A.G.",   U"K.K.",   U"A.S.", U"P.C.", U"P.S.",
                 U"N.A.", U"U.S.A.", U"R.O.C.", U"P.R.C.", U"P.R.",   U"S.R.", U"A.D.", U"B.C.",
                 U"A.M.", U"P.M.",   U"S.L.",   U"S.C.",   U"L.L.C.", U"N.B.", U"S.E.", U"N.W.",
                 U"N.E.", U"S.W.",   U"E.G.",   U"I.E.",   U"V.A.T.", U"C.V.", U"R.L.", U"N.Y."});

// "Schedule A. Stone"; a letter behind these counts
constexpr auto COUNTED = text::words(
    {U"section",  U"schedule", U"exhibit",  U"annex",      U"appendix", U"part",     U"class",
     U"series",   U"grade",    U"type",     U"group",      U"plan",     U"category", U"phase",
     U"option",   U"block",    U"unit",     U"building",   U"tower",    U"tier",     U"item",
     U"lot",      U"article",  U"clause",   U"attachment", U"level",    U"table",    U"figure",
     U"annexure", U"column",   U"division", U"no"});

// Nobody's title, but a profession or a rank before a name that is no everyday word
constexpr auto CALLINGS = text::words(
    {U"nurse",   U"sheikh",  U"chief",     U"dame",      U"lord",    U"lady",    U"sister",
     U"brother", U"uncle",   U"aunt",      U"cousin",    U"oom",     U"tannie",  U"pastor",
     U"rabbi",   U"imam",    U"det",       U"sgt",       U"lt",      U"avv",     U"ing",
     U"ir",      U"dott",    U"dra",       U"smt",       U"shri",    U"hon",     U"rev",
     U"fr",      U"cav",     U"mdm",       U"datuk",     U"dato",    U"doña",    U"maître",
     U"adv",     U"atty",    U"engr",      U"senator",   U"ar",      U"cpl",     U"insp",
     U"supt",    U"officer", U"detective", U"inspector", U"colonel", U"captain", U"mx",
     U"herrn",   U"signor",  U"signora",   U"senhor",    U"senhora", U"dipl",    U"sra",
     U"dna",     U"pani",    U"prof",      U"professor", U"geom",    U"rag",     U"major"});

// As the last word of a name of place or a firm rather than of a person
constexpr auto NOT_LAST = text::words(
    {U"park",   U"court",  U"hall",   U"house",   U"hill",   U"hills",   U"place",  U"bank",
     U"church", U"castle", U"bridge", U"college", U"school", U"gate",    U"square", U"market",
     U"day",    U"case",   U"center", U"centre",  U"island", U"bay",     U"beach",  U"port",
     U"river",  U"lake",   U"point",  U"trust",   U"fund",   U"works",   U"mills",  U"mill",
     U"farm",   U"farms",  U"field",  U"fields",  U"garden", U"gardens", U"line",   U"lines",
     U"award",  U"prize",  U"street", U"road",    U"lane",   U"way",     U"wharf",  U"dock",
     U"press",  U"media",  U"pay",    U"card",    U"foods",  U"temple",  U"chapel", U"heights"});

constexpr auto DETERMINERS = text::words(
    {U"the", U"a",    U"an",    U"each", U"any",   U"such",  U"this", U"that", U"its",   U"their",
     U"our", U"your", U"every", U"said", U"other", U"these", U"no",   U"all",  U"those", U"some"});

// In small letters before a name
constexpr auto PERSON_WORDS = text::words(
    {U"i",       U"me",          U"nephew",      U"niece",         U"son",       U"daughter",
     U"husband", U"wife",        U"cousin",      U"friend",        U"colleague", U"brother",
     U"sister",  U"mother",      U"father",      U"uncle",         U"aunt",      U"late",
     U"spouse",  U"carer",       U"nurse",       U"solicitor",     U"lawyer",    U"driver",
     U"foreman", U"assistant",   U"interpreter", U"translator",    U"expert",    U"trainer",
     U"widow",   U"widower",     U"grandson",    U"granddaughter", U"stepson",   U"neighbour",
     U"boss",    U"angel",       U"midwife",     U"caretaker",     U"man",       U"woman",
     U"plumber", U"electrician", U"farmer",      U"teacher",       U"student",   U"children",
     U"sisters", U"brothers",    U"sons",        U"daughters"});

// What some lists have for names
constexpr auto NO_NAMES = text::words(
    {U"hi",     U"hello",  U"dear",      U"hey",       U"best",     U"regards", U"thanks",
     U"cheers", U"monday", U"tuesday",   U"wednesday", U"thursday", U"friday",  U"saturday",
     U"sunday", U"easter", U"christmas", U"sterling",  U"reg",      U"and",     U"or",
     U"of",     U"in",     U"to",        U"for",       U"is",       U"if",      U"as",
     U"at",     U"by",     U"on",        U"it",        U"we",       U"he",      U"she",
     U"my",     U"me",     U"not"});

// Behind somebody who does something, where a sentence begins with an everyday word: Mark was
constexpr auto VERBS = text::words(
    {U"is",         U"was",   U"has",     U"had",      U"wrote",    U"said",     U"says",
     U"came",       U"went",  U"got",     U"told",     U"left",     U"gave",     U"took",
     U"made",       U"held",  U"holds",   U"sent",     U"will",     U"would",    U"wants",
     U"drafts",     U"knows", U"thinks",  U"and",      U"covers",   U"saw",      U"paid",
     U"did",        U"does",  U"rang",    U"spoke",    U"met",      U"also",     U"never",
     U"then",       U"shall", U"may",     U"must",     U"can",      U"cannot",   U"agrees",
     U"undertakes", U"pays",  U"keeps",   U"works",    U"signs",    U"receives", U"acts",
     U"owns",       U"lives", U"resides", U"confirms", U"warrants", U"reports",  U"leaves",
     U"takes",      U"gives", U"makes",   U"could",    U"should",   U"were",     U"are"});

// Before somebody
constexpr auto LINKS = text::words({U"by", U"from", U"ask", U"asked", U"told", U"tell", U"to",
                                    U"with", U"that", U"cc", U"via", U"when", U"because", U"if"});

// Before another name of the same person
constexpr auto CALLED = text::words({U"aka", U"a.k.a.", U"alias", U"née", U"nicknamed", U"called"});

// Months, days and shortened words that are given names too
constexpr auto NO_GIVEN_ALONE = text::words(
    {U"max",      U"min",      U"art",      U"sec",       U"jan",     U"mar",    U"dec",
     U"sun",      U"sat",      U"fri",      U"apr",       U"jun",     U"jul",    U"aug",
     U"sep",      U"oct",      U"nov",      U"mon",       U"tue",     U"wed",    U"thu",
     U"april",    U"may",      U"june",     U"july",      U"august",  U"san",    U"an",
     U"in",       U"to",       U"ltd",      U"inc",       U"pin",     U"man",    U"long",
     U"can",      U"sunday",   U"monday",   U"christian", U"roman",   U"german", U"santa",
     U"saint",    U"muhammad", U"jordan",   U"israel",    U"georgia", U"chad",   U"kenya",
     U"virginia", U"carolina", U"asia",     U"china",     U"india",   U"paris",  U"sydney",
     U"florence", U"victoria", U"austin",   U"dallas",    U"allah",   U"jesus",  U"vita",
     U"pro",      U"via",      U"ex",       U"bona",      U"fide",    U"alpha",  U"delta",
     U"omega",    U"sigma",    U"nova",     U"terra",     U"siri",    U"alexa",  U"easter",
     U"sterling", U"reg",      U"christmas"});

// The syllables of Chinese names in romanization
constexpr std::u32string_view PINYIN_SYLLABLES =
    U"a ai an ang ao ba bai ban bang bao bei ben beng bi bian biao bie bin bing bo bu cai "
    U"can cang cao cen ceng cha chai chan chang chao che chen cheng chi chong chou chu "
    U"chuan chuang chui chun cong cui cun da dai dan dang dao de deng di dian die ding "
    U"dong dou du duan dun duo en er fa fan fang fei fen feng fu gai gan gang gao ge gen "
    U"geng gong gou gu guan guang gui guo hai han hang hao he hei heng hong hou hu hua "
    U"huai huan huang hui huo ji jia jian jiang jiao jie jin jing jiu ju juan jue jun kai "
    U"kan kang ke kong kou ku kuai kuan kuang kui kun lai lan lang lao le lei leng li "
    U"lian liang liao lie lin ling liu long lou lu luan lun luo lv ma mai man mang mao "
    U"mei men meng mi mian miao min ming mo mu na nan neng ni nian nie ning niu nong nuo "
    U"ou pan pang pei peng pi ping pu qi qian qiang qiao qin qing qiong qiu qu quan que "
    U"qun ran rang rao ren rong rou ru ruan rui run ruo sang sen sha shan shang shao she "
    U"shen sheng shi shou shu shuai shuang shui shun shuo si song su sui sun suo tai tan "
    U"tang tao teng ti tian tie ting tong tu tuan tuo wan wang wei wen weng wo wu xi xia "
    U"xian xiang xiao xie xin xing xiong xiu xu xuan xue xun ya yan yang yao ye yi yin "
    U"ying yong you yu yuan yue yun zai zan zang zao ze zeng zha zhai zhan zhang zhao zhe "
    U"zhen zheng zhi zhong zhou zhu zhuang zhun zhuo zi zong zou zu zuo ";

bool is_syllable(std::u32string_view low) {
  static const auto syllables = [] {
    std::unordered_set<std::u32string_view> out;
    for (std::size_t at = 0; at < PINYIN_SYLLABLES.size();) {
      const std::size_t blank = PINYIN_SYLLABLES.find(U' ', at);
      out.insert(PINYIN_SYLLABLES.substr(at, blank - at));
      at = blank + 1;
    }
    return out;
  }();
  return syllables.contains(low);
}

constexpr auto KOREAN =
    text::words({U"seo", U"joon", U"hyun", U"hee", U"woo",  U"soo",  U"young", U"kyung",
                 U"eun", U"seok", U"sik",  U"won", U"jae",  U"sung", U"sang",  U"tae",
                 U"hye", U"mi",   U"ra",   U"kyu", U"hwan", U"ho",   U"do"});

std::u32string lowered_name(std::u32string_view s) {
  std::u32string out(s);
  for (char32_t& c : out) c = c == 0x2019 ? U'\'' : lower(c);
  return out;
}

// One to three syllables: Li, Yifan, Xiahou
bool is_pinyin(std::u32string_view low, int most = 3) {
  if (most == 0) return false;
  constexpr std::size_t LONGEST = 6;
  for (std::size_t n = std::min(LONGEST, low.size()); n > 0; --n) {
    if (!is_syllable(low.substr(0, n))) continue;
    if (n == low.size()) return true;
    if (is_pinyin(low.substr(n), most - 1)) return true;
  }
  return false;
}

enum class Shape : std::uint8_t { SMALL, CAPITAL, CAPITALS };

struct Word {
  std::size_t start = 0;
  std::size_t end = 0;
  std::u32string low;
  Shape shape = Shape::SMALL;
  bool linked = false;      // a single blank parts it from the word before
  bool opens = false;       // a sentence or a cell
  bool opens_cell = false;  // also behind a colon, a line to sign on, some blanks
  bool opens_line = false;
  bool initial = false;  // J., J.-B., T.J.
  bool stopped = false;  // a full stop stands behind
  bool given = false;
  bool surname = false;
  bool everyday = false;  // also an everyday word: Grace, Stone
  bool ordinary = false;  // no name but a word of the language, or of contracts
  bool place = false;
  bool asian_given = false;  // Jun-seo, Mei-ling
  bool elsewhere = false;    // part of an organization or an address

  bool named() const { return given || surname; }
  bool may_be_named() const { return !ordinary && !initial; }
  bool surely_given() const { return given && !everyday && !place; }
  bool surely_surname() const { return surname && !everyday; }
  bool unknown() const { return !ordinary && !named() && !place; }
};

bool is_name_character(char32_t c) {
  return is_latin_letter(c) || c == U'\'' || c == U'-' || c == 0x2019;
}

// The words of the text, read once.
class Words {
 public:
  explicit Words(const NlpArtifacts& a, std::u32string_view t) : a_(a), t_(t) { read(); }

  std::vector<Word> list;
  std::unordered_set<std::u32string> small;       // written in small letters
  std::unordered_set<std::u32string> determined;  // behind an article, with a capital

 private:
  void read() {
    bool opens = true;
    bool opens_cell = true;
    bool opens_line = true;
    for (std::size_t i = 0; i < t_.size();) {
      const char32_t c = t_[i];
      if (text::is_ideograph(c)) {
        ++i;
        continue;
      }
      if (!is_latin_letter(c)) {
        if (is_cell_end(c) || c == U'。' || c == U'：' || c == U'；' || c == U':' || c == U'_' ||
            c == U'|' || c == 0x3000) {
          opens = opens_cell = true;
          opens_line = opens_line || is_cell_end(c);
        } else if (c == U'.' || c == U'!' || c == U'?') {
          opens = true;
        } else if (c == U' ' && i > 0 && t_[i - 1] == U' ') {
          opens = opens_cell = true;
        } else if (text::is_ascii_digit(c)) {
          i = skip_code(i);
          continue;
        }
        ++i;
        continue;
      }
      i = take(i, opens, opens_cell, opens_line);
    }
    read_surname_he();
  }

  // He Wei, An Xiaoming: before a name in pinyin no pronoun
  void read_surname_he() {
    for (std::size_t i = 0; i + 1 < list.size(); ++i) {
      Word& w = list[i];
      const Word& next = list[i + 1];
      if (w.shape != Shape::CAPITAL || (w.low != U"he" && w.low != U"an" && w.low != U"she") ||
          !next.linked || next.shape != Shape::CAPITAL || english_word_frequency(next.low) > 2 ||
          next.low.size() < 3 || !is_pinyin(next.low, 2)) {
        continue;
      }
      w.ordinary = false;
      w.surname = true;
    }
  }

  // 4500A: not a word
  std::size_t skip_code(std::size_t i) const {
    while (i < t_.size() && (text::is_ascii_alnum(t_[i]))) ++i;
    return i;
  }

  std::size_t take(std::size_t start, bool& opens, bool& opens_cell, bool& opens_line) {
    std::size_t end = start;
    while (end < t_.size() && is_name_character(t_[end])) ++end;
    if (end < t_.size() && text::is_ascii_digit(t_[end])) return skip_code(end);
    Word w;
    w.start = start;
    const std::size_t stop = initials_end(start);
    w.initial = stop > start;
    end = w.initial ? stop : plain_end(start, end);
    w.end = end;
    w.low = lowered_name(t_.substr(start, end - start));
    w.stopped = !w.initial && end < t_.size() && t_[end] == U'.';
    w.shape = shape_of(start, end);
    w.opens = opens;
    w.opens_cell = opens_cell;
    w.opens_line = opens_line;
    w.linked = !list.empty() && links(list.back(), start);
    if (w.shape == Shape::SMALL) {
      small.insert(w.low);
    } else {
      judge(w);
      if (w.linked && DETERMINERS.contains(list.back().low)) determined.insert(w.low);
    }
    opens = opens_cell = opens_line = false;
    list.push_back(std::move(w));
    return std::max(end, start + 1);
  }

  // Without a hyphen or 's behind the word, but with the second letter of a/p and v.d.
  std::size_t plain_end(std::size_t start, std::size_t end) const {
    while (end > start + 1 && !is_latin_letter(t_[end - 1])) --end;
    const auto s = t_.substr(start, end - start);
    if (s.size() > 2 && (s.ends_with(U"'s") || s.ends_with(U"\u2019s"))) return end - 2;
    if (s.size() != 1 || !is_lower(s.front())) return end;
    if (t_.substr(start, 4) == U"v.d.") return start + 4;
    // Friederike v. Stetten; not the case Harrow v. Brandt
    if (t_.substr(start, 2) == U"v." && !list.empty() && list.back().surely_given() &&
        !list.back().surname && list.back().end + 1 == start) {
      return start + 2;
    }
    return NAME_PARTICLES.contains(t_.substr(start, 3)) ? start + 3 : end;
  }

  bool links(const Word& before, std::size_t start) const {
    if (before.end == start) return before.initial;
    if (before.end + 1 == start) return t_[before.end] == U' ';
    return before.end + 2 == start && t_[before.end + 1] == U' ' && t_[before.end] == U'.' &&
           (before.end - before.start <= 4 || SUFFIXES.contains(before.low));
  }

  // J. D.J. J.-B. A.-S.; not the last word of a sentence
  std::size_t initials_end(std::size_t at) const {
    constexpr std::size_t MOST = 8;
    std::size_t end = at;
    while (end + 1 < t_.size() && end - at < MOST && is_upper(t_[end]) && t_[end + 1] == U'.') {
      end += 2;
      if (end + 1 < t_.size() && t_[end] == U'-' && is_upper(t_[end + 1]) && end + 2 < t_.size() &&
          t_[end + 2] == U'.') {
        ++end;
      }
    }
    if (end == at ||
        (end < t_.size() && is_latin_letter(t_[end]) && end - at == 2 && !is_upper(t_[end]))) {
      return at;
    }
    if (end < t_.size() && text::is_ascii_digit(t_[end])) return at;
    return NO_INITIALS.contains(t_.substr(at, end - at)) ? at : end;
  }

  Shape shape_of(std::size_t start, std::size_t end) const {
    const auto s = t_.substr(start, end - start);
    const bool elided = s.size() > 3 && (s[1] == U'\'' || s[1] == 0x2019) && is_upper(s[2]);
    if (!is_upper(s.front()) && !elided) return Shape::SMALL;
    if (s.size() > 1 && std::none_of(s.begin(), s.end(), is_lower)) return Shape::CAPITALS;
    return Shape::CAPITAL;
  }

  void judge(Word& w) const {
    if (w.initial) return;
    const auto s = t_.substr(w.start, w.end - w.start);
    for (const auto c : {WordClass::EN_LEGAL_FORM, WordClass::EN_ORGANIZATION_HEAD,
                         WordClass::EN_STREET_WORD, WordClass::PUBLIC_NAME}) {
      w.elsewhere |= is_covered(a_.of(c), w.start, w.end);
    }
    const bool compound = s.find(U'-') != s.npos;
    compound ? judge_parts(w, s) : judge_word(w, s);
    if (is_covered(a_.of(WordClass::EN_GIVEN_NAME), w.start, w.end)) {
      w.given = true;
      w.ordinary = false;
    }
    if (is_covered(a_.of(WordClass::EN_PLACE), w.start, w.end)) w.place = true;
    if (NO_NAMES.contains(w.low) || DETERMINERS.contains(w.low)) w.ordinary = true;
    if (is_covered(a_.of(WordClass::EN_TITLE), w.start, w.end) || CALLINGS.contains(w.low)) {
      w.ordinary = true;
    }
    // Amministratore Delegato: a role of two words
    const auto& role = a_.of(WordClass::EN_ROLE);
    const auto at = first_from(role, w.start + 1);
    if (at != role.begin() && std::prev(at)->end >= w.end && std::prev(at)->start <= w.start &&
        std::prev(at)->end - std::prev(at)->start > w.end - w.start) {
      w.ordinary = true;
    }
    if (w.shape == Shape::CAPITALS && POST_NOMINALS.contains(w.low)) w.ordinary = true;
    if (w.shape == Shape::CAPITALS && s.size() < 3) w.ordinary = w.ordinary || !w.named();
  }

  static void judge_word(Word& w, std::u32string_view s) {
    constexpr unsigned EVERYDAY = 3;
    const auto facts = latin_word(s);
    const auto c = facts.name_class;
    w.given = c == LatinNameClass::GIVEN || c == LatinNameClass::BOTH;
    w.surname = c == LatinNameClass::SURNAME || c == LatinNameClass::BOTH;
    const bool mixed = s.size() > 3 && is_upper(s.front()) && is_lower(s[1]) &&
                       std::any_of(s.begin() + 2, s.end(), is_upper);
    if ((mixed && (s.starts_with(U"Mc") || s.starts_with(U"Mac"))) || s.starts_with(U"O'"))
      w.surname = true;
    const bool vocabulary = is_contract_word(s) || is_contract_language(s);
    w.everyday = facts.name_is_common_word || facts.english_frequency >= EVERYDAY || vocabulary;
    w.ordinary =
        !w.named() && (facts.english_frequency > 0 || vocabulary || c == LatinNameClass::PROPER);
    w.place = facts.city != WorldCity::NONE && !facts.city_is_person_name && !w.given;
  }

  static bool is_asian_given(std::u32string_view s) {
    constexpr std::size_t LONGEST = 6;
    const std::size_t dash = s.find(U'-');
    const auto first = s.substr(0, dash);
    const auto second = s.substr(dash + 1);
    if (first.size() < 2 || second.size() < 2 || first.size() > LONGEST ||
        second.size() > LONGEST || second.find(U'-') != second.npos || !is_lower(second.front())) {
      return false;
    }
    const auto is_name_part = [](std::u32string_view part) {
      const auto low = lowered_name(part);
      return english_word_frequency(low) == 0 || is_pinyin(low, 1) || KOREAN.contains(low) ||
             latin_word(low).name_class != LatinNameClass::NONE;
    };
    return is_name_part(first) && is_name_part(second) &&
           (english_word_frequency(first) < 3 || english_word_frequency(second) == 0);
  }

  static void judge_parts(Word& w, std::u32string_view s) {
    bool ordinary = false;
    bool capitals = true;
    bool surname_ends = false;
    for (std::size_t at = 0; at <= s.size();) {
      const std::size_t dash = std::min(s.find(U'-', at), s.size());
      Word part;
      if (dash > at) judge_word(part, s.substr(at, dash - at));
      const bool capital = dash > at && is_upper(s[at]);
      w.given |= part.given && !part.everyday && capital;
      w.surname |= part.surname && !part.everyday && capital;
      ordinary |= part.ordinary || (dash > at && !capital && !part.named());
      w.place |= part.place;
      // Goes-Lambrecht: the last part is a surname and no word.
      capitals &= capital;
      surname_ends = capital && part.surname && !part.everyday;
      at = dash + 1;
    }
    if (capitals && surname_ends) ordinary = w.place = false;
    w.asian_given = is_asian_given(s);
    w.ordinary = ordinary && !(w.given && w.surname) && !w.asian_given;
    if (w.asian_given) w.given = true;
    if (w.ordinary) w.given = w.surname = false;
  }

  const NlpArtifacts& a_;
  std::u32string_view t_;
};

// Words that may be one name.
struct Chain {
  std::size_t first = 0;  // in Words::list
  std::size_t last = 0;   // one behind
  std::size_t start = 0;
  std::size_t end = 0;
  int words = 0;  // without initials and particles
  int initials = 0;
  bool accepted = false;
  bool possible = false;
  bool known = false;   // found by other rules
  bool joined = false;  // to the chain before
};

class LatinProseSearch {
 public:
  LatinProseSearch(const NlpArtifacts& a, const PersonEvidence& evidence)
      : a_(a),
        unwrapped_(unwrapped(a.folded)),
        t_(unwrapped_),
        words_(a, t_),
        w_(words_.list),
        expected_(evidence.expected.begin(), evidence.expected.end()) {
    for (const auto& r : evidence.found) found_.add(r.start, r.end);
    found_.finish();
    for (const auto& e : a.entities) {
      if (e.result.entity_type == entity_type::ORGANIZATION) {
        organizations_.add(e.result.start, e.result.end);
        read_organization(e.result);
      }
    }
    organizations_.finish();
    for (const auto& r : evidence.found) learn_span(r);
  }

  std::vector<RecognizerResult> run() {
    for (std::size_t i = 0; i < w_.size();) {
      Chain c = chain_at(i);
      if (c.last == i) {
        ++i;
        continue;
      }
      judge(c);
      i = c.last;
      chains_.push_back(c);
    }
    join_inverted();
    neighbours();
    lists();
    for (const auto& c : chains_) {
      if (c.accepted) learn(c);
    }
    learn_from_mail();
    for (auto& c : chains_) {
      if (c.accepted) add(c.start, c.end);
    }
    mentions();
    return std::move(out_);
  }

 private:
  void add(std::size_t start, std::size_t end) {
    add_by_line(a_.folded, entity_type::PERSON, start, end, LATIN_PROSE_PERSON_SCORE, out_);
  }

  bool particle_at(std::size_t i) const {
    return NAME_PARTICLES.contains(w_[i].low) && !(w_[i].initial);
  }

  bool is_part(std::size_t i) const {
    const Word& w = w_[i];
    if (w.initial || is_nickname(i)) return true;
    return w.shape != Shape::SMALL && w.may_be_named() && !w.elsewhere && w.low.size() > 1;
  }

  // From a capital on: Katarzyna M. Wolanski, Ximena Zúñiga de la O, Darryl "Dazza" Nguyen
  Chain chain_at(std::size_t i) const {
    constexpr int MOST = 7;
    Chain c;
    c.first = c.last = i;
    c.start = c.end = w_[i].start;
    std::size_t at = i;
    for (int n = 0; n < MOST && at < w_.size(); ++n) {
      if (at > i && !linked(at)) break;
      const std::size_t next = next_part(at, at == i);
      if (next == w_.size() || (at > i && begins_heading(at, next))) break;
      if (w_[next].initial) {
        ++c.initials;
      } else {
        ++c.words;
      }
      c.end = w_[next].end;
      c.last = next + 1;
      at = next + 1;
      if (w_[next].stopped && !(at < w_.size() && w_[next].low.size() <= 3 && linked(at))) break;
      if (t_.substr(w_[next].end, 2) == U"'s") break;
    }
    if (c.words == 0) c.last = i;
    return take_suffix(c);
  }

  // The part of a name that begins at `at`, perhaps behind particles: "van der Westhuizen",
  // "de la O"; the end of the words if none does.
  std::size_t next_part(std::size_t at, bool opens) const {
    constexpr std::size_t MOST_PARTICLES = 3;
    std::size_t next = at;
    while (next < w_.size() && next - at < MOST_PARTICLES && particle_at(next) &&
           !w_[next].stopped && (next == at || linked(next)) &&
           (!opens || w_[next].shape != Shape::SMALL || next > at)) {
      ++next;
    }
    const std::size_t particles = next - at;
    if (particles > 0 && next < w_.size() && linked(next) &&
        (is_part(next) || (particles > 1 && is_letter(next)))) {
      return next;
    }
    return is_part(at) ? at : w_.size();
  }

  // Darryl "Dazza" Nguyen: any word, between names
  bool is_nickname(std::size_t i) const {
    const Word& w = w_[i];
    if (i == 0 || i + 1 >= w_.size() || w.shape == Shape::SMALL || w.start < 2) return false;
    const char32_t behind = w.end < t_.size() ? t_[w.end] : U' ';
    return is_quoted(w) && (behind == U'"' || behind == U'”') && w_[i - 1].end + 2 == w.start &&
           w.end + 2 == w_[i + 1].start && is_name_like(w_[i - 1]) && is_name_like(w_[i + 1]) &&
           w_[i - 1].shape != Shape::SMALL && w_[i + 1].shape != Shape::SMALL;
  }

  bool is_letter(std::size_t i) const {
    return w_[i].shape != Shape::SMALL && w_[i].end - w_[i].start == 1;
  }

  // Capitals of a heading go on in no name of small letters, but LUAN Guoqing does.
  bool begins_heading(std::size_t at, std::size_t next) const {
    const Word& w = w_[next];
    return w_[at - 1].shape == Shape::CAPITAL && w.shape == Shape::CAPITALS && !w.initial &&
           (!w.named() || w.everyday) && w.linked && !is_nickname(next);
  }

  // Whether the word goes on with the name before it, perhaps behind a nickname in quotes.
  bool linked(std::size_t at) const {
    if (w_[at].linked) return true;
    if (at == 0) return false;
    const auto gap = t_.substr(w_[at - 1].end, w_[at].start - w_[at - 1].end);
    return (gap == U" \"" || gap == U"\" " || gap == U" “" || gap == U"” ") &&
           (is_nickname(at) || is_nickname(at - 1));
  }

  static bool is_name_like(const Word& w) { return !w.ordinary && !w.initial; }

  // , Jr. and III
  Chain take_suffix(Chain c) const {
    for (int n = 0; n < 2 && c.last < w_.size() && c.last > c.first; ++n) {
      const Word& w = w_[c.last];
      const auto gap = t_.substr(c.end, w.start - c.end);
      if (!(gap == U" " || gap == U", " || gap == U". ") || !SUFFIXES.contains(w.low)) break;
      if (w.shape == Shape::SMALL) break;
      c.end =
          w.end + (t_.substr(w.end, 1) == U"." && w.low.size() == 2 && w.low[1] == U'r' ? 1 : 0);
      ++c.last;
    }
    return c;
  }

  // The name words of a chain
  template <class Visit>
  void each_word(const Chain& c, Visit visit) const {
    for (std::size_t i = c.first; i < c.last; ++i) {
      const Word& w = w_[i];
      if (!w.initial && !(particle_at(i) && !w.surely_surname()) && !SUFFIXES.contains(w.low))
        visit(w);
    }
  }

  const Word* before(const Chain& c) const {
    if (c.first == 0) return nullptr;
    const Word& w = w_[c.first - 1];
    const auto gap = t_.substr(w.end, c.start - w.end);
    return gap == U" " || gap == U". " || gap == U".) " || gap == U".: " ? &w : nullptr;
  }

  bool titled(const Chain& c) const {
    const Word* w = before(c);
    if (w == nullptr) return false;
    if (is_touched(a_.of(WordClass::EN_TITLE), w->start, w->end)) return true;
    if (!CALLINGS.contains(w->low) || w->shape == Shape::SMALL) return false;
    const Word& first = w_[c.first];
    return first.initial || !first.everyday || c.words > 1;
  }

  // my nephew Donnchadh, a carer, Marek, the late Hope Nwosu
  bool behind_person_word(const Chain& c) const {
    if (c.first == 0) return false;
    const Word& w = w_[c.first - 1];
    const auto gap = t_.substr(w.end, c.start - w.end);
    if ((gap != U" " && gap != U", ") || !PERSON_WORDS.contains(w.low)) return false;
    if (w.shape != Shape::SMALL && w.low != U"i") return false;
    const Word& first = w_[c.first];
    const char32_t behind = c.end < t_.size() ? t_[c.end] : U'\n';
    if (w.low == U"i" || w.low == U"me") return gap == U", " && behind == U',' && c.words > 1;
    if (gap == U", " && c.words == 1 && behind == U' ') return false;
    return first.initial || first.named() || first.unknown();
  }

  bool determined(const Chain& c) const {
    const Word* w = before(c);
    return w != nullptr && DETERMINERS.contains(w->low);
  }

  // A capital goes on behind: Rowan Property Partners, Morgan & Sons
  bool goes_on(const Chain& c) const {
    const auto rest = t_.substr(c.end, 4);
    if (rest.starts_with(U" & ") && rest.size() > 3 && (is_upper(rest[3]))) return c.words < 2;
    if (c.last >= w_.size()) return false;
    const Word& next = w_[c.last];
    if (next.start != c.end + 1 || t_[c.end] != U' ' || next.shape == Shape::SMALL) return false;
    if (next.elsewhere || NOT_LAST.contains(next.low)) return true;
    if (is_touched(a_.of(WordClass::EN_ROLE), next.start, next.end) ||
        is_touched(a_.of(WordClass::PERSON_LABEL), next.start, next.end)) {
      return false;
    }
    const bool capitals = w_[c.last - 1].shape == Shape::CAPITALS;
    return capitals == (next.shape == Shape::CAPITALS) && !is_contract_word(next.low);
  }

  bool behind_and(const Chain& c) const {
    return c.start > 1 && t_.substr(c.start - 2, 2) == U"& ";
  }

  bool ends_cell(std::size_t end) const {
    return end >= t_.size() || is_cell_end(t_[end]) || t_[end] == U'_' || t_[end] == U'(' ||
           t_[end] == 0x3000 || t_[end] == U'|' || t_.substr(end, 2) == U"  " ||
           is_cell_end(a_.folded[end]);
  }

  bool counted(const Chain& c) const {
    return c.first > 0 && w_[c.first - 1].end + 1 == c.start &&
           COUNTED.contains(w_[c.first - 1].low);
  }

  // Part of the name of a firm; a firm within the name is none.
  bool is_in_firm(const Chain& c) const {
    const auto start = static_cast<std::ptrdiff_t>(c.start);
    const auto end = static_cast<std::ptrdiff_t>(c.end);
    return organizations_.contains(start, end) || organizations_.contains(start - 1, start + 1) ||
           organizations_.contains(end - 1, end + 1);
  }

  // Ngozi Young of Aire Valley University
  bool works_for_firm(const Chain& c) const {
    const auto start = static_cast<std::ptrdiff_t>(c.start);
    return c.words > 1 && t_.substr(c.end, 4) == U" of " && first_word(c)->surely_given() &&
           last_word(c)->surname && !organizations_.contains(start - 1, start + 1);
  }

  void judge(Chain& c) {
    c.known =
        found_.contains(static_cast<std::ptrdiff_t>(c.start), static_cast<std::ptrdiff_t>(c.end));
    c.accepted = c.known;
    if (c.known) return;
    if (is_in_firm(c)) {
      c.accepted = works_for_firm(c);
      return;
    }
    const bool title = titled(c);
    const bool expected = expected_.contains(c.start);
    const bool announced = title || expected;
    if ((goes_on(c) && !announced) || behind_and(c) || counted(c)) return;
    const bool kin = behind_person_word(c);
    if (!announced && !kin && is_firm(c.first, c.last)) return;
    if (last_word(c)->elsewhere || (!title && is_place(c))) return;
    c.possible = !determined(c);
    c.accepted = kin || (title ? is_titled_name(c) : is_name(c, expected));
  }

  bool is_titled_name(const Chain& c) const {
    const Word& first = *first_word(c);
    return c.words > 1 || first.named() || first.unknown();
  }

  bool is_name(const Chain& c, bool expected) const {
    const Word& last = *last_word(c);
    const Word& first = *first_word(c);
    if (determined(c)) return c.words > 1 && first.surely_given() && last.surely_surname();
    if (w_[c.first].initial) return is_behind_initials(c, last);
    if (c.words > 1) return is_full(c, first, last, expected);
    return c.initials > 0 ? is_before_initials(c, first) : is_single(c, first, expected);
  }

  const Word* first_word(const Chain& c) const {
    const Word* out = nullptr;
    each_word(c, [&](const Word& w) {
      if (out == nullptr) out = &w;
    });
    return out != nullptr ? out : &w_[c.first];
  }
  const Word* last_word(const Chain& c) const {
    const Word* out = &w_[c.first];
    each_word(c, [&](const Word& w) { out = &w; });
    return out;
  }

  bool is_place(const Chain& c) const {
    return is_covered(a_.of(WordClass::EN_PLACE), c.start, c.end) ||
           (c.words == 1 && first_word(c)->place) ||
           (c.words > 1 && c.initials == 0 && is_world_city(t_.substr(c.start, c.end - c.start)));
  }

  // D. R. Price, H.-P. Zurbriggen. A letter that opens a line may count it.
  bool is_behind_initials(const Chain& c, const Word& last) const {
    const Word& initial = w_[c.first];
    const bool several = c.initials > 1 || initial.end - initial.start > 2;
    const bool isolated = initial.opens_cell && ends_cell(c.end);
    if (last.everyday || last.place)
      return (last.named() || !last.ordinary) &&
             (isolated || (several && !last.place) || (!initial.opens && last.surname));
    if (initial.opens_line && !several && !isolated) {
      return last.surely_surname() && t_.substr(c.end, 1) != U" ";
    }
    return true;
  }

  // Qian W.J., ZÚÑIGA X.
  bool is_before_initials(const Chain& c, const Word& first) const {
    if (t_[c.end - 1] != U'.' || first.everyday || first.place) return false;
    return first.surely_surname() || is_pinyin(first.low, 2) ||
           (first.unknown() &&
            (w_[c.first].opens_cell || w_[c.last - 1].end - w_[c.last - 1].start > 2));
  }

  bool is_single(const Chain& c, const Word& w, bool expected) const {
    if (particle_at(c.first)) return false;
    if (expected) return w.given && !NO_GIVEN_ALONE.contains(w.low);
    if (!w.surely_given() || w.shape != Shape::CAPITAL) return is_called(c, w);
    if (is_quoted(w) && (t_.substr(w.end, 2) == U"\")" || t_.substr(w.end, 2) == U"”)"))
      return true;
    constexpr std::size_t SHORTEST = 3;
    const bool only_given =
        !w.surname || is_covered(a_.of(WordClass::EN_GIVEN_NAME), w.start, w.end);
    if (w.low.size() < SHORTEST || NO_GIVEN_ALONE.contains(w.low) || is_glued(w)) return false;
    if (words_.small.contains(w.low) || words_.determined.contains(w.low)) return false;
    const bool rare = english_word_frequency(w.low) == 0 ? !among_others(c) : in_action(c);
    return only_given && rare && !is_pinyin(w.low) && !is_quoted(w) && !follows_capital(c);
  }

  // by Ginger, that Frank wrote: what only somebody does
  bool in_action(const Chain& c) const {
    const Word* link = before(c);
    if (link != nullptr && link->shape == Shape::SMALL && LINKS.contains(link->low)) return true;
    if (c.last >= w_.size() || !w_[c.last].linked) return false;
    const Word& next = w_[c.last];
    return next.shape == Shape::SMALL && (VERBS.contains(next.low) || next.low.ends_with(U"ed"));
  }

  // Cassandra, Redis and Docker: in a list of other things
  bool among_others(const Chain& c) const {
    const auto is_other = [](const Word& w) {
      return w.shape != Shape::SMALL && !w.given && !w.surely_surname();
    };
    const auto is_gap = [&](std::size_t from, std::size_t to) {
      const auto gap = to > from && to - from < 6 ? t_.substr(from, to - from) : U"";
      return gap == U", " || gap == U" and " || gap == U" or ";
    };
    if (c.first > 0 && is_other(w_[c.first - 1]) && !w_[c.first - 1].opens &&
        is_gap(w_[c.first - 1].end, c.start)) {
      return !in_action(c);
    }
    return c.last < w_.size() && is_other(w_[c.last]) && is_gap(c.end, w_[c.last].start) &&
           !in_action(c);
  }

  // Project Athena
  bool follows_capital(const Chain& c) const {
    const Word* w = before(c);
    return w != nullptr && w->shape != Shape::SMALL && !is_small_word(w->low) && !w->opens;
  }

  bool is_quoted(const Word& w) const {
    return w.start > 0 && (t_[w.start - 1] == U'"' || t_[w.start - 1] == U'“');
  }

  // known as Peig, call me Dami
  bool is_called(const Chain& c, const Word& w) const {
    const Word* link = before(c);
    if (link == nullptr || c.first < 2 || w.ordinary || w.place || w.shape != Shape::CAPITAL)
      return false;
    if (CALLED.contains(link->low) && w.named() && !w.everyday) return true;
    const auto& second = w_[c.first - 2].low;
    if (link->low == U"me" && (second == U"call" || second == U"calls")) return true;
    return false;
  }

  bool is_glued(const Word& w) const {
    constexpr std::u32string_view GLUE = U"@._/\\-=#&+";
    const char32_t front = w.start > 0 ? t_[w.start - 1] : U' ';
    const char32_t back = w.end < t_.size() ? t_[w.end] : U' ';
    const char32_t next = w.end + 1 < t_.size() ? t_[w.end + 1] : U' ';
    if (front == U'/' || back == U'/') return false;
    return GLUE.find(front) != GLUE.npos || back == U'@' || back == U'_' || back == U'&' ||
           (back == U'.' && is_name_character(next));
  }

  // How many words of a chain are what.
  struct Tally {
    int sure = 0;     // names that are no everyday words
    int unknown = 0;  // in no list
    int places = 0;
  };

  Tally tally(const Chain& c) const {
    Tally out;
    each_word(c, [&](const Word& w) {
      out.sure += w.named() && !w.everyday ? 1 : 0;
      out.unknown += w.unknown() ? 1 : 0;
      out.places += w.place && !w.named() ? 1 : 0;
    });
    return out;
  }

  bool is_full(const Chain& c, const Word& first, const Word& last, bool expected) const {
    const Tally t = tally(c);
    if (expected) return t.sure + t.unknown > 0 || (first.given && last.surname);
    if (NOT_LAST.contains(last.low)) return false;
    if (first.surely_given()) return true;
    if (t.places > 0) return false;
    if (first.given) return is_full_with_everyday_name(c, first, last, t);
    if (is_asian(c, first, last)) return true;
    if (first.surely_surname() && last.surely_given() && !last.surname) return true;
    if ((first.unknown() || first.named()) && has_person_particle(c)) return true;
    // Donnchadh McGillycuddy
    return first.unknown() && last.shape == Shape::CAPITAL && t.sure > 0 &&
           (!first.opens_cell || c.words > 2 || ends_cell(c.end));
  }

  // Grace Lindqvist; not "Will Oerlikon deliver?"
  bool is_full_with_everyday_name(const Chain& c, const Word& first, const Word& last,
                                  const Tally& t) const {
    const bool alone = first.opens_cell && ends_cell(c.end);
    const bool modal = first.opens && !alone && (first.low == U"will" || first.low == U"may");
    if (modal && c.words < 3) return false;
    const bool term = words_.determined.contains(first.low);
    if (t.sure + t.unknown > 0) return !term || t.sure > 0;
    return !first.opens && last.surname && follows_small(c) && !term;
  }

  // Li Min, Cheung Tsz Kit, Park Jun-seo, Young-hee Ahn
  bool is_asian(const Chain& c, const Word& first, const Word& last) const {
    constexpr std::size_t LONGEST_SURNAME = 7;
    constexpr int MOST_WORDS = 4;
    if (c.words == 2 && last.asian_given && (first.surname || first.unknown())) return true;
    if (!first.surely_surname() && !is_pinyin(first.low, 2)) return false;
    bool asian = c.words <= MOST_WORDS && first.low.size() <= LONGEST_SURNAME;
    bool clear = false;
    each_word(c, [&](const Word& w) {
      if (&w == &first) return;
      asian = asian && is_asian_word(w);
      clear = clear || !w.everyday;
    });
    return asian && clear;
  }

  static bool is_asian_word(const Word& w) {
    constexpr std::size_t LONGEST = 4;
    return is_pinyin(w.low) || (w.low.size() <= LONGEST && (w.named() || w.unknown())) ||
           (w.named() && w.low.find(U'-') != w.low.npos);
  }

  bool has_person_particle(const Chain& c) const {
    for (std::size_t i = c.first + 1; i < c.last; ++i) {
      if (PERSON_PARTICLES.contains(w_[i].low)) return true;
    }
    return false;
  }

  bool follows_small(const Chain& c) const {
    const Word* w = before(c);
    return w != nullptr && w->shape == Shape::SMALL;
  }

  // Young, Aloysius J.; Kwong Ho Yin, Jasper
  void join_inverted() {
    for (std::size_t i = 1; i < chains_.size(); ++i) {
      Chain& a = chains_[i - 1];
      Chain& b = chains_[i];
      if (b.start != a.end + 2 || t_.substr(a.end, 2) != U", " || b.last - b.first > 3) continue;
      const Word& given = *first_word(b);
      const Word& first = *first_word(a);
      if (!given.given || given.place || !is_bounded(b.end) || is_in_firm(a)) continue;
      const bool two_names = a.accepted && a.words > 1 && b.words == 1 && !given.surname &&
                             (first.surely_surname() && first.low.size() <= 6) && !given.everyday &&
                             t_.substr(b.end, 1) != U"," && t_.substr(b.end, 5) != U" and ";
      const bool inverted = a.words == 1 && a.initials == 0 && given.surely_given() &&
                            !first.place &&
                            (first.surely_surname() || first.unknown() ||
                             (first.surname && (titled(a) || b.initials > 0))) &&
                            !first.surely_given() && (w_[a.first].opens_line || titled(a)) &&
                            (b.initials > 0 || b.words == 1) && t_.substr(b.end, 5) != U" and ";
      if (!two_names && !inverted) continue;
      a.end = b.end;
      a.last = b.last;
      a.words += b.words;
      a.initials += b.initials;
      a.accepted = true;
      b.joined = true;
      ++i;
    }
    std::erase_if(chains_, [](const Chain& c) { return c.joined; });
  }

  // Tadhg, Saoirse and Mark: what stands in a list beside persons
  void neighbours() {
    for (std::size_t i = 1; i < chains_.size(); ++i) spread(chains_[i - 1], chains_[i]);
    for (std::size_t i = chains_.size(); i-- > 1;) spread(chains_[i], chains_[i - 1]);
  }

  void spread(const Chain& from, Chain& to) {
    if (!from.accepted || to.accepted || !to.possible || goes_on(to)) return;
    const Chain& left = from.start < to.start ? from : to;
    const Chain& right = from.start < to.start ? to : from;
    if (right.start - left.end > 6) return;
    const auto gap = t_.substr(left.end, right.start - left.end);
    if (gap != U", " && gap != U" and " && gap != U", and " && gap != U"; " && gap != U" / " &&
        gap != U"/" && gap != U"、" && gap != U" or ") {
      return;
    }
    const Word& first = *first_word(to);
    if (to.words == 1 && from.words == 1 && w_[to.first].shape == Shape::CAPITAL &&
        (first.given || (first.unknown() && !titled(from))) && !words_.small.contains(first.low) &&
        !words_.determined.contains(first.low)) {
      to.accepted = true;
    } else if (to.words == 1 && from.words > 1 && first.given && !first.place && gap == U", " &&
               to.start > from.start && is_bounded(to.end)) {
      to.accepted = !words_.determined.contains(first.low);
    } else if (to.words > 1 && from.words > 1) {
      const bool comma = gap == U", ";
      to.accepted = first.given || last_word(to)->surely_surname() ||
                    (first.unknown() && (!comma || is_bounded(to.end)));
    }
  }
  // The list ends or goes on, or a remark follows.
  bool is_bounded(std::size_t end) const {
    const char32_t behind = end < t_.size() ? t_[end] : U'\n';
    return behind == U',' || behind == U'(' || behind == U';' || behind == U'<' || behind == U'"' ||
           behind == U'.' || t_.substr(end, 2) == U" (" || t_.substr(end, 5) == U" and " ||
           ends_cell(end);
  }

  // Tadhg, Saoirse and Mark: a list of names alone, one of them a given name
  void lists() {
    for (std::size_t i = 0; i + 1 < chains_.size();) {
      std::size_t end = i + 1;
      while (end < chains_.size() && is_item(chains_[end - 1]) && is_item(chains_[end]) &&
             is_list_gap(chains_[end - 1].end, chains_[end].start)) {
        ++end;
      }
      if (end - i >= 2) accept_list(i, end);
      i = end;
    }
  }

  bool is_item(const Chain& c) const {
    if (c.words != 1 || c.initials > 0 || !(c.possible || c.accepted)) return false;
    const Word& w = *first_word(c);
    return w.shape == Shape::CAPITAL && (w.given || w.unknown()) &&
           !words_.determined.contains(w.low) && !is_firm(c.first, c.last);
  }

  bool is_list_gap(std::size_t from, std::size_t to) const {
    constexpr std::size_t LONGEST = 6;
    if (to <= from || to - from > LONGEST) return false;
    const auto gap = t_.substr(from, to - from);
    return gap == U", " || gap == U" and " || gap == U", and " || gap == U" / " || gap == U"、";
  }

  void accept_list(std::size_t first, std::size_t last) {
    std::size_t given = 0;
    bool has_rare = false;
    for (std::size_t i = first; i < last; ++i) {
      const Word& w = *first_word(chains_[i]);
      has_rare |= english_word_frequency(w.low) == 0;
      given += w.given && !w.place && !NO_GIVEN_ALONE.contains(w.low) ? 1 : 0;
    }
    if (given == 0 || given * 3 < last - first || !has_rare) return;
    for (std::size_t i = first; i < last; ++i) chains_[i].accepted = true;
  }

  // Halvorsen, who may be the firm of that name
  void read_organization(const RecognizerResult& r) {
    const auto at = std::lower_bound(w_.begin(), w_.end(), static_cast<std::size_t>(r.start),
                                     [](const Word& w, std::size_t p) { return w.start < p; });
    for (auto it = at; it != w_.end() && static_cast<std::ptrdiff_t>(it->end) <= r.end; ++it) {
      firm_words_.insert(it->low);
      if (it != at && it->linked) firm_words_.insert(std::prev(it)->low + U' ' + it->low);
    }
  }

  bool is_firm(std::size_t first, std::size_t last) const {
    if (last - first == 1) return firm_words_.contains(w_[first].low);
    for (std::size_t i = first + 1; i < last; ++i) {
      if (!firm_words_.contains(w_[i - 1].low + U' ' + w_[i].low)) return false;
    }
    return true;
  }

  // ---- What the text knows

  struct Part {
    bool given = false;
    bool surname = false;
  };

  void learn(const Chain& c) {
    const Word* first = nullptr;
    const Word* last = nullptr;
    std::u32string letters;
    for (std::size_t i = c.first; i < c.last; ++i) {
      for (const char32_t x : w_[i].initial ? std::u32string_view(w_[i].low)
                                            : std::u32string_view(w_[i].low).substr(0, 1)) {
        if (is_latin_letter(x)) letters += x;
      }
    }
    if (letters.size() > 1) initials_.insert(letters);
    each_word(c, [&](const Word& w) {
      if (first == nullptr) first = &w;
      last = &w;
      parts_[w.low];
    });
    if (first == nullptr) return;
    if (const auto f = parts_.find(first->low); f != parts_.end()) f->second.given = true;
    if (const auto l = parts_.find(last->low); l != parts_.end()) l->second.surname = true;
  }

  void learn_span(const RecognizerResult& r) {
    const auto at = std::lower_bound(w_.begin(), w_.end(), static_cast<std::size_t>(r.start),
                                     [](const Word& w, std::size_t p) { return w.start < p; });
    for (auto it = at; it != w_.end() && static_cast<std::ptrdiff_t>(it->end) <= r.end; ++it) {
      if (it->initial || it->ordinary || NAME_PARTICLES.contains(it->low) || it->low.size() < 2)
        continue;
      parts_[it->low].given = true;
    }
  }

  // saoirse.k@example.com
  void learn_from_mail() {
    constexpr std::size_t LONGEST = 40;
    for (const std::size_t at : a_.at_signs) {
      std::size_t start = at;
      const auto& f = a_.folded;
      while (start > 0 && at - start < LONGEST &&
             (text::is_ascii_alpha(f[start - 1]) || f[start - 1] == U'.' || f[start - 1] == U'_')) {
        --start;
      }
      for (std::size_t i = start; i < at;) {
        std::size_t end = i;
        while (end < at && text::is_ascii_alpha(f[end])) ++end;
        if (end - i > 2) {
          const auto low = lowered_name(std::u32string_view(f).substr(i, end - i));
          const auto facts = latin_word(low);
          const bool name = facts.name_class != LatinNameClass::NONE &&
                            facts.name_class != LatinNameClass::PROPER;
          if (name && !is_contract_word(low) && !is_contract_language(low)) {
            parts_.try_emplace(low);
          }
        }
        i = end + 1;
      }
    }
  }

  // ---- Further mentions of a part of a known name

  void mentions() {
    for (std::size_t i = 0; i < w_.size();) {
      std::size_t end = i;
      while (end < w_.size() && (end == i || (w_[end].linked && !w_[end - 1].stopped)) &&
             is_known(end))
        ++end;
      if (end == i) {
        if (w_[i].initial) initials_alone(i);
        ++i;
        continue;
      }
      mention(i, end);
      i = end;
    }
  }

  // T.J., who is Tamika Jones
  void initials_alone(std::size_t i) {
    const Word& w = w_[i];
    const bool goes_on = i + 1 < w_.size() && w_[i + 1].linked && w_[i + 1].shape != Shape::SMALL;
    if (w.end - w.start < 4 || goes_on || is_done(w.start, w.end)) return;
    std::u32string letters;
    for (const char32_t x : w.low) {
      if (is_latin_letter(x)) letters += x;
    }
    if (t_.substr(w.end, 9) == U", a minor") initials_.insert(letters);
    if (initials_.contains(letters)) add(w.start, w.end);
  }

  bool is_known(std::size_t i) const {
    const Word& w = w_[i];
    return !w.initial && parts_.contains(w.low) &&
           (w.shape != Shape::SMALL || !is_small_word(w.low));
  }

  void mention(std::size_t first, std::size_t last) {
    std::size_t start = first;
    // van den berg, v.d. Heijden
    while (start > 0 && w_[start].linked &&
           ((particle_at(start - 1) && t_[w_[start - 1].end] == U' ') ||
            (w_[start - 1].initial && w_[start - 1].linked)) &&
           first - start < 3 &&
           !(w_[start - 1].low == U"a" || w_[start - 1].low == U"e" || w_[start - 1].low == U"y")) {
      --start;
    }
    const std::size_t from = w_[start].start;
    const std::size_t to = w_[last - 1].end;
    const auto s = static_cast<std::ptrdiff_t>(from);
    const auto e = static_cast<std::ptrdiff_t>(to);
    if (found_.touches(s, e) || organizations_.touches(s, e) || is_done(from, to)) return;
    for (std::size_t i = first; i < last; ++i) {
      if (is_glued(w_[i])) return;
    }
    if (is_firm(first, last) || !counts(first, last)) return;
    add(from, to);
  }

  bool is_done(std::size_t from, std::size_t to) const {
    const auto it = std::upper_bound(chains_.begin(), chains_.end(), from,
                                     [](std::size_t p, const Chain& c) { return p < c.start; });
    return it != chains_.begin() && std::prev(it)->accepted && std::prev(it)->end >= to;
  }

  bool counts(std::size_t first, std::size_t last) const {
    const Word& w = w_[first];
    const auto n = last - first;
    bool everyday = true;
    bool small = false;
    for (std::size_t i = first; i < last; ++i) {
      everyday &= is_everyday(w_[i]);
      small |= w_[i].shape == Shape::SMALL;
    }
    const Word* link = first > 0 && w.linked ? &w_[first - 1] : nullptr;
    if (link != nullptr && DETERMINERS.contains(link->low)) return false;
    if (small) return n > 1 ? !everyday || all_small_parts(first, last) : counts_small(w);
    Chain c;
    c.first = first;
    c.last = last;
    c.start = w.start;
    c.end = w_[last - 1].end;
    c.words = static_cast<int>(n);
    if (goes_on(c) || behind_and(c)) return false;
    if (!everyday) return w.low.size() > 2 && !words_.determined.contains(w.low);
    if (n > 1) return true;
    return counts_everyday(c, w, link);
  }

  bool all_small_parts(std::size_t first, std::size_t last) const {
    return last - first == 2 && parts_.at(w_[first].low).given &&
           parts_.at(w_[first + 1].low).surname && !is_small_word(w_[first].low) &&
           !is_small_word(w_[first + 1].low);
  }

  bool is_everyday(const Word& w) const {
    if (w.shape == Shape::SMALL) return english_word_frequency(w.low) >= 1;
    return w.everyday || w.ordinary ||
           (words_.small.contains(w.low) && english_word_frequency(w.low) > 0);
  }

  // ulla, who is Ulla elsewhere
  bool counts_small(const Word& w) const {
    const bool counted = w.start > 1 && text::is_ascii_digit(t_[w.start - 2]);
    return w.low.size() > 2 && english_word_frequency(w.low) == 0 &&
           !NAME_PARTICLES.contains(w.low) && !is_contract_language(w.low) && !counted &&
           !is_pinyin(w.low, 1);
  }

  // Moved Page, seconded Stone; not Page 3, the Price, Price List
  bool counts_everyday(const Chain& c, const Word& w, const Word* link) const {
    if (w.shape == Shape::CAPITAL && c.end < t_.size() && is_han(t_[c.end])) return true;
    if (words_.determined.contains(w.low) || w.shape == Shape::CAPITALS || w.elsewhere ||
        is_quoted(w) || precedes_number(c.end)) {
      return false;
    }
    const Word* next = c.last < w_.size() && w_[c.last].linked ? &w_[c.last] : nullptr;
    if (next != nullptr && next->shape != Shape::SMALL) next = nullptr;
    const bool acts = next != nullptr && VERBS.contains(next->low);
    if (w.opens) return opens_as_name(c, w, next);
    if (link == nullptr) return acts || follows_person_list(c);
    if (link->shape == Shape::SMALL) return true;
    if (acts && is_touched(a_.of(WordClass::EN_ROLE), link->start, link->end)) return true;
    return link->opens && (link->low.ends_with(U"ed") || (acts && is_small_word(link->low)));
  }

  bool precedes_number(std::size_t at) const {
    while (at < t_.size() && t_[at] == U' ') ++at;
    return at < t_.size() && text::is_ascii_digit(t_[at]);
  }

  // At the beginning of a sentence or alone in a cell
  bool opens_as_name(const Chain& c, const Word& w, const Word* next) const {
    if (w.opens_cell && ends_cell(c.end)) return parts_.at(w.low).given && w.given && !w.ordinary;
    return next != nullptr &&
           (VERBS.contains(next->low) || next->low.ends_with(U"ed") || next->low.ends_with(U"ly"));
  }

  bool follows_person_list(const Chain& c) const {
    const auto gap =
        t_.substr(c.start - std::min<std::size_t>(c.start, 2), std::min<std::size_t>(c.start, 2));
    return gap == U", " || gap == U"/ " || gap.ends_with(U"、") ||
           (!gap.empty() && is_han(gap.back()));
  }

  const NlpArtifacts& a_;
  std::u32string unwrapped_;
  std::u32string_view t_;
  Words words_;
  const std::vector<Word>& w_;
  std::unordered_set<std::size_t> expected_;
  SpanCover found_;
  SpanCover organizations_;
  std::vector<Chain> chains_;
  std::unordered_map<std::u32string, Part> parts_;
  std::unordered_set<std::u32string> firm_words_;
  std::unordered_set<std::u32string> initials_;  // of whole names
  std::vector<RecognizerResult> out_;
};

}  // namespace

std::vector<RecognizerResult> latin_prose_persons(const NlpArtifacts& artifacts,
                                                  const PersonEvidence& evidence) {
  return LatinProseSearch(artifacts, evidence).run();
}

}  // namespace core::nlp
