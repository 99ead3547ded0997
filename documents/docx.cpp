#include "documents/docx.hpp"

#include <algorithm>
#include <memory>
#include <optional>
#include <utility>

#include "core/anonymization/placeholders.hpp"
#include "core/anonymization/replacements/span_postprocess.hpp"
#include "core/masked_stretches.hpp"
#include "core/text/unicode.hpp"
#include "documents/docx_fields.hpp"
#include "documents/docx_names.hpp"
#include "documents/docx_parts.hpp"
#include "documents/docx_reading.hpp"
#include "documents/docx_scrub.hpp"
#include "documents/docx_text.hpp"
#include "documents/errors.hpp"
#include "documents/leftovers.hpp"
#include "documents/metafile.hpp"
#include "documents/picture_metadata.hpp"
#include "documents/surface_search.hpp"

namespace documents {
namespace {

namespace anonymization = core::anonymization;

std::string tag_of(std::u32string_view placeholder) {
  const auto parsed = anonymization::parse_numbered_placeholder(placeholder);
  return parsed ? parsed->tag : std::string(anonymization::entity_type::CARD_LAST4);
}

// Addresses of schemas and namespaces; not of anybody.
bool is_schema(std::string_view value) {
  return value.starts_with("http://schemas.") || value.starts_with("urn:schemas-") ||
         value.starts_with("http://purl.oclc.org/ooxml/") ||
         value.starts_with("http://www.w3.org/");
}

// Names of fonts, of Word's own styles, of languages: the Georgia of a font is no
// place, nor is the US of en-US.
bool names_no_one(const pugi::xml_node& node, std::string_view attribute) {
  const std::string_view name = node.name();
  if (name == "w:lang" || name == "w:themeFontLang") return true;
  if (attribute == "lang" || attribute == "altLang" || attribute == "xml:lang") return true;
  if (attribute == "typeface" || name == "w:rFonts" || name == "w:lsdException") return true;
  const bool is_font = name == "w:font" || name == "w:altName" || name == "w:sym";
  return is_font && (attribute == "w:name" || attribute == "w:val" || attribute == "w:font");
}

// Whether anything of the tree that is no analysed text holds a surface. Texts are
// also put together, in case one is split.
bool holds_surface(const pugi::xml_node& root, const DocxText& text, const SurfaceSearch& search) {
  bool found = false;
  std::string all;
  for_each_element(root, [&](const pugi::xml_node& node) {
    for (const auto& attribute : node.attributes()) {
      if (text.holds(attribute) || is_schema(attribute.value())) continue;
      if (names_no_one(node, attribute.name())) continue;
      found = found || search.found_in(attribute.value());
    }
    if (!text.holds(node)) all += own_text(node);
    return true;
  });
  return found || search.found_in(all);
}

// A theme has the name of the company that made it.
void rename_theme(const pugi::xml_node& root, const SurfaceSearch& search) {
  if (!is(root, "a:theme")) return;
  for_each_element(root, [&](pugi::xml_node node) {
    auto name = node.attribute("name");
    if (name && search.found_in(name.value())) name.set_value("Theme");
    return true;
  });
}

// How the report tells of what reads like a masked text.
constexpr std::pair<Leftover::Kind, std::string_view> LEFTOVER_WORDINGS[] = {
    {Leftover::Kind::KEPT, "texts that read like a masked one were left on purpose"},
    {Leftover::Kind::MISSED, "names that the analysis left were masked as they are elsewhere"},
    {Leftover::Kind::ALIKE, "texts that read like a masked one were left, look at them"},
};

// What the search of a picture did not reach, or did.
std::string remark_on(const MetafileText& drawn) {
  if (!drawn.is_metafile) return {};
  return drawn.complete ? ", but for its text" : ", its text cannot be read";
}

// The spans that were masked, over the text with its joiners. The masked text has
// none: that the spans give it again shows that they are right.
std::vector<anonymization::MaskedStretch> checked_stretches(
    std::u32string_view text, const anonymization::AnonymizedDocument& masked) {
  auto stretches = anonymization::masked_stretches(text, masked);
  std::u32string rebuilt;
  std::size_t at = 0;
  for (const auto& stretch : stretches) {
    rebuilt += core::text::slice(text, static_cast<anonymization::Offset>(at), stretch.start);
    rebuilt += stretch.placeholder;
    at = static_cast<std::size_t>(stretch.end);
  }
  rebuilt += text.substr(at);
  if (anonymization::_strip_docx_joiner_sequences(rebuilt) != masked.text) {
    throw LeftoverError("what was masked could not be found again; nothing was written");
  }
  return stretches;
}

class DocxDocument : public Document {
 public:
  explicit DocxDocument(std::string_view bytes) : package_(read_package(bytes)) {
    refuse_other_packages(package_);
    report_.removed = remove_private_parts(package_);
    parts_ = xml_parts(package_);
    read_stories(text_, parts_);
    text_.finish();
    report_.format = "docx";
  }

  const std::u32string& text() const override { return text_.text(); }
  std::u32string as_written(std::u32string text) const override {
    return text_.escapes().restore(std::move(text));
  }
  WrittenText written(const anonymization::AnonymizedDocument& masked) override {
    mask_text(masked);
    return text_.written();
  }
  std::string write(const anonymization::AnonymizedDocument& masked) override;
  const Report& report() const override { return report_; }
  bool is_plain_text() const override { return false; }

 private:
  void mask_text(const anonymization::AnonymizedDocument& masked);
  void add_missed(std::vector<anonymization::MaskedStretch>& stretches);
  void tell_of_left(const std::vector<Leftover>& left, Leftover::Kind kind,
                    const std::string& wording);
  void clean_parts();
  void strip_pictures();
  void verify(std::string_view bytes);

  OfficePackage package_;
  std::vector<XmlPart> parts_;
  DocxText text_;
  Names names_;
  std::optional<SurfaceSearch> search_;  // for what is masked, once it is
  std::vector<std::string> left_;        // what the report tells of what was left
  Report report_;
};

void DocxDocument::mask_text(const anonymization::AnonymizedDocument& masked) {
  text_.forget();
  left_.clear();
  report_.stories.clear();
  auto stretches = checked_stretches(text_.text(), masked);
  add_missed(stretches);
  std::vector<std::u32string> surfaces;
  std::vector<DocxText::Span> spans;
  for (const auto& stretch : stretches) {
    surfaces.push_back(
        as_written(std::u32string(core::text::slice(text_.text(), stretch.start, stretch.end))));
    spans.push_back({static_cast<std::size_t>(stretch.start), static_cast<std::size_t>(stretch.end),
                     stretch.placeholder});
  }
  const auto wrote = text_.replace(spans);
  for (std::size_t i = 0; i < spans.size(); ++i) {
    if (wrote[i]) report_.count(text_.story_at(spans[i].start), tag_of(spans[i].written));
  }
  text_.replace_readings();
  // Whatever the placeholders are called, what they stand for is the same.
  if (search_) return;
  search_.emplace(surfaces);
  for (const auto& root : roots_of(parts_)) names_.collect(root, *search_);
  for (const auto& root : roots_of(parts_)) names_.rename(root);
  text_.note_names();
}

// Names that the analysis left where it masked them elsewhere are masked as well, and
// what else was left is told.
void DocxDocument::add_missed(std::vector<anonymization::MaskedStretch>& stretches) {
  auto left = leftovers(text_.text(), stretches, {});
  if (left.empty()) return;
  if (const auto& on_purpose = kept(); !on_purpose.empty()) {
    left = leftovers(text_.text(), stretches, on_purpose);
  }
  for (const auto& leftover : left) {
    if (leftover.kind != Leftover::Kind::MISSED) continue;
    stretches.push_back({static_cast<anonymization::Offset>(leftover.start),
                         static_cast<anonymization::Offset>(leftover.end), leftover.placeholder});
  }
  std::sort(stretches.begin(), stretches.end(),
            [](const auto& a, const auto& b) { return a.start < b.start; });
  for (const auto& [kind, wording] : LEFTOVER_WORDINGS) {
    tell_of_left(left, kind, std::string(wording));
  }
}

void DocxDocument::tell_of_left(const std::vector<Leftover>& left, Leftover::Kind kind,
                                const std::string& wording) {
  std::vector<std::pair<std::string, std::size_t>> stories;
  std::size_t count = 0;
  for (const auto& leftover : left) {
    if (leftover.kind != kind) continue;
    const auto& story = text_.story_at(leftover.start);
    const auto known = std::find_if(stories.begin(), stories.end(),
                                    [&](const auto& entry) { return entry.first == story; });
    ++(known == stories.end() ? stories.emplace_back(story, 0) : *known).second;
    ++count;
  }
  if (count == 0) return;
  std::string line = wording + ": " + std::to_string(count) + " (";
  for (const auto& [story, times] : stories) {
    line += (line.ends_with('(') ? "" : ", ") + story + " " + std::to_string(times);
  }
  left_.push_back(line + ")");
}

void DocxDocument::clean_parts() {
  const auto renamed = [&](std::string_view name) { return names_.bookmark(name); };
  Scrubber scrubber;
  for (const auto& root : roots_of(parts_)) {
    scrubber.scrub(root);
    rename_theme(root, *search_);
    neutralize_fields(root, renamed);
  }
}

std::string DocxDocument::write(const anonymization::AnonymizedDocument& masked) {
  mask_text(masked);
  text_.write_back();
  clean_parts();
  for (const auto& part : parts_) {
    pugi::xml_document original;
    parse_xml(original, package_.find(part.name)->bytes, part.name);
    auto bytes = xml_bytes(*part.xml);
    // What nothing was changed in stays as it is, byte by byte.
    if (bytes != xml_bytes(original)) package_.set_bytes(part.name, std::move(bytes));
  }
  parts_.clear();
  strip_pictures();
  auto bytes = write_package(package_.parts());
  verify(bytes);
  report_.warnings = left_;
  return bytes;
}

void DocxDocument::strip_pictures() {
  std::size_t count = 0;
  for (const auto& part : package_.parts()) {
    if (kind_of(package_, part).role != Role::BINARY) continue;
    if (auto bytes = without_metadata(part.bytes)) {
      package_.set_bytes(part.name, std::move(*bytes));
      ++count;
    }
  }
  if (count > 0) report_.removed.push_back("metadata of a picture: " + std::to_string(count));
}

void DocxDocument::verify(std::string_view bytes) {
  const auto& search = *search_;
  const auto fail = [](const std::string& where) {
    throw LeftoverError("something that is masked can still be read in " + where +
                        "; nothing was written");
  };
  const OfficePackage written(read_package(bytes));
  const auto parts = xml_parts(written);
  DocxText text;
  read_stories(text, parts);
  text.finish();
  for (const auto& part : parts) {
    if (holds_surface(part.xml->document_element(), text, search)) fail(part.name);
  }
  for (const auto& part : written.parts()) {
    if (search.found_in(part.name)) fail("the name of a part");
    const auto kind = kind_of(written, part);
    if (kind.role == Role::STRUCTURE) {
      pugi::xml_document xml;
      parse_xml(xml, part.bytes, part.name);
      if (holds_surface(xml.document_element(), text, search)) fail(part.name);
    } else if (kind.role == Role::BINARY) {
      const auto drawn = metafile_text(part.bytes);
      if (!search.find_in(drawn.joined()).empty()) fail("the text of the picture " + part.name);
      if (search.found_in_bytes(part.bytes)) fail(part.name);
      report_.not_examined.push_back(part.name + ": " + kind.name + remark_on(drawn));
    }
  }
}

}  // namespace

std::unique_ptr<Document> read_docx(std::string_view bytes) {
  return std::make_unique<DocxDocument>(bytes);
}

}  // namespace documents
