// Word documents for tests, put together from a few lines of XML.
#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "core/anonymization/analyzer.hpp"
#include "documents/document.hpp"
#include "documents/masked_file.hpp"
#include "documents/package.hpp"

namespace test {

inline constexpr std::string_view COMPANY = "北京华信科技有限公司";
inline constexpr std::string_view PERSON = "张伟民";
inline constexpr std::string_view EMAIL = "lin@example.com";

// Finds COMPANY, PERSON and EMAIL wherever they stand.
const core::anonymization::Analyzer& finding_analyzer();

// A part beside the main one. `type` is the end of its content type, `relationship`
// that of the relationship that leads to it from the main part.
struct ExtraPart {
  std::string name;
  std::string type;
  std::string relationship;
  std::string bytes;
};

// A .docx with this between the tags of w:body.
std::vector<documents::Part> docx_parts(const std::string& body,
                                        const std::vector<ExtraPart>& extra = {});
std::string docx(const std::string& body, const std::vector<ExtraPart>& extra = {});

// A root element with the prefixes that Word uses.
std::string rooted(const std::string& name, const std::string& inner);

struct Masked {
  std::vector<documents::Part> parts;
  documents::Report report;
  std::u32string text;  // as it was analysed

  // The bytes of a part; "(none)" if there is no such part.
  std::string part(std::string_view name) const;
  // What stands between the tags of w:body.
  std::string body() const;
};
Masked masked(const std::string& bytes);
std::string masked_body(const std::string& body);

// A document that was masked, and its mapping.
struct WayBack {
  std::string masked;
  core::restore::Mapping mapping;
  std::u32string masked_text;  // as people read it
  std::u32string original_text;
};
WayBack way_back(const std::string& bytes);

// A masked file with the originals; what was found is told by letters as in
// tests/restore/restoring.hpp.
struct Restored {
  std::string bytes;
  std::string outcomes;
};
Restored restored(const std::string& masked, const core::restore::Mapping& mapping);

// The bytes of a part; "(none)" if there is no such part.
std::string part_of(const std::vector<documents::Part>& parts, std::string_view name);
std::string body_of(const std::vector<documents::Part>& parts);

// What reading the document answers: "read", or the message of its error. The second
// one of reading it as a masked one.
std::string refusal(const std::string& bytes);
std::string masked_refusal(const std::string& bytes);

}  // namespace test
