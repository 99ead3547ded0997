#include "documents/docx_names.hpp"

#include "core/text/word_set.hpp"
#include "documents/xml.hpp"

namespace documents {
namespace {

using core::text::type_names;

constexpr auto STYLE_REFERENCES = type_names({"w:pStyle", "w:rStyle", "w:tblStyle", "w:basedOn",
                                              "w:next", "w:link", "w:numStyleLink", "w:styleLink"});

// What a bookmark is called by; elsewhere an empty attribute.
pugi::xml_attribute bookmark_name(const pugi::xml_node& node) {
  if (is(node, "w:bookmarkStart")) return node.attribute("w:name");
  if (is(node, "w:name") && is(node.parent(), "w:ffData")) return node.attribute("w:val");
  return {};
}

void replace_value(pugi::xml_attribute attribute,
                   const std::map<std::string, std::string, std::less<>>& renamed) {
  if (!attribute) return;
  const auto found = renamed.find(std::string_view(attribute.value()));
  if (found != renamed.end()) attribute.set_value(found->second.c_str());
}

}  // namespace

void Names::collect(const pugi::xml_node& root, const SurfaceSearch& search) {
  for_each_element(root, [&](const pugi::xml_node& node) {
    const auto name = bookmark_name(node);
    if (name && search.found_in(name.value())) {
      const auto number = std::to_string(bookmarks_.size() + 1);
      bookmarks_.try_emplace(name.value(), "Bookmark_" + number);
    }
    if (is(node, "w:style")) collect_style(node, search);
    return true;
  });
}

void Names::collect_style(const pugi::xml_node& style, const SurfaceSearch& search) {
  if (!style.attribute("w:customStyle").as_bool()) return;
  const std::string id = style.attribute("w:styleId").value();
  if (!search.found_in(id) && !search.found_in(style.child("w:name").attribute("w:val").value()) &&
      !search.found_in(style.child("w:aliases").attribute("w:val").value())) {
    return;
  }
  styles_.try_emplace(id, "CustomStyle" + std::to_string(styles_.size() + 1));
}

void Names::rename(const pugi::xml_node& root) const {
  for_each_element(root, [&](pugi::xml_node node) {
    replace_value(bookmark_name(node), bookmarks_);
    if (is(node, "w:hyperlink")) replace_value(node.attribute("w:anchor"), bookmarks_);
    if (STYLE_REFERENCES.contains(node.name())) replace_value(node.attribute("w:val"), styles_);
    if (is(node, "w:style") && styles_.contains(node.attribute("w:styleId").value())) {
      replace_value(node.attribute("w:styleId"), styles_);
      node.child("w:name").attribute("w:val").set_value(node.attribute("w:styleId").value());
      node.remove_child("w:aliases");
    }
    return true;
  });
}

std::string Names::bookmark(std::string_view name) const {
  const auto found = bookmarks_.find(name);
  return found == bookmarks_.end() ? std::string(name) : found->second;
}

}  // namespace documents
