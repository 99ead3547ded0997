#include "documents/xml.hpp"

#include <algorithm>
#include <array>
#include <cstddef>

#include "core/text/utf8.hpp"
#include "documents/errors.hpp"

namespace documents {
namespace {

// Word itself nests some forty elements; text boxes and tables within tables
// double that.
constexpr int DEEPEST_ELEMENT = 400;

// A tree takes some twenty times the bytes of a part that is made of nothing but
// tags. A page of a contract has a thousand.
constexpr std::size_t MOST_BYTES = std::size_t{128} << 20U;
constexpr std::ptrdiff_t MOST_TAGS = 6'000'000;

// Text, white space and sections of character data; document types are kept so
// that they can be refused.
constexpr unsigned PARSING =
    pugi::parse_default | pugi::parse_ws_pcdata | pugi::parse_declaration | pugi::parse_doctype;

constexpr std::array<std::string_view, 2> WORD_NAMESPACES = {
    "http://schemas.openxmlformats.org/wordprocessingml/2006/main",
    "http://purl.oclc.org/ooxml/wordprocessingml/main"};

[[noreturn]] void refuse_xml(const std::string& part, const std::string& why) {
  throw DocumentError(part + ": " + why);
}

// Elements are told apart by their names as they stand.
bool binds_word_otherwise(const pugi::xml_attribute& attribute) {
  const std::string_view name = attribute.name();
  if (name != "xmlns" && !name.starts_with("xmlns:")) return false;
  const std::string_view uri = attribute.value();
  const bool is_word = uri == WORD_NAMESPACES[0] || uri == WORD_NAMESPACES[1];
  return is_word != (name == "xmlns:w");
}

class Checks : public pugi::xml_tree_walker {
 public:
  explicit Checks(const std::string& part) : part_(part) {}

  bool for_each(pugi::xml_node& node) override {
    if (depth() > DEEPEST_ELEMENT) refuse_xml(part_, "elements nest too deeply");
    if (node.type() == pugi::node_doctype) refuse_xml(part_, "declares a document type");
    for (const auto& attribute : node.attributes()) {
      if (binds_word_otherwise(attribute)) refuse_xml(part_, "uses another prefix than w");
    }
    return true;
  }

 private:
  const std::string& part_;
};

}  // namespace

void parse_xml(pugi::xml_document& xml, std::string_view bytes, const std::string& part) {
  if (bytes.size() > MOST_BYTES || std::count(bytes.begin(), bytes.end(), '<') > MOST_TAGS ||
      std::count(bytes.begin(), bytes.end(), '=') > MOST_TAGS) {
    refuse_xml(part, "too large");
  }
  const auto result = xml.load_buffer(bytes.data(), bytes.size(), PARSING);
  if (!result) refuse_xml(part, "not well-formed XML at byte " + std::to_string(result.offset));
  Checks checks(part);
  xml.traverse(checks);
  if (!xml.document_element()) refuse_xml(part, "holds no element");
}

std::string xml_bytes(const pugi::xml_document& xml) {
  struct Writer : pugi::xml_writer {
    void write(const void* data, std::size_t size) override {
      bytes.append(static_cast<const char*>(data), size);
    }
    std::string bytes;
  };
  Writer writer;
  // A declaration of another encoding would no longer hold.
  constexpr std::string_view DECLARATION =
      "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>\n";
  writer.bytes = DECLARATION;
  xml.document_element().print(writer, "", pugi::format_raw, pugi::encoding_utf8);
  return std::move(writer.bytes);
}

std::string own_text(const pugi::xml_node& node) {
  std::string text;
  for (const auto& child : node.children()) {
    if (child.type() == pugi::node_pcdata || child.type() == pugi::node_cdata) {
      text += child.value();
    }
  }
  return text;
}

void set_own_text(pugi::xml_node node, std::string_view text) {
  for (auto child = node.first_child(); child;) {
    const auto next = child.next_sibling();
    if (child.type() == pugi::node_pcdata || child.type() == pugi::node_cdata) {
      node.remove_child(child);
    }
    child = next;
  }
  if (!text.empty()) node.append_child(pugi::node_pcdata).set_value(std::string(text).c_str());
  if (std::string_view(node.name()).starts_with("w:")) {
    auto space = node.attribute("xml:space");
    if (!space) space = node.append_attribute("xml:space");
    space.set_value("preserve");
  }
}

}  // namespace documents
