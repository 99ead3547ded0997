#include "documents/masked_docx.hpp"

#include <algorithm>
#include <unordered_set>
#include <utility>

#include "documents/docx_reading.hpp"

namespace documents {
namespace {

namespace restore = core::restore;

bool is_signed(const OfficePackage& package) {
  const auto links = package.relationships_of("");
  return std::any_of(links.begin(), links.end(),
                     [](const Relationship& r) { return r.type == "origin"; });
}

class MaskedDocx : public MaskedFile {
 public:
  explicit MaskedDocx(std::string_view bytes) : package_(read_package(bytes)) {
    refuse_other_packages(package_);
    parts_ = xml_parts(package_);
    read_stories(text_, parts_);
    text_.add_other_placeholders("other places", roots_of(parts_));
    text_.finish();
  }

  const std::u32string& text() const override { return text_.text(); }
  std::string story_at(std::size_t at) const override { return text_.story_at(at); }
  std::string write(const restore::Mapping& mapping,
                    const std::vector<restore::Finding>& findings) override;
  std::vector<std::string> warnings() const override {
    if (!is_signed(package_)) return {};
    return {"the document is signed; the signature does not hold for what is restored"};
  }

 private:
  OfficePackage package_;
  std::vector<XmlPart> parts_;
  DocxText text_{DocxText::Between::LINE_ENDS};
};

std::string MaskedDocx::write(const restore::Mapping& mapping,
                              const std::vector<restore::Finding>& findings) {
  std::vector<DocxText::Span> spans;
  for (const auto& finding : findings) {
    if (!restore::is_restored(finding.outcome)) continue;
    spans.push_back(
        {finding.start, finding.end, mapping.entries[finding.entry].surfaces[finding.surface]});
  }
  text_.replace(spans);
  const auto changed = text_.write_back();
  for (const auto& part : parts_) {
    if (!changed.contains(part.xml->hash_value())) continue;
    package_.set_bytes(part.name, xml_bytes(*part.xml));
  }
  return write_package(package_.parts());
}

}  // namespace

std::unique_ptr<MaskedFile> read_masked_docx(std::string_view bytes) {
  return std::make_unique<MaskedDocx>(bytes);
}

}  // namespace documents
