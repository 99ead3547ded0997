// What is written over the text of a .docx, and how it gets into the elements.
#include <algorithm>
#include <iterator>
#include <unordered_map>
#include <utility>

#include "core/text/utf8.hpp"
#include "documents/characters.hpp"
#include "documents/docx_text.hpp"
#include "documents/xml.hpp"

namespace documents {
namespace {

using core::anonymization::Offset;

bool within_deletion(pugi::xml_node node) {
  for (; node; node = node.parent()) {
    if (is(node, "w:del") || is(node, "w:moveFrom")) return true;
  }
  return false;
}

// A separator without the joiners in it: "\n<joiner>\n" is one line end.
std::u32string plain_separator(std::u32string_view separator) {
  std::u32string out;
  for (std::size_t i = 0; i < separator.size(); ++i) {
    if (separator[i] == U'\uE000') {
      i = separator.find(U'\n', i);
    } else {
      out += separator[i];
    }
  }
  return out;
}

// The text of an element. Tabs and line ends that are written into a run are elements
// of their own; what stands before them goes into further elements of the same kind.
class RunText {
 public:
  RunText(pugi::xml_node node, bool in_run) : node_(node), in_run_(in_run) {}

  void keep(std::u32string_view text) { rest_ += text; }
  void write(std::u32string_view text) {
    for (const char32_t c : text) {
      if (in_run_ && (c == U'\t' || c == U'\n')) {
        insert_text();
        node_.parent().insert_child_before(c == U'\t' ? "w:tab" : "w:br", node_);
      } else if (!in_run_ || c != U'\r') {
        rest_ += c;
      }
    }
  }
  // What is left for the element itself.
  const std::u32string& rest() const { return rest_; }

 private:
  void insert_text() {
    if (rest_.empty()) return;
    set_own_text(node_.parent().insert_child_before(node_.name(), node_),
                 core::text::encode_utf8(rest_));
    rest_.clear();
  }

  pugi::xml_node node_;
  bool in_run_;
  std::u32string rest_;
};

bool is_run_text(const pugi::xml_node& node) { return is(node, "w:t") || is(node, "w:delText"); }

}  // namespace

std::vector<DocxText::Part> DocxText::parts_of(std::size_t start, std::size_t end) const {
  std::vector<Part> out;
  auto piece = std::partition_point(pieces_.begin(), pieces_.end(),
                                    [start](const Piece& p) { return p.start + p.size <= start; });
  for (; piece != pieces_.end() && piece->start < end; ++piece) {
    Part part{piece->slot, 0, slots_[piece->slot].source.size()};
    const auto place = [&](std::size_t at) {
      return piece->places.empty() ? at - piece->start : piece->places[at - piece->start];
    };
    // What is not seen before and behind a value is none of it.
    if (piece->size > 0 && piece->start <= start) part.from = place(start);
    if (piece->size > 0 && piece->start + piece->size >= end) part.to = place(end - 1) + 1;
    out.push_back(part);
  }
  return out;
}

std::u32string DocxText::source(std::size_t start, std::size_t end) const {
  std::u32string out;
  for (const auto& part : parts_of(start, end)) {
    out.append(slots_[part.slot].source, part.from, part.to - part.from);
  }
  return out;
}

// The cuts of a slot stay sorted. Spans come in the order of the text, so that most
// are put behind all others.
bool DocxText::cut(Slot& slot, const Part& part, std::u32string_view written,
                   std::u32string_view source) {
  auto& cuts = slot.cuts;
  const auto before = std::partition_point(cuts.begin(), cuts.end(),
                                           [&](const Cut& c) { return c.to <= part.from; });
  std::vector<Cut> fresh;
  std::size_t at = part.from;
  const auto cut_until = [&](std::size_t end) {
    if (at < end) fresh.push_back({at, end, {}, {}});
  };
  auto behind = before;
  for (; behind != cuts.end() && behind->from < part.to; ++behind) {
    cut_until(behind->from);
    at = behind->to;
  }
  cut_until(part.to);
  if (fresh.empty()) return false;
  fresh.front().written = written;
  fresh.front().source = source;
  const auto from = before - cuts.begin();
  const auto to = behind - cuts.begin() + static_cast<std::ptrdiff_t>(fresh.size());
  cuts.insert(before, std::make_move_iterator(fresh.begin()), std::make_move_iterator(fresh.end()));
  std::sort(cuts.begin() + from, cuts.begin() + to,
            [](const Cut& a, const Cut& b) { return a.from < b.from; });
  return true;
}

bool DocxText::write_parts(const std::vector<Part>& parts, std::size_t first, const Span& span) {
  const auto whole = source(span.start, span.end);
  bool wrote = false;
  for (std::size_t i = 0; i < parts.size(); ++i) {
    const bool here = !wrote && i >= first;
    if (cut(slots_[parts[i].slot], parts[i], here ? span.written : std::u32string_view(),
            here ? whole : std::u32string_view())) {
      wrote = wrote || here;
    }
  }
  return wrote;
}

// The first part that was inserted or deleted; parts.size() if there is none.
std::size_t DocxText::changed_part(const std::vector<Part>& parts) const {
  const auto found = std::find_if(parts.begin(), parts.end(), [this](const Part& part) {
    return slots_[part.slot].change != Change::NONE;
  });
  return static_cast<std::size_t>(found - parts.begin());
}

// A value that a tracked change splits is written into what was inserted or deleted of
// it, if a value of the other view takes all the text that both share and is written
// into what is its own: so each view has its value, and only that.
std::vector<std::size_t> DocxText::first_parts(const std::vector<Span>& spans,
                                               const std::vector<std::vector<Part>>& parts) const {
  struct Claim {
    std::size_t from;
    std::size_t to;
    bool rejected;
  };
  std::unordered_map<std::size_t, std::vector<Claim>> claims;  // by slot
  for (std::size_t i = 0; i < spans.size(); ++i) {
    if (changed_part(parts[i]) == parts[i].size()) continue;
    for (const auto& [slot, from, to] : parts[i]) {
      claims[slot].push_back({from, to, is_rejected(spans[i].start)});
    }
  }
  const auto is_shared = [&](const Part& part, bool rejected) {
    if (slots_[part.slot].change != Change::NONE) return true;
    std::size_t at = part.from;
    for (const auto& claim : claims[part.slot]) {
      if (claim.rejected != rejected && claim.from <= at) at = std::max(at, claim.to);
    }
    return at >= part.to;
  };
  std::vector<std::size_t> out(spans.size(), 0);
  for (std::size_t i = 0; i < spans.size(); ++i) {
    const auto changed = changed_part(parts[i]);
    if (changed == 0 || changed == parts[i].size()) continue;
    const bool rejected = is_rejected(spans[i].start);
    const bool all = std::all_of(parts[i].begin(), parts[i].end(),
                                 [&](const Part& part) { return is_shared(part, rejected); });
    if (all) out[i] = changed;
  }
  return out;
}

std::vector<bool> DocxText::replace(const std::vector<Span>& spans) {
  std::vector<std::vector<Part>> parts;
  parts.reserve(spans.size());
  for (const auto& span : spans) parts.push_back(parts_of(span.start, span.end));
  const auto first = first_parts(spans, parts);
  std::vector<bool> out;
  out.reserve(spans.size());
  for (std::size_t i = 0; i < spans.size(); ++i) {
    out.push_back(write_parts(parts[i], first[i], spans[i]));
  }
  return out;
}

void DocxText::replace_readings() {
  for (const auto& entry : rubies_) {
    const Cut* word = nullptr;
    for (const auto slot : entry.base) {
      for (const auto& c : slots_[slot].cuts) {
        if (word == nullptr || word->written.empty()) word = &c;
      }
    }
    if (word != nullptr) replace_reading(entry, std::u32string(word->written));
  }
}

void DocxText::replace_reading(const Ruby& entry, std::u32string_view written) {
  std::u32string whole;
  for (const auto i : entry.reading_slots) {
    whole += slots_[i].source;
    slots_[i].cuts = {{0, slots_[i].source.size(), {}, {}}};
  }
  if (entry.reading_slots.empty()) return;
  auto& first = slots_[entry.reading_slots.front()].cuts.front();
  first.written = written;
  first.source = whole;
}

void DocxText::append_written(const Piece& piece, WrittenText& out) const {
  const auto& slot = slots_[piece.slot];
  if (slot.kind == Kind::NAME) {
    out.text += slot.name;
    out.original += slot.name;
    return;
  }
  std::size_t at = 0;
  const auto keep_until = [&](std::size_t end) {
    for (; at < end; ++at) {
      if (is_invisible(slot.source[at])) continue;
      out.text += seen_as(slot.source[at]);
      out.original += seen_as(slot.source[at]);
    }
  };
  for (const auto& c : slot.cuts) {
    keep_until(c.from);
    if (!c.written.empty()) {
      const auto start = static_cast<Offset>(out.text.size());
      out.text += c.written;
      out.placements.push_back({start, static_cast<Offset>(out.text.size()), c.source});
    }
    out.original.append(slot.source, c.from, c.to - c.from);
    at = c.to;
  }
  keep_until(slot.source.size());
}

void DocxText::forget() {
  for (auto& slot : slots_) slot.cuts.clear();
}

void DocxText::note_names() {
  for (auto& slot : slots_) {
    if (slot.kind == Kind::NAME) slot.name = decoded(slot.attribute.value());
  }
}

WrittenText DocxText::written() const {
  WrittenText out;
  std::size_t at = 0;
  for (const auto& piece : pieces_) {
    const auto between = plain_separator(std::u32string_view(text_).substr(at, piece.start - at));
    out.text += between;
    out.original += between;
    append_written(piece, out);
    at = piece.start + piece.size;
  }
  out.text += std::u32string_view(text_).substr(at);
  out.original += std::u32string_view(text_).substr(at);
  return out;
}

void DocxText::write_text(const Slot& slot) {
  RunText run(slot.node, slot.kind == Kind::TEXT && is_run_text(slot.node));
  std::size_t at = 0;
  for (const auto& c : slot.cuts) {
    run.keep(std::u32string_view(slot.source).substr(at, c.from - at));
    run.write(c.written);
    at = c.to;
  }
  run.keep(std::u32string_view(slot.source).substr(at));
  const auto bytes = core::text::encode_utf8(run.rest());
  if (slot.kind == Kind::ATTRIBUTE) {
    auto attribute = slot.attribute;
    attribute.set_value(bytes.c_str());
  } else {
    set_own_text(slot.node, bytes);
  }
}

void DocxText::write_atom(const Slot& slot) {
  auto run = slot.node.parent();
  const auto& written = slot.cuts.front().written;
  if (!written.empty()) {
    auto text = run.insert_child_before(within_deletion(run) ? "w:delText" : "w:t", slot.node);
    RunText in_run(text, true);
    in_run.write(written);
    set_own_text(text, core::text::encode_utf8(in_run.rest()));
  }
  run.remove_child(slot.node);
}

std::unordered_set<std::size_t> DocxText::write_back() {
  std::unordered_set<std::size_t> changed;
  for (const auto& slot : slots_) {
    if (slot.cuts.empty() || slot.kind == Kind::NAME) continue;
    changed.insert(slot.node.root().hash_value());
    if (slot.kind == Kind::ATOM) {
      write_atom(slot);
    } else {
      write_text(slot);
    }
  }
  return changed;
}

}  // namespace documents
