// The text of a .docx as it is analysed, and the way back into its elements.
//
// All stories are pasted into one text: between paragraphs stands a joiner on a line of
// its own, the cells of a row are set off by tabs, rows by line ends. Every character
// knows its slot, the element or attribute that holds it; a span that is masked is
// put into the first slot it touches and cut out of the others.
//
// Of a paragraph with tracked changes the text with all of them accepted stands in
// its place. The text with all of them rejected follows at the end.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

#include <pugixml.hpp>

#include "documents/joiner_escapes.hpp"
#include "documents/written_text.hpp"

namespace documents {

class DocxText {
 public:
  // What stands between paragraphs: joiners where the text is analysed, line ends
  // where placeholders are looked for.
  enum class Between { JOINERS, LINE_ENDS };

  struct Story {
    std::string name;  // "body", "header", "deleted text" ...
    std::size_t start = 0;
  };

  struct Span {
    std::size_t start = 0;
    std::size_t end = 0;
    std::u32string written;
  };

  explicit DocxText(Between between = Between::JOINERS) : between_(between) {}

  // `root` is the tree of a part and outlives this. Throws DocumentError, naming
  // `part`, for text that is no UTF-8.
  void add_story(const std::string& name, const pugi::xml_node& root, const std::string& part);
  // A part that is no Word story, such as a chart: each text is a paragraph.
  void add_strings(const std::string& name, const pugi::xml_node& root, const std::string& part);
  // Attributes that hold text for people, and names that people chose, each a
  // paragraph.
  void add_attributes(const std::string& name, const std::vector<pugi::xml_node>& roots);
  // Paragraphs with tracked deletions as they were before all changes.
  void add_rejected(const std::string& name);
  // What of the trees is read by none of the others and is written like a
  // placeholder, in attributes, instructions or elsewhere. Behind all of them.
  void add_other_placeholders(const std::string& name, const std::vector<pugi::xml_node>& roots);
  // To be called once, behind all stories.
  void finish();

  const std::u32string& text() const { return text_; }
  const std::vector<Story>& stories() const { return stories_; }
  const JoinerEscapes& escapes() const { return escapes_; }
  // The story that offset `at` lies in.
  const std::string& story_at(std::size_t at) const;
  // Whether the text directly within this element is part of the text.
  bool holds(const pugi::xml_node& node) const { return nodes_.contains(node.hash_value()); }
  bool holds(const pugi::xml_attribute& a) const { return attributes_.contains(a.hash_value()); }

  // What stands at text[start, end) in the document, with the characters that are not
  // analysed.
  std::u32string source(std::size_t start, std::size_t end) const;
  // Writes over the spans what is to stand there instead; they are sorted and disjoint.
  // False for one that was all written over before: both views of a tracked change
  // hold the text that stayed.
  std::vector<bool> replace(const std::vector<Span>& spans);
  // The reading of a word that was replaced tells the word: the same is written over it.
  void replace_readings();
  // Forgets what was written over the text, until it is brought into the elements.
  void forget();
  // To be called when bookmarks and styles have the names that they will have.
  void note_names();
  // The text as it reads when everything is written; the trees may be gone.
  WrittenText written() const;
  // Brings what was replaced into the elements, once. Returns the trees that were
  // changed, by the hash of their root().
  std::unordered_set<std::size_t> write_back();

 private:
  // A NAME is analysed, so that a value in it is known, and never written: others
  // refer to it by its letters.
  enum class Kind { TEXT, ATOM, ATTRIBUTE, NAME };
  enum class Change { NONE, INSERTED, DELETED };

  struct Cut {
    std::size_t from;
    std::size_t to;
    std::u32string written;
    std::u32string source;  // what `written` stands for; that may reach into other slots
  };
  // What of a slot a span takes.
  struct Part {
    std::size_t slot;
    std::size_t from;
    std::size_t to;
  };
  struct Slot {
    Kind kind;
    pugi::xml_node node;
    pugi::xml_attribute attribute;
    std::u32string source;
    std::vector<Cut> cuts;
    Change change = Change::NONE;
    std::u32string name = {};  // of a NAME, as note_names() found it
  };
  // A slot in the text. Characters that are not analysed have no offset.
  struct Piece {
    std::size_t start;  // in the text
    std::size_t size;
    std::size_t slot;
    std::vector<std::uint32_t> places;  // of each character in the slot; empty: all in order
  };
  struct Inline {
    std::size_t slot;
    Change change;
  };
  struct Ruby {
    std::vector<std::size_t> base;
    pugi::xml_node reading;
    std::vector<std::size_t> reading_slots = {};
  };
  // What was read of a paragraph whose mark one view does not have.
  struct OpenParagraph {
    std::vector<std::size_t> accepted;
    std::vector<std::size_t> rejected;
    bool changed = false;
  };
  struct Paragraph {
    std::vector<Inline> inlines;
    std::vector<pugi::xml_node> aside;  // text boxes, copies, readings
  };

  void block(const pugi::xml_node& node);
  void row(const pugi::xml_node& node);
  void cell(const pugi::xml_node& node);
  void paragraph(const pugi::xml_node& node);
  void inlines(const pugi::xml_node& node, Change change, Paragraph& out);
  void ruby(const pugi::xml_node& node, Change change, Paragraph& out);
  bool leaf(const pugi::xml_node& node, Change change, Paragraph& out);
  void strings(const pugi::xml_node& node);

  void close_paragraph();
  void asides(const Paragraph& paragraph);

  std::size_t add_slot(Kind kind, const pugi::xml_node& node, const pugi::xml_attribute& attribute,
                       std::u32string source);
  std::size_t text_slot(const pugi::xml_node& node);
  std::u32string decoded(std::string_view text) const;
  void begin_story(const std::string& name);
  std::u32string framed(std::u32string_view joiner) const;
  void separate();
  void emit(const std::vector<std::size_t>& slots);
  void append_piece(std::size_t slot);

  bool is_rejected(std::size_t at) const { return at >= rejected_start_; }
  std::size_t changed_part(const std::vector<Part>& parts) const;
  std::vector<std::size_t> first_parts(const std::vector<Span>& spans,
                                       const std::vector<std::vector<Part>>& parts) const;
  bool write_parts(const std::vector<Part>& parts, std::size_t first, const Span& span);
  void find_readings();
  void replace_reading(const Ruby& entry, std::u32string_view written);
  std::vector<Part> parts_of(std::size_t start, std::size_t end) const;
  static bool cut(Slot& slot, const Part& part, std::u32string_view written,
                  std::u32string_view source);
  void append_written(const Piece& piece, WrittenText& out) const;
  static void write_text(const Slot& slot);
  static void write_atom(const Slot& slot);

  Between between_;
  std::u32string text_;
  std::vector<Story> stories_;
  std::vector<Slot> slots_;
  std::vector<Piece> pieces_;
  std::vector<std::vector<std::size_t>> rejected_;  // slots of paragraphs before their changes
  std::size_t rejected_start_ = static_cast<std::size_t>(-1);
  OpenParagraph open_;
  std::vector<Ruby> rubies_;
  std::unordered_set<std::size_t> nodes_;
  std::unordered_set<std::size_t> attributes_;
  JoinerEscapes escapes_;
  std::string part_;
  std::optional<std::u32string> separator_;  // before the next text
  int cells_ = 0;                            // of the row so far
};

}  // namespace documents
