#include "documents/docx_scrub.hpp"

#include <vector>

#include "core/text/word_set.hpp"
#include "documents/xml.hpp"

namespace documents {
namespace {

using core::text::type_names;

// Elements that go with all they hold.
constexpr auto DROPPED_ELEMENTS = type_names(
    {// marks of editing, and of the document
     "w:rsids", "w14:docId", "w15:docId", "w16:docId",
     // values beside the text
     "w:docVars", "w:dataBinding", "w15:dataBinding", "w:smartTagPr", "w:customXmlPr", "w:fldData",
     "w15:webExtensionLinked", "w15:webExtensionCreated", "w:helpText", "w:statusText",
     "w:tblCaption", "w:tblDescription", "w:lastValue",
     // sources outside
     "w:attachedTemplate", "w:mailMerge", "w:attachedSchema", "sl:schemaLibrary", "w:schemaLibrary",
     "w:saveThroughXslt", "w:linkStyles", "c:externalData", "a:hlinkHover",
     // objects: their picture stays
     "o:OLEObject", "w:control", "w:objectEmbed", "w:objectLink", "o:signatureline"});

// Attributes that go, wherever they stand.
constexpr auto DROPPED_ATTRIBUTES = type_names(
    {"w:rsidR",   "w:rsidRPr",     "w:rsidP",   "w:rsidRDefault", "w:rsidTr",       "w:rsidSect",
     "w:rsidDel", "w:date",        "w:dateUtc", "w16du:dateUtc",  "w16cex:dateUtc", "w:fullDate",
     "w:tooltip", "w:docLocation", "o:href",    "o:title",        "o:althref",      "descr",
     "alt",       "href",          "tooltip",   "w15:userId",     "w15:providerId"});

// What has a name for people that nothing refers to.
constexpr auto NAMED_OBJECTS =
    type_names({"wp:docPr", "pic:cNvPr", "wps:cNvPr", "wpg:cNvPr", "wpc:cNvPr", "a:cNvPr",
                "p:cNvPr", "c:cNvPr", "cdr:cNvPr", "dsp:cNvPr"});

}  // namespace

void Scrubber::scrub(const pugi::xml_node& root) {
  for_each_element(root, [this](pugi::xml_node node) {
    for (auto child = node.first_child(); child;) {
      const auto next = child.next_sibling();
      if (DROPPED_ELEMENTS.contains(child.name())) node.remove_child(child);
      child = next;
    }
    scrub_element(node);
    scrub_attributes(node);
    return true;
  });
}

void Scrubber::scrub_element(pugi::xml_node node) {
  if (NAMED_OBJECTS.contains(node.name())) {
    const std::string number = node.attribute("id").value();
    if (auto name = node.attribute("name")) name.set_value(("Object " + number).c_str());
    node.remove_attribute("title");
  }
  if (is(node, "w:customXml") || is(node, "w:smartTag")) {
    if (auto element = node.attribute("w:element")) element.set_value("value");
    node.remove_attribute("w:uri");
  }
  if (is(node, "w:hyperlink")) node.remove_attribute("w:tgtFrame");
  if (std::string_view(node.name()).starts_with("v:")) node.remove_attribute("title");
}

void Scrubber::scrub_attributes(pugi::xml_node node) {
  std::vector<std::string> gone;
  for (auto attribute : node.attributes()) {
    const std::string_view name = attribute.name();
    if (DROPPED_ATTRIBUTES.contains(name)) {
      gone.emplace_back(name);
    } else if (name == "w:author") {
      attribute.set_value(author(attribute.value()).c_str());
    }
  }
  if (auto initials = node.attribute("w:initials")) {
    const std::string_view number = node.attribute("w:author").value();
    initials.set_value(("A" + std::string(number.substr(number.rfind(' ') + 1))).c_str());
  }
  for (const auto& name : gone) node.remove_attribute(name.c_str());
}

std::string Scrubber::author(std::string_view name) {
  const auto number = std::to_string(authors_.size() + 1);
  return authors_.try_emplace(std::string(name), "Author " + number).first->second;
}

}  // namespace documents
