#include "core/text/regex.hpp"

#define PCRE2_CODE_UNIT_WIDTH 32
#include <algorithm>
#include <atomic>
#include <mutex>

#include <pcre2.h>

#include "core/errors.hpp"
#include "core/text/pattern_scan.hpp"
#include "core/text/prefix_automaton.hpp"
#include "core/text/unicode.hpp"

namespace core::text {
namespace {

// Far above what a sensible pattern needs on a sensible text, and low enough
// that a bad pair ends within seconds.
constexpr std::uint32_t MATCH_LIMIT = 50'000'000;
constexpr std::uint32_t HEAP_LIMIT_KIB = 512 * 1024;
constexpr std::size_t JIT_STACK_START = 32 * 1024;
constexpr std::size_t JIT_STACK_MAX = 16 * 1024 * 1024;

// UCP without UTF: the properties are Unicode's, each 32-bit value is one
// character, and neither validity nor length of the text costs a check per call.
constexpr std::uint32_t COMPILE_OPTIONS = PCRE2_UCP | PCRE2_ALT_BSUX | PCRE2_NEVER_UTF;

struct CodeFree {
  void operator()(pcre2_code* code) const { pcre2_code_free(code); }
};
using Code = std::unique_ptr<pcre2_code, CodeFree>;

// What a match needs besides the program, one set a thread.
struct Workspace {
  Workspace()
      : data(pcre2_match_data_create(Match::MAX_GROUPS, nullptr)),
        context(pcre2_match_context_create(nullptr)),
        stack(pcre2_jit_stack_create(JIT_STACK_START, JIT_STACK_MAX, nullptr)) {
    pcre2_set_match_limit(context, MATCH_LIMIT);
    pcre2_set_heap_limit(context, HEAP_LIMIT_KIB);
    pcre2_jit_stack_assign(context, nullptr, stack);
  }
  ~Workspace() {
    pcre2_match_data_free(data);
    pcre2_match_context_free(context);
    pcre2_jit_stack_free(stack);
  }
  Workspace(const Workspace&) = delete;
  Workspace& operator=(const Workspace&) = delete;

  pcre2_match_data* data;
  pcre2_match_context* context;
  pcre2_jit_stack* stack;
};

Workspace& workspace() {
  thread_local Workspace instance;
  return instance;
}

PCRE2_SPTR units(std::u32string_view text) {
  static constexpr char32_t EMPTY[1] = {};
  return reinterpret_cast<PCRE2_SPTR>(text.data() != nullptr ? text.data() : EMPTY);
}

std::string message_of(int error) {
  PCRE2_UCHAR buffer[160];
  const int length = pcre2_get_error_message(error, buffer, std::size(buffer));
  std::string out;
  for (int i = 0; i < length; ++i) out.push_back(static_cast<char>(buffer[i]));
  return out;
}

// An error of the engine while it matched: no place in the document is named.
[[noreturn]] void fail(const std::string& name, int error) {
  throw RegexError("regular expression " + name + ": " + message_of(error));
}

Code compile(const std::string& name, std::u32string_view pattern, std::uint32_t anchors) {
  int error = 0;
  PCRE2_SIZE offset = 0;
  const std::unique_ptr<pcre2_compile_context, decltype(&pcre2_compile_context_free)> context(
      pcre2_compile_context_create(nullptr), pcre2_compile_context_free);
  pcre2_set_newline(context.get(), PCRE2_NEWLINE_LF);
  Code code(pcre2_compile(units(pattern), pattern.size(), COMPILE_OPTIONS | anchors, &error,
                          &offset, context.get()));
  if (code == nullptr) {
    throw RegexError("regular expression " + name + ": " + message_of(error) + " at offset " +
                     std::to_string(offset));
  }
  return code;
}

constexpr std::uint32_t NO_ID = ~0U;

// The patterns that are looked for in one pass. Lives as long as the process, because
// the constants that join it may be destroyed in any order.
class ScannedPatterns {
 public:
  static ScannedPatterns& instance() {
    static auto* const patterns = new ScannedPatterns;
    return *patterns;
  }

  // Gives the pattern its number if it has none.
  void join(std::atomic<std::uint32_t>& id, std::u32string_view pattern, SearchIndex::Kinds where) {
    const std::lock_guard lock(mutex_);
    if (id == NO_ID) {
      id = next_id_++;
      items_.push_back({id, pattern, 0});
    }
    const auto item = std::find_if(items_.begin(), items_.end(),
                                   [&](const auto& known) { return known.id == id; });
    const auto all = static_cast<SearchIndex::Kinds>(item->where | where);
    if (all != item->where) scan_.reset();
    item->where = all;
  }

  void remove(std::uint32_t id) {
    const std::lock_guard lock(mutex_);
    std::erase_if(items_, [&](const auto& item) { return item.id == id; });
    scan_.reset();
  }

  std::vector<std::u32string_view> patterns() {
    const std::lock_guard lock(mutex_);
    std::vector<std::u32string_view> out;
    for (const auto& item : items_) out.push_back(item.pattern);
    return out;
  }

  // Nothing if so little text does not pay for making it.
  std::shared_ptr<const PatternScan> scan(std::size_t code_points) {
    constexpr std::size_t WORTH_A_SCAN = 20'000;
    const std::lock_guard lock(mutex_);
    seen_ = std::min(seen_ + code_points, WORTH_A_SCAN);
    if (scan_ == nullptr && seen_ == WORTH_A_SCAN) {
      scan_ = std::make_shared<const PatternScan>(items_);
    }
    return scan_;
  }

 private:
  std::mutex mutex_;
  std::vector<PatternScan::Item> items_;
  std::uint32_t next_id_ = 0;
  std::shared_ptr<const PatternScan> scan_;
  std::size_t seen_ = 0;  // code points
};

enum class Anchor { NONE, START, BOTH };
constexpr std::uint32_t ANCHOR_OPTIONS[] = {0, PCRE2_ANCHORED, PCRE2_ANCHORED | PCRE2_ENDANCHORED};

}  // namespace

struct Regex::Request {
  std::u32string_view text;
  std::size_t from = 0;
  Anchor anchor = Anchor::NONE;
  std::uint32_t options = 0;
  const SearchIndex* index = nullptr;  // of the text
  SearchIndex::Kinds where = SearchIndex::ALL;
};

// The JIT takes no anchoring at match time, so each kind of match that is used
// has a program of its own.
struct Regex::Programs {
  struct Slot {
    std::once_flag once;
    Code code;
    bool has_jit = false;
  };

  // An automaton costs about as much as a search of so many code points.
  static constexpr std::size_t WORTH_AN_AUTOMATON = 60'000;

  ~Programs() {
    if (scan_id != NO_ID) ScannedPatterns::instance().remove(scan_id);
  }

  std::u32string pattern;
  std::atomic<std::uint32_t> scan_id{NO_ID};
  std::array<Slot, std::size(ANCHOR_OPTIONS)> slots;

  std::atomic<std::size_t> used{0};  // code points read, about
  std::atomic<bool> is_read{false};
  std::once_flag reading;
  std::unique_ptr<const PrefixAutomaton> prefix;

  // What a match can begin with, once the regex has been used for a while.
  const PrefixAutomaton* beginnings(std::size_t code_points) {
    if (!is_read.load(std::memory_order_acquire)) {
      const auto before = used.fetch_add(code_points, std::memory_order_relaxed);
      if (before + code_points < WORTH_AN_AUTOMATON) return nullptr;
      std::call_once(reading, [&] {
        prefix = PrefixAutomaton::of(pattern);
        is_read.store(true, std::memory_order_release);
      });
    }
    return prefix.get();
  }

  const Slot& get(const std::string& name, Anchor anchor) {
    const auto index = static_cast<std::size_t>(anchor);
    Slot& slot = slots[index];
    std::call_once(slot.once, [&] {
      if (slot.code == nullptr) slot.code = compile(name, pattern, ANCHOR_OPTIONS[index]);
      // Without machine code the interpreter serves.
      slot.has_jit = pcre2_jit_compile(slot.code.get(), PCRE2_JIT_COMPLETE) == 0;
    });
    return slot;
  }
};

Regex::Regex(std::string_view name, std::u32string_view pattern)
    : name_(name), programs_(std::make_unique<Programs>()) {
  programs_->pattern = pattern;
  auto& code = programs_->slots[static_cast<std::size_t>(Anchor::NONE)].code;
  code = compile(name_, pattern, 0);
  std::uint32_t groups = 0;
  pcre2_pattern_info(code.get(), PCRE2_INFO_CAPTURECOUNT, &groups);
  if (groups >= Match::MAX_GROUPS) {
    throw RegexError("regular expression " + name_ + ": more than " +
                     std::to_string(Match::MAX_GROUPS - 1) + " groups");
  }
}

Regex::Regex(std::string_view name, std::u32string_view pattern, Scanned) : Regex(name, pattern) {
  join_scan();
}

Regex::~Regex() = default;

void Regex::join_scan(SearchIndex::Kinds where) const {
  ScannedPatterns::instance().join(programs_->scan_id, programs_->pattern, where);
}

std::vector<std::u32string_view> scanned_patterns() {
  return ScannedPatterns::instance().patterns();
}

void scan_patterns(std::u32string_view text, SearchIndex& index) {
  const auto scan = ScannedPatterns::instance().scan(text.size());
  if (scan != nullptr) index.set_places(scan->scan(text, index));
}

std::u32string_view Regex::pattern() const { return programs_->pattern; }

bool Regex::run(const Request& request, Match& match) const {
  const auto& program = programs_->get(name_, request.anchor);
  Workspace& space = workspace();
  const auto attempt = [&](auto* matcher, std::uint32_t extra) {
    return matcher(program.code.get(), units(request.text), request.text.size(), request.from,
                   request.options | extra, space.data, space.context);
  };
  int count = PCRE2_ERROR_JIT_STACKLIMIT;
  if (program.has_jit) count = attempt(pcre2_jit_match, 0);
  if (count == PCRE2_ERROR_JIT_STACKLIMIT) count = attempt(pcre2_match, PCRE2_NO_JIT);
  if (count == PCRE2_ERROR_NOMATCH) return false;
  if (count < 0) fail(name_, count);
  const PCRE2_SIZE* offsets = pcre2_get_ovector_pointer(space.data);
  match.subject_ = request.text;
  for (std::size_t g = 0; g < Match::MAX_GROUPS; ++g) {
    const bool taken = g < static_cast<std::size_t>(count) && offsets[2 * g] != PCRE2_UNSET;
    match.bounds_[g] = taken
                           ? std::pair<std::size_t, std::size_t>(offsets[2 * g], offsets[2 * g + 1])
                           : std::pair(std::u32string_view::npos, std::u32string_view::npos);
  }
  return true;
}

bool Regex::run_at(const PatternPlaces::Offsets& places, const Request& request,
                   Match& match) const {
  Request here{.text = request.text, .anchor = Anchor::START};
  for (auto at = std::lower_bound(places.begin(), places.end(), request.from); at != places.end();
       ++at) {
    here.from = *at;
    if (may_begin(here.text, here.from) && run(here, match)) return true;
  }
  return false;
}

bool Regex::run_search(const Request& request, Match& match) const {
  const bool indexed = request.index != nullptr && request.index->size() == request.text.size();
  if (const auto* places = indexed ? request.index->places().of(programs_->scan_id) : nullptr) {
    return run_at(*places, request, match);
  }
  constexpr std::size_t PATIENCE = 16;  // attempts
  constexpr std::size_t WORTH = 8;      // code points passed over for each
  const PrefixAutomaton* prefix = programs_->beginnings(request.text.size() - request.from);
  if (prefix == nullptr) return run(request, match);
  Request here{.text = request.text, .anchor = Anchor::START};
  const auto next = [&](std::size_t from) {
    return !indexed ? prefix->next(here.text, from)
                    : prefix->next(here.text, *request.index, from, request.where);
  };
  std::size_t attempts = 0;
  for (std::size_t at = next(request.from); at < here.text.size(); at = next(at + 1)) {
    here.from = at;
    if (run(here, match)) return true;
    // Where matches could begin nearly everywhere, the engine's own search is better.
    if (++attempts > PATIENCE && attempts * WORTH > at - request.from) {
      return run({.text = request.text, .from = at + 1}, match);
    }
  }
  return false;
}

std::optional<Match> Regex::once(const Request& request) const {
  std::optional<Match> match(std::in_place);
  if (request.from > request.text.size() || !run(request, *match)) match.reset();
  return match;
}

std::optional<Match> Regex::full_match(std::u32string_view text) const {
  if (!may_begin(text, 0)) return std::nullopt;
  return once({.text = text, .anchor = Anchor::BOTH});
}

std::optional<Match> Regex::match(std::u32string_view text) const {
  if (!may_begin(text, 0)) return std::nullopt;
  return once({.text = text, .anchor = Anchor::START});
}

std::optional<Match> Regex::search(std::u32string_view text, std::size_t from) const {
  std::optional<Match> match(std::in_place);
  if (from > text.size() || !run_search({.text = text, .from = from}, *match)) match.reset();
  return match;
}

bool Regex::may_begin(std::u32string_view text, std::size_t at) const {
  constexpr std::size_t COST = 16;  // of an attempt, in code points searched
  const PrefixAutomaton* prefix = programs_->beginnings(COST);
  return prefix == nullptr || (at < text.size() && prefix->may_begin(text, at));
}

std::optional<Match> Regex::match_at(std::u32string_view text, std::size_t at) const {
  if (!may_begin(text, at)) return std::nullopt;
  return once({.text = text, .from = at, .anchor = Anchor::START});
}

std::optional<Match> Regex::search(std::u32string_view text, const SearchIndex& index,
                                   std::size_t from, SearchIndex::Kinds where) const {
  std::optional<Match> match(std::in_place);
  const Request request{.text = text, .from = from, .index = &index, .where = where};
  if (from > text.size() || !run_search(request, *match)) match.reset();
  return match;
}

std::vector<Match> Regex::find_all(std::u32string_view text) const {
  return find_all(Request{.text = text});
}

std::vector<Match> Regex::find_all(std::u32string_view text, const SearchIndex& index) const {
  return find_all(Request{.text = text, .index = &index});
}

std::vector<Match> Regex::find_all(const Request& all) const {
  std::vector<Match> out;
  Match found;
  Request request = all;
  while (request.from <= request.text.size() && run_search(request, found)) {
    out.push_back(found);
    // Where an empty match was taken, only a longer one may follow.
    request.options = found.end() == found.start() ? PCRE2_NOTEMPTY_ATSTART : 0;
    request.from = found.end();
  }
  return out;
}

std::u32string Regex::replace_all(std::u32string_view text, std::u32string_view replacement) const {
  std::u32string out;
  std::size_t last = 0;
  for (const Match& found : find_all(text)) {
    out.append(text, last, found.start() - last);
    out.append(replacement);
    last = found.end();
  }
  out.append(text, last);
  return out;
}

std::vector<std::u32string_view> Regex::split(std::u32string_view text) const {
  std::vector<std::u32string_view> out;
  std::size_t last = 0;
  for (const Match& found : find_all(text)) {
    out.push_back(text.substr(last, found.start() - last));
    last = found.end();
  }
  out.push_back(text.substr(last));
  return out;
}

std::size_t Regex::group(std::u32string_view group_name) const {
  const auto& code = programs_->slots[static_cast<std::size_t>(Anchor::NONE)].code;
  const std::u32string terminated(group_name);
  const int number = pcre2_substring_number_from_name(code.get(), units(terminated));
  if (number < 0) fail(name_, number);
  return static_cast<std::size_t>(number);
}

std::u32string escape_for_regex(std::u32string_view text) {
  std::u32string out;
  for (const char32_t c : text) {
    if (c < 0x80 && !is_ascii_alnum(c) && c != U'_') out.push_back(U'\\');
    out.push_back(c);
  }
  return out;
}

}  // namespace core::text
