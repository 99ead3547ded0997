#include "documents/opc.hpp"

#include <algorithm>
#include <unordered_set>

#include "documents/errors.hpp"
#include "documents/names.hpp"

namespace documents {
namespace {

std::string_view last_step(std::string_view uri) { return uri.substr(uri.rfind('/') + 1); }

// "%20" as " "; a target is a URI.
std::string unescaped(std::string_view target) {
  const auto value = [](char c) {
    if (c >= '0' && c <= '9') return c - '0';
    if (c >= 'A' && c <= 'F') return c - 'A' + 10;
    if (c >= 'a' && c <= 'f') return c - 'a' + 10;
    return -1;
  };
  std::string out;
  for (std::size_t i = 0; i < target.size(); ++i) {
    if (target[i] == '%' && i + 2 < target.size() && value(target[i + 1]) >= 0 &&
        value(target[i + 2]) >= 0) {
      out += static_cast<char>(value(target[i + 1]) * 16 + value(target[i + 2]));
      i += 2;
    } else {
      out += target[i];
    }
  }
  return out;
}

// The part that "word/_rels/document.xml.rels" is of; the name itself for others.
std::string owner_of(const std::string& name) {
  const auto folder = folder_of(name);
  if (!name.ends_with(".rels")) return name;
  if (folder != "_rels" && !folder.ends_with("/_rels")) return name;
  auto file = name.substr(folder.size() + 1, name.size() - folder.size() - 6);
  if (folder == "_rels") return file;
  return std::string(folder.substr(0, folder.size() - 6)) + "/" + file;
}

bool is_relationships_part(const std::string& name) { return owner_of(name) != name; }

bool is_types_part(const Part& part) { return ascii_lower(part.name) == "[content_types].xml"; }

bool is_external(const pugi::xml_node& relationship) {
  return std::string_view(relationship.attribute("TargetMode").value()) == "External";
}

}  // namespace

std::string relationships_part(std::string_view part) {
  const auto folder = folder_of(part);
  std::string out(folder);
  out += folder.empty() ? "_rels/" : "/_rels/";
  out += folder.empty() ? part : part.substr(folder.size() + 1);
  return out + ".rels";
}

OfficePackage::OfficePackage(std::vector<Part> parts) : parts_(std::move(parts)) {
  index_parts();
  read_types();
  for (const auto& relationship : relationships_of("")) {
    if (relationship.type == "officeDocument" && !relationship.external) {
      main_part_ = relationship.target;
    }
  }
  const Part* main = find(main_part_);
  if (main_part_.empty() || main == nullptr) {
    throw DocumentError("the package holds no document: its main part is missing");
  }
  main_part_ = main->name;
}

const Part* OfficePackage::find(std::string_view name) const {
  const auto found = index_.find(ascii_lower(name));
  return found == index_.end() ? nullptr : &parts_[found->second];
}

void OfficePackage::index_parts() {
  index_.clear();
  for (std::size_t i = 0; i < parts_.size(); ++i) index_[ascii_lower(parts_[i].name)] = i;
}

void OfficePackage::read_types() {
  const Part* types = find(TYPES_PART);
  if (types == nullptr) {
    throw DocumentError("the package is no Office document: [Content_Types].xml is missing");
  }
  pugi::xml_document xml;
  parse_xml(xml, types->bytes, types->name);
  for (const auto& node : xml.document_element().children()) {
    const std::string type = ascii_lower(node.attribute("ContentType").value());
    if (is(node, "Default")) {
      by_extension_[ascii_lower(node.attribute("Extension").value())] = type;
    } else if (is(node, "Override")) {
      const auto name = unescaped(node.attribute("PartName").value());
      by_name_[ascii_lower(resolved_name("", name))] = type;
    }
  }
}

std::string OfficePackage::type_of(std::string_view name) const {
  const auto lower = ascii_lower(name);
  if (const auto found = by_name_.find(lower); found != by_name_.end()) return found->second;
  const auto dot = lower.rfind('.');
  if (dot == std::string::npos) return {};
  const auto found = by_extension_.find(lower.substr(dot + 1));
  return found == by_extension_.end() ? std::string() : found->second;
}

std::vector<Relationship> OfficePackage::relationships_of(std::string_view part) const {
  const Part* source = find(relationships_part(part));
  if (source == nullptr) return {};
  pugi::xml_document xml;
  parse_xml(xml, source->bytes, source->name);
  std::vector<Relationship> out;
  for (const auto& node : xml.document_element().children("Relationship")) {
    Relationship r;
    r.id = node.attribute("Id").value();
    r.type = last_step(node.attribute("Type").value());
    r.external = is_external(node);
    const std::string target = node.attribute("Target").value();
    r.target = r.external ? target : resolved_name(folder_of(part), unescaped(target));
    out.push_back(std::move(r));
  }
  return out;
}

void OfficePackage::set_bytes(std::string_view name, std::string bytes) {
  if (const auto found = index_.find(ascii_lower(name)); found != index_.end()) {
    parts_[found->second].bytes = std::move(bytes);
  }
}

void OfficePackage::remove(std::string_view name) {
  const auto part = ascii_lower(name);
  const auto links = ascii_lower(relationships_part(name));
  std::erase_if(parts_, [&](const Part& p) {
    const auto lower = ascii_lower(p.name);
    return lower == part || lower == links;
  });
  index_parts();
}

std::vector<std::string> OfficePackage::reachable() const {
  std::vector<std::string> waiting = {""};
  std::unordered_set<std::string> seen;
  std::vector<std::string> out;
  while (!waiting.empty()) {
    const auto source = waiting.back();
    waiting.pop_back();
    for (const auto& r : relationships_of(source)) {
      if (r.external || !seen.insert(ascii_lower(r.target)).second) continue;
      if (find(r.target) == nullptr) continue;
      out.push_back(ascii_lower(r.target));
      waiting.push_back(r.target);
    }
  }
  return out;
}

void OfficePackage::drop_relationships(const std::string& source) {
  const Part* part = find(relationships_part(source));
  if (part == nullptr) return;
  pugi::xml_document xml;
  parse_xml(xml, part->bytes, part->name);
  auto root = xml.document_element();
  bool changed = false;
  for (auto node = root.first_child(); node;) {
    const auto next = node.next_sibling();
    const auto target =
        resolved_name(folder_of(source), unescaped(node.attribute("Target").value()));
    if (!is_external(node) && find(target) == nullptr) {
      root.remove_child(node);
      changed = true;
    }
    node = next;
  }
  if (changed) set_bytes(relationships_part(source), xml_bytes(xml));
}

std::size_t OfficePackage::tidy() {
  const auto names = reachable();
  const std::unordered_set<std::string> kept(names.begin(), names.end());
  std::size_t stale = 0;
  std::erase_if(parts_, [&](const Part& p) {
    if (is_types_part(p)) return false;
    const auto owner = ascii_lower(owner_of(p.name));
    if (is_relationships_part(p.name)) return !owner.empty() && !kept.contains(owner);
    if (kept.contains(owner)) return false;
    ++stale;
    return true;
  });
  index_parts();
  drop_relationships("");
  for (const auto& name : names) drop_relationships(name);
  write_types();
  return stale;
}

void OfficePackage::write_types() {
  const Part* types = find(TYPES_PART);
  pugi::xml_document xml;
  parse_xml(xml, types->bytes, types->name);
  auto root = xml.document_element();
  bool changed = false;
  for (auto node = root.first_child(); node;) {
    const auto next = node.next_sibling();
    const auto name = resolved_name("", unescaped(node.attribute("PartName").value()));
    if (is(node, "Override") && find(name) == nullptr) {
      root.remove_child(node);
      changed = true;
    }
    node = next;
  }
  if (changed) set_bytes(TYPES_PART, xml_bytes(xml));
  const auto first = std::find_if(parts_.begin(), parts_.end(), is_types_part);
  std::rotate(parts_.begin(), first, first + 1);
  index_parts();
}

}  // namespace documents
