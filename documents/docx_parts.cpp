#include "documents/docx_parts.hpp"

#include <algorithm>
#include <map>
#include <set>
#include <utility>

#include "core/text/word_set.hpp"
#include "documents/errors.hpp"
#include "documents/names.hpp"

namespace documents {
namespace {

using core::text::type_names;

// The end of a content type, and what such a part is for people.
struct TypeEnd {
  std::string_view end;
  Role role;
  std::string_view name;
};
constexpr TypeEnd TYPE_ENDS[] = {
    {"wordprocessingml.document.main+xml", Role::STORY, "body"},
    {"wordprocessingml.template.main+xml", Role::STORY, "body"},
    {"wordprocessingml.header+xml", Role::STORY, "header"},
    {"wordprocessingml.footer+xml", Role::STORY, "footer"},
    {"wordprocessingml.footnotes+xml", Role::STORY, "footnotes"},
    {"wordprocessingml.endnotes+xml", Role::STORY, "endnotes"},
    {"wordprocessingml.comments+xml", Role::STORY, "comments"},
    {"wordprocessingml.document.glossary+xml", Role::STORY, "building blocks"},
    {"drawingml.chart+xml", Role::STRINGS, "chart"},
    {"chartex+xml", Role::STRINGS, "chart"},
    {"chartshapes+xml", Role::STRINGS, "chart"},
    {"drawingml.diagramdata+xml", Role::STRINGS, "diagram"},
    {"drawingml.diagramdrawing+xml", Role::STRINGS, "diagram"},
    {"relationships+xml", Role::STRUCTURE, "relationships"},
    // Markup: no text between its tags.
    {"wordprocessingml.styles+xml", Role::MARKUP, "styles"},
    {"styleswitheffects+xml", Role::MARKUP, "styles"},
    {"wordprocessingml.settings+xml", Role::MARKUP, "settings"},
    {"wordprocessingml.websettings+xml", Role::MARKUP, "settings"},
    {"wordprocessingml.fonttable+xml", Role::MARKUP, "fonts"},
    {"wordprocessingml.numbering+xml", Role::MARKUP, "numbering"},
    {"wordprocessingml.commentsextended+xml", Role::MARKUP, "threads of comments"},
    {"wordprocessingml.commentsids+xml", Role::MARKUP, "threads of comments"},
    {"officedocument.theme+xml", Role::MARKUP, "theme"},
    {"officedocument.themeoverride+xml", Role::MARKUP, "theme"},
};

// Relationships to what is taken out, by the last step of their type.
struct PrivateRelationship {
  std::string_view type;
  std::string_view name;
};
constexpr PrivateRelationship PRIVATE_RELATIONSHIPS[] = {
    {"core-properties", "document properties"},
    {"extended-properties", "document properties"},
    {"custom-properties", "document properties"},
    {"thumbnail", "thumbnail"},
    {"customXml", "custom XML"},
    {"customXmlProps", "custom XML"},
    {"people", "people"},
    {"commentsExtensible", "dates of comments"},
    {"origin", "digital signature"},
    {"signature", "digital signature"},
    {"certificate", "digital signature"},
    {"oleObject", "embedded object"},
    {"package", "embedded object"},
    {"control", "control"},
    {"activeXControlBinary", "control"},
    {"attachedTemplate", "template"},
    {"mailMergeSource", "mail merge source"},
    {"mailMergeHeaderSource", "mail merge source"},
    {"recipientData", "mail merge source"},
    {"printerSettings", "printer settings"},
    {"keyMapCustomizations", "key bindings"},
    {"attachedToolbars", "toolbars"},
    {"webextension", "web extension"},
    {"webextensiontaskpanes", "web extension"},
    {"downRev", "older version"},
};

constexpr auto MACRO_RELATIONSHIPS = type_names({"vbaProject", "wordVbaData"});
constexpr std::string_view NOWHERE = "about:blank";

std::string_view private_name(std::string_view type) {
  for (const auto& known : PRIVATE_RELATIONSHIPS) {
    if (known.type == type) return known.name;
  }
  return {};
}

std::string binary_name(std::string_view type) {
  if (type.starts_with("image/")) return "picture";
  if (type.find("font") != std::string_view::npos) return "font";
  return "data";
}

// Calls visit(source, relationship) for all of the package.
template <class Visit>
void for_each_relationship(const OfficePackage& package, const Visit& visit) {
  for (const auto& r : package.relationships_of("")) visit(std::string(), r);
  for (const auto& part : package.parts()) {
    for (const auto& r : package.relationships_of(part.name)) visit(part.name, r);
  }
}

// Every address outside leads nowhere; those of sources go.
std::size_t neutralize_addresses(OfficePackage& package, const std::string& source) {
  const auto name = relationships_part(source);
  const Part* part = package.find(name);
  if (part == nullptr) return 0;
  pugi::xml_document xml;
  parse_xml(xml, part->bytes, part->name);
  auto root = xml.document_element();
  std::size_t count = 0;
  for (auto node = root.first_child(); node;) {
    const auto next = node.next_sibling();
    if (std::string_view(node.attribute("TargetMode").value()) == "External") {
      ++count;
      const std::string_view uri = node.attribute("Type").value();
      if (!private_name(uri.substr(uri.rfind('/') + 1)).empty()) {
        root.remove_child(node);
      } else {
        node.attribute("Target").set_value(std::string(NOWHERE).c_str());
      }
    }
    node = next;
  }
  if (count > 0) package.set_bytes(name, xml_bytes(xml));
  return count;
}

}  // namespace

PartKind kind_of(const OfficePackage& package, const Part& part) {
  if (part.name == TYPES_PART) return {Role::STRUCTURE, "types"};
  const auto type = package.type_of(part.name);
  for (const auto& known : TYPE_ENDS) {
    if (type.ends_with(known.end)) return {known.role, std::string(known.name)};
  }
  // What nobody knows might hold anything.
  if (type.ends_with("+xml") || type.ends_with("/xml")) return {Role::STRINGS, "other parts"};
  return {Role::BINARY, binary_name(type)};
}

std::vector<std::string> remove_private_parts(OfficePackage& package) {
  std::map<std::string, std::string> gone;
  for_each_relationship(package, [&](const std::string&, const Relationship& r) {
    const auto name = private_name(r.type);
    if (!r.external && !name.empty() && package.find(r.target) != nullptr) {
      gone.try_emplace(r.target, name);
    }
  });
  std::size_t addresses = neutralize_addresses(package, "");
  for (std::size_t i = 0; i < package.parts().size(); ++i) {
    const std::string name = package.parts()[i].name;
    addresses += neutralize_addresses(package, name);
  }
  for (const auto& [name, what] : gone) package.remove(name);
  const auto stale = package.tidy();
  std::map<std::string, std::size_t> counts;
  for (const auto& [name, what] : gone) ++counts[what];
  if (addresses > 0) counts["address outside"] = addresses;
  if (stale > 0) counts["part without relationship"] = stale;
  std::vector<std::string> lines;
  lines.reserve(counts.size());
  for (const auto& [what, count] : counts) lines.push_back(what + ": " + std::to_string(count));
  return lines;
}

void refuse_other_packages(const OfficePackage& package) {
  const auto type = package.type_of(package.main_part());
  if (type.find("macroenabled") != std::string::npos) {
    throw DocumentError("a document with macros is not read; save it as .docx");
  }
  if (!type.ends_with("wordprocessingml.document.main+xml") &&
      !type.ends_with("wordprocessingml.template.main+xml")) {
    throw DocumentError("the package holds no Word document, by the type of its main part");
  }
  for_each_relationship(package, [&](const std::string&, const Relationship& r) {
    if (MACRO_RELATIONSHIPS.contains(std::string_view(r.type))) {
      throw DocumentError("a document with macros is not read; save it as .docx");
    }
    if (r.type == "aFChunk") {
      throw DocumentError("a document that holds text in another format (altChunk) is not read");
    }
  });
  for (const auto& part : package.parts()) {
    if (package.type_of(part.name).find("vbaproject") != std::string::npos) {
      throw DocumentError("a document with macros is not read; save it as .docx");
    }
  }
}

}  // namespace documents
