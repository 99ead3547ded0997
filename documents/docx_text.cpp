#include "documents/docx_text.hpp"

#include <algorithm>
#include <charconv>
#include <unordered_map>
#include <utility>

#include "core/anonymization/rules/helpers.hpp"
#include "core/restore/placeholder_reader.hpp"
#include "core/text/utf8.hpp"
#include "core/text/word_set.hpp"
#include "documents/characters.hpp"
#include "documents/errors.hpp"
#include "documents/xml.hpp"

namespace documents {
namespace {

using core::text::type_names;

// What holds the text that people read. Instructions of fields are no such text.
constexpr auto TEXT_ELEMENTS = type_names({"w:t", "w:delText", "m:t", "a:t"});
// Within a paragraph: no text for people below them.
constexpr auto SILENT_ELEMENTS =
    type_names({"w:pPr", "w:rPr", "w:instrText", "w:delInstrText", "w:sectPr", "w:sdtPr",
                "w:fldData", "w:rubyPr", "w:smartTagPr", "w:customXmlPr"});
// A text of its own within a paragraph.
constexpr auto ASIDE_ELEMENTS =
    type_names({"w:txbxContent", "mc:Fallback", "w:rt", "w:p", "w:tbl", "a:p"});

// While the text grows, the document's own U+E000 and U+E001 are told from those
// of joiners by values that are no code points.
constexpr char32_t OWN_OPENING = 0x110000;
constexpr char32_t OWN_CLOSING = 0x110001;

constexpr std::size_t LEAST_PLACEHOLDER = 4;  // bytes: [A1]

char32_t analysed(char32_t c) {
  if (c == 0xE000) return OWN_OPENING;
  if (c == 0xE001) return OWN_CLOSING;
  return seen_as(c);
}

// The character of a w:sym: by its code, where it is no place in a symbol font.
char32_t symbol_of(const pugi::xml_node& node) {
  const std::string_view code = node.attribute("w:char").value();
  unsigned value = 0;
  const auto read = std::from_chars(code.data(), code.data() + code.size(), value, 16);
  const bool is_character = read.ec == std::errc() && value > 0x20 && value < 0xD800;
  return is_character ? static_cast<char32_t>(value) : U'\uFFFD';
}

// What stands for an element without text of its own; nothing for elements that are
// no character.
std::optional<char32_t> atom_of(const pugi::xml_node& node) {
  const std::string_view name = node.name();
  if (name == "w:tab" || name == "w:ptab") return U'\t';
  if (name == "w:br" || name == "w:cr") return U'\n';
  if (name == "w:noBreakHyphen") return NON_BREAKING_HYPHEN;
  if (name == "w:softHyphen") return SOFT_HYPHEN;
  if (name == "w:sym") return symbol_of(node);
  return std::nullopt;
}

bool is_blank(std::string_view text) {
  return text.find_first_not_of(" \t\r\n") == std::string_view::npos;
}

// Tracked changes of the mark at the end of a paragraph: without it, the next one goes
// on in this.
struct Mark {
  bool deleted = false;
  bool inserted = false;
};
Mark mark_of(const pugi::xml_node& paragraph) {
  const auto properties = paragraph.child("w:pPr").child("w:rPr");
  return {properties.child("w:del") || properties.child("w:moveFrom"),
          properties.child("w:ins") || properties.child("w:moveTo")};
}

// A name by which other elements refer to this one.
pugi::xml_attribute name_attribute(const pugi::xml_node& node) {
  if (is(node, "w:bookmarkStart")) return node.attribute("w:name");
  const std::string_view parent = node.parent().name();
  if (is(node, "w:name") && parent == "w:ffData") return node.attribute("w:val");
  const bool of_style = parent == "w:style" && node.parent().attribute("w:customStyle").as_bool();
  return of_style && is(node, "w:name") ? node.attribute("w:val") : pugi::xml_attribute();
}

// The attribute of this element that holds text for people.
pugi::xml_attribute text_attribute(const pugi::xml_node& node) {
  const std::string_view name = node.name();
  constexpr auto WITH_VALUE =
      type_names({"w:alias", "w:tag", "w:lvlText", "w:listEntry", "w:docPart", "w:category"});
  if (WITH_VALUE.contains(name)) return node.attribute("w:val");
  if (name == "w:listItem") return node.attribute("w:displayText");
  if (name == "v:textpath") return node.attribute("string");
  const std::string_view parent = node.parent().name();
  if (name == "w:default" && parent == "w:textInput") return node.attribute("w:val");
  if (name == "w:name" && (parent == "w:docPartPr" || parent == "w:category")) {
    return node.attribute("w:val");
  }
  return {};
}

}  // namespace

// Reading.

void DocxText::add_story(const std::string& name, const pugi::xml_node& root,
                         const std::string& part) {
  part_ = part;
  begin_story(name);
  block(root);
}

void DocxText::add_strings(const std::string& name, const pugi::xml_node& root,
                           const std::string& part) {
  part_ = part;
  begin_story(name);
  strings(root);
}

void DocxText::add_attributes(const std::string& name, const std::vector<pugi::xml_node>& roots) {
  begin_story(name);
  const auto add = [&](Kind kind, const pugi::xml_node& node,
                       const pugi::xml_attribute& attribute) {
    if (!attribute || is_blank(attribute.value())) return;
    emit({add_slot(kind, node, attribute, decoded(attribute.value()))});
  };
  for (const auto& root : roots) {
    for_each_element(root, [&](const pugi::xml_node& node) {
      add(Kind::ATTRIBUTE, node, text_attribute(node));
      if (is(node, "w:listItem")) add(Kind::ATTRIBUTE, node, node.attribute("w:value"));
      add(Kind::NAME, node, name_attribute(node));
      return true;
    });
  }
}

void DocxText::add_other_placeholders(const std::string& name,
                                      const std::vector<pugi::xml_node>& roots) {
  begin_story(name);
  const auto add = [&](Kind kind, const pugi::xml_node& node, const pugi::xml_attribute& attribute,
                       std::string_view value) {
    if (value.size() < LEAST_PLACEHOLDER) return;
    auto text = decoded(value);
    if (core::restore::find_written_placeholders(text).empty()) return;
    emit({add_slot(kind, node, attribute, std::move(text))});
  };
  for (const auto& root : roots) {
    for_each_element(root, [&](const pugi::xml_node& node) {
      for (const auto& attribute : node.attributes()) {
        if (!holds(attribute)) add(Kind::ATTRIBUTE, node, attribute, attribute.value());
      }
      if (!holds(node)) add(Kind::TEXT, node, {}, own_text(node));
      return true;
    });
  }
}

void DocxText::add_rejected(const std::string& name) {
  begin_story(name);
  rejected_start_ = text_.size();
  for (const auto& slots : rejected_) emit(slots);
}

void DocxText::find_readings() {
  std::unordered_map<std::size_t, std::size_t> rubies;  // by reading
  for (std::size_t i = 0; i < rubies_.size(); ++i) {
    rubies.emplace(rubies_[i].reading.hash_value(), i);
  }
  for (std::size_t i = 0; i < slots_.size() && !rubies.empty(); ++i) {
    for (auto node = slots_[i].node; node; node = node.parent()) {
      const auto found = rubies.find(node.hash_value());
      if (found != rubies.end()) rubies_[found->second].reading_slots.push_back(i);
    }
  }
}

void DocxText::finish() {
  find_readings();
  escapes_ = JoinerEscapes::of(text_);
  const std::u32string own = U"\uE000\uE001";
  const auto stand_ins = between_ == Between::JOINERS ? escapes_.escape(own) : own;
  for (char32_t& c : text_) {
    if (c == OWN_OPENING || c == OWN_CLOSING) c = stand_ins[c - OWN_OPENING];
  }
}

void DocxText::begin_story(const std::string& name) {
  stories_.push_back({name, text_.size()});
  separator_ = framed(core::anonymization::STORY_JOINER);
}

const std::string& DocxText::story_at(std::size_t at) const {
  const auto behind = std::partition_point(stories_.begin(), stories_.end(),
                                           [at](const Story& story) { return story.start <= at; });
  return std::prev(behind)->name;
}

void DocxText::block(const pugi::xml_node& node) {
  for (const auto& child : node.children()) {
    if (is(child, "w:p")) {
      paragraph(child);
      continue;
    }
    if (!child.first_child()) continue;  // marks between paragraphs
    close_paragraph();
    if (is(child, "w:tr")) {
      row(child);
    } else if (is(child, "w:tc")) {
      cell(child);
    } else {
      block(child);
      if (is(child, "w:tbl")) separator_ = framed(core::anonymization::PARAGRAPH_JOINER);
    }
  }
  close_paragraph();
}

void DocxText::row(const pugi::xml_node& node) {
  const auto outer = std::exchange(cells_, 0);
  block(node);
  cells_ = outer;
  separator_ = U"\n";
}

void DocxText::cell(const pugi::xml_node& node) {
  if (cells_++ > 0) {
    separate();
    text_ += U'\t';
  }
  const auto before = text_.size();
  block(node);
  if (text_.size() > before) separator_.reset();
}

void DocxText::paragraph(const pugi::xml_node& node) {
  Paragraph found;
  for (const auto& child : node.children()) inlines(child, Change::NONE, found);
  const auto mark = mark_of(node);
  open_.changed = open_.changed || mark.deleted || mark.inserted;
  for (const auto& [slot, change] : found.inlines) {
    slots_[slot].change = change;
    if (change != Change::DELETED) open_.accepted.push_back(slot);
    if (change != Change::INSERTED) open_.rejected.push_back(slot);
    open_.changed = open_.changed || change == Change::DELETED;
  }
  if (!mark.deleted) emit(std::exchange(open_.accepted, {}));
  if (!mark.inserted) {
    if (open_.changed) rejected_.push_back(open_.rejected);
    open_.rejected.clear();
  }
  if (!mark.deleted && !mark.inserted) open_.changed = false;
  asides(found);
}

void DocxText::close_paragraph() {
  if (!open_.rejected.empty() && open_.changed) rejected_.push_back(open_.rejected);
  emit(open_.accepted);
  open_ = {};
}

void DocxText::asides(const Paragraph& paragraph_found) {
  if (paragraph_found.aside.empty()) return;
  const auto outer = stories_.back().name;
  const auto outer_open = std::exchange(open_, {});
  for (const auto& node : paragraph_found.aside) {
    begin_story(is(node, "w:rt") ? "phonetic guide" : "text box");
    const auto outer_cells = std::exchange(cells_, 0);
    if (is(node, "w:txbxContent") || is(node, "w:tbl")) {
      block(node);
    } else {
      paragraph(node);
      close_paragraph();
    }
    cells_ = outer_cells;
  }
  open_ = outer_open;
  begin_story(outer);
}

void DocxText::inlines(const pugi::xml_node& node, Change change, Paragraph& out) {
  const std::string_view name = node.name();
  if (SILENT_ELEMENTS.contains(name) || leaf(node, change, out)) return;
  if (ASIDE_ELEMENTS.contains(name)) {
    out.aside.push_back(node);
    return;
  }
  if (name == "w:ruby") return ruby(node, change, out);
  if (name == "w:del" || name == "w:moveFrom") change = Change::DELETED;
  if ((name == "w:ins" || name == "w:moveTo") && change == Change::NONE) change = Change::INSERTED;
  for (const auto& child : node.children()) inlines(child, change, out);
}

void DocxText::ruby(const pugi::xml_node& node, Change change, Paragraph& out) {
  const auto before = out.inlines.size();
  for (const auto& child : node.children()) inlines(child, change, out);
  Ruby entry;
  entry.reading = node.child("w:rt");
  for (std::size_t i = before; i < out.inlines.size(); ++i) {
    entry.base.push_back(out.inlines[i].slot);
  }
  rubies_.push_back(std::move(entry));
}

bool DocxText::leaf(const pugi::xml_node& node, Change change, Paragraph& out) {
  if (TEXT_ELEMENTS.contains(node.name())) {
    out.inlines.push_back({text_slot(node), change});
    return true;
  }
  const auto atom = atom_of(node);
  if (!atom) return false;
  out.inlines.push_back({add_slot(Kind::ATOM, node, {}, std::u32string(1, *atom)), change});
  return true;
}

void DocxText::strings(const pugi::xml_node& node) {
  if (is(node, "a:p")) {
    paragraph(node);
    return close_paragraph();
  }
  if (!is_blank(own_text(node))) emit({text_slot(node)});
  for (const auto& child : node.children()) {
    if (child.type() == pugi::node_element) strings(child);
  }
}

std::u32string DocxText::decoded(std::string_view text) const {
  try {
    return core::text::decode_utf8(text);
  } catch (const core::text::DecodeError&) {
    throw DocumentError(part_ + ": holds text that is no UTF-8");
  }
}

std::size_t DocxText::add_slot(Kind kind, const pugi::xml_node& node,
                               const pugi::xml_attribute& attribute, std::u32string source) {
  slots_.push_back({kind, node, attribute, std::move(source), {}, Change::NONE, {}});
  if (kind == Kind::TEXT) nodes_.insert(node.hash_value());
  if (kind == Kind::ATTRIBUTE) attributes_.insert(attribute.hash_value());
  return slots_.size() - 1;
}

std::size_t DocxText::text_slot(const pugi::xml_node& node) {
  return add_slot(Kind::TEXT, node, {}, decoded(own_text(node)));
}

// A joiner is on a line of its own: rules that look for the begin or the end of a line
// find it.
std::u32string DocxText::framed(std::u32string_view joiner) const {
  std::u32string out = U"\n";
  return between_ == Between::LINE_ENDS ? out : out.append(joiner).append(U"\n");
}

void DocxText::separate() {
  if (separator_ && !text_.empty()) text_ += *separator_;
  separator_.reset();
}

void DocxText::emit(const std::vector<std::size_t>& slots) {
  if (slots.empty()) return;
  separate();
  for (const auto slot : slots) append_piece(slot);
  separator_ = framed(core::anonymization::PARAGRAPH_JOINER);
}

void DocxText::append_piece(std::size_t slot) {
  const auto& source = slots_[slot].source;
  Piece piece{text_.size(), 0, slot, {}};
  const bool plain = std::none_of(source.begin(), source.end(), is_invisible);
  for (std::size_t i = 0; i < source.size(); ++i) {
    if (is_invisible(source[i])) continue;
    text_ += analysed(source[i]);
    if (!plain) piece.places.push_back(static_cast<std::uint32_t>(i));
  }
  piece.size = text_.size() - piece.start;
  pieces_.push_back(std::move(piece));
}

}  // namespace documents
