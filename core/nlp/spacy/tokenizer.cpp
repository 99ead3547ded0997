#include "core/nlp/spacy/tokenizer.hpp"

#include <algorithm>
#include <utility>

#include "core/errors.hpp"
#include "core/nlp/spacy/python_pattern.hpp"

namespace core::nlp::spacy {
namespace {

constexpr std::size_t TOO_LONG = std::size_t{1} << 31;
// Chunks that are remembered; a bound on memory, not on what is recognized.
constexpr std::size_t MOST_KNOWN_CHUNKS = 1 << 15;

std::uint32_t size_of(std::u32string_view text) { return static_cast<std::uint32_t>(text.size()); }

// The length of the first match anywhere; patterns anchor themselves.
std::size_t match_length(const std::unique_ptr<const text::Regex>& pattern,
                         std::u32string_view text) {
  if (pattern == nullptr) return 0;
  const auto match = pattern->search(text);
  return match ? match->end() - match->start() : 0;
}

bool matches_at_start(const std::unique_ptr<const text::Regex>& pattern, std::u32string_view text) {
  return pattern != nullptr && pattern->match(text).has_value();
}

void put_exception(const std::vector<ExceptionToken>& exception, std::uint32_t offset,
                   std::vector<Token>& out) {
  for (const auto& token : exception) {
    out.push_back({offset, offset + token.length, token.norm, false});
    offset += token.length;
  }
}

}  // namespace

// The tokens of the chunks of one text, each kind of chunk split once.
class Tokenizer::Chunks {
 public:
  Chunks(const Tokenizer& tokenizer, Exceptions exceptions)
      : tokenizer_(tokenizer), exceptions_(exceptions) {}

  void split(std::u32string_view chunk, std::uint32_t offset, std::vector<Token>& out) {
    if (known_.size() > MOST_KNOWN_CHUNKS) {
      known_.clear();
      tokens_.clear();
    }
    const auto [found, is_new] = known_.try_emplace(chunk, tokens_.size(), 0);
    auto& [first, last] = found->second;
    if (is_new) {
      tokenizer_.split_chunk(chunk, 0, exceptions_, tokens_);
      last = tokens_.size();
    }
    for (auto i = first; i < last; ++i) {
      out.push_back(tokens_[i]);
      out.back().start += offset;
      out.back().end += offset;
    }
  }

 private:
  const Tokenizer& tokenizer_;
  Exceptions exceptions_;
  std::unordered_map<std::u32string_view, std::pair<std::size_t, std::size_t>> known_;
  std::vector<Token> tokens_;
};

Tokenizer::Tokenizer(TokenizerRules rules) : rules_(std::move(rules)) { read_torn_exceptions(); }

std::vector<Token> Tokenizer::tokenize(std::u32string_view text) const {
  if (text.size() >= TOO_LONG) throw ValueError("the text is too long to be analysed");
  return join_torn(text, first_pass(text, Exceptions::USED));
}

std::vector<Token> Tokenizer::first_pass(std::u32string_view text, Exceptions exceptions) const {
  std::vector<Token> out;
  out.reserve(text.size() / 4);
  Chunks chunks(*this, exceptions);
  for (std::size_t at = 0; at < text.size();) {
    const bool space = is_python_space(text[at]);
    auto end = at + 1;
    while (end < text.size() && is_python_space(text[end]) == space) ++end;
    chunks.split(text.substr(at, end - at), static_cast<std::uint32_t>(at), out);
    at = end;
    if (!space && at < text.size() && text[at] == U' ') {
      out.back().space_after = true;
      ++at;
    }
  }
  return out;
}

const std::vector<ExceptionToken>* Tokenizer::exception(std::u32string_view text,
                                                        Exceptions exceptions) const {
  return exceptions == Exceptions::USED && !text.empty() ? rules_.exception(text) : nullptr;
}

void Tokenizer::split_chunk(std::u32string_view chunk, std::uint32_t offset, Exceptions exceptions,
                            std::vector<Token>& out) const {
  if (const auto* whole = exception(chunk, exceptions)) return put_exception(*whole, offset, out);
  std::vector<std::uint32_t> suffixes;  // lengths, from the end inwards
  auto s = chunk;
  auto at = offset;
  const auto take_prefix = [&](std::size_t length) {
    out.push_back({at, at + static_cast<std::uint32_t>(length), 0, false});
    at = out.back().end;
    s.remove_prefix(length);
  };
  const auto take_suffix = [&](std::size_t length) {
    suffixes.push_back(static_cast<std::uint32_t>(length));
    s.remove_suffix(length);
  };
  for (std::size_t before = 0; !s.empty() && s.size() != before;) {
    before = s.size();
    if (matches_at_start(rules_.token_match, s) || exception(s, exceptions) != nullptr) break;
    const auto p = match_length(rules_.prefix_search, s);
    if (p > 0 && exception(s.substr(p), exceptions) != nullptr) {
      take_prefix(p);
      break;
    }
    // A look-behind does not see the prefix, but the exception is looked for with it.
    const auto q = rules_.suffix_search.match_length(s.substr(p));
    if (q > 0 && exception(s.substr(0, s.size() - q), exceptions) != nullptr) {
      take_suffix(q);
      break;
    }
    const bool both = p > 0 && q > 0 && p + q <= s.size();
    if (q > 0 && (both || p == 0)) take_suffix(q);
    if (p > 0) take_prefix(p);
  }
  split_middle(s, at, exceptions, out);
  at += size_of(s);
  for (auto length = suffixes.rbegin(); length != suffixes.rend(); ++length) {
    out.push_back({at, at + *length, 0, false});
    at += *length;
  }
}

void Tokenizer::split_middle(std::u32string_view middle, std::uint32_t offset,
                             Exceptions exceptions, std::vector<Token>& out) const {
  if (middle.empty()) return;
  if (const auto* found = exception(middle, exceptions)) return put_exception(*found, offset, out);
  if (matches_at_start(rules_.token_match, middle) || matches_at_start(rules_.url_match, middle)) {
    out.push_back({offset, offset + size_of(middle), 0, false});
    return;
  }
  split_infixes(middle, offset, out);
}

void Tokenizer::split_infixes(std::u32string_view middle, std::uint32_t offset,
                              std::vector<Token>& out) const {
  std::size_t at = 0;
  const auto put_until = [&](std::size_t end) {
    if (end <= at) return;
    out.push_back({offset + static_cast<std::uint32_t>(at),
                   offset + static_cast<std::uint32_t>(end), 0, false});
    at = end;
  };
  const auto put = [&](const text::Match& infix) {
    if (infix.start() == 0) return;
    put_until(infix.start());
    put_until(infix.end());
  };
  if (rules_.infix_finditer != nullptr) {
    const auto& infixes = *rules_.infix_finditer;
    // One by one: all of them at once would take much memory for a long text.
    auto infix = infixes.search(middle);
    for (; infix && infix->end() > infix->start(); infix = infixes.search(middle, infix->end())) {
      put(*infix);
    }
    if (infix) {  // an empty one, behind which a search alone would not get
      for (const auto& other : infixes.find_all(middle)) {
        if (other.start() >= infix->start()) put(other);
      }
    }
  }
  put_until(middle.size());
}

}  // namespace core::nlp::spacy
