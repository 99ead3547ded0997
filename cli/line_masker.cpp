#include "cli/line_masker.hpp"

#include <sstream>

#include "cli/document_masker.hpp"
#include "cli/failure.hpp"
#include "cli/json.hpp"
#include "core/restore/mapping_json.hpp"
#include "core/text/utf8.hpp"
#include "documents/document.hpp"

namespace cli {
namespace {

// Why a line cannot be masked; what() never holds text of it.
class LineError : public Failure {
 public:
  explicit LineError(const std::string& message) : Failure(EXIT_INPUT, message) {}
};

ordered_json parsed(const InputLine& line, std::size_t longest) {
  if (line.too_long) throw LineError("longer than " + std::to_string(longest) + " bytes");
  try {
    return ordered_json::parse(line.bytes);
  } catch (const nlohmann::json::parse_error& e) {
    throw LineError("no JSON: wrong at byte " + std::to_string(e.byte));
  }
}

const std::string& text_of(const ordered_json& object) {
  const auto text = object.find("text");
  if (text == object.end() || !text->is_string()) throw LineError("no string \"text\"");
  return text->get_ref<const std::string&>();
}

}  // namespace

bool is_blank(const InputLine& line) {
  return !line.too_long && line.bytes.find_first_not_of(" \t\r") == std::string::npos;
}

MaskedLine LineMasker::mask(const InputLine& line) const {
  ordered_json out = ordered_json::object();
  if (options_.numbered) out["line"] = line.number;
  out["id"] = nullptr;
  try {
    const auto object = parsed(line, options_.longest);
    if (!object.is_object()) throw LineError("no JSON object");
    if (const auto id = object.find("id"); id != object.end()) out["id"] = *id;
    const auto& bytes = text_of(object);
    const auto source = documents::make_text_document(core::text::decode_utf8(bytes));
    std::ostringstream nowhere;
    const auto masked =
        DocumentMasker(masking_, analyzer_, nullptr)
            .mask(*source, overrides_.find(source->text(), nullptr),
                  {.bytes = false, .mapping = options_.mapping, .checks = false}, nowhere);
    out["text"] = core::text::encode_utf8(masked.document.text);
    if (options_.mapping) out["mapping"] = core::restore::entries_json(masked.mapping->entries);
    out["language"] = masked.document.language;
    return {dump_json(out), false};
  } catch (const ServiceFailure&) {
    throw;
  } catch (const std::exception&) {
    out["line"] = line.number;
    out["error"] = told_of_current_exception().message;
    return {dump_json(out), true};
  }
}

}  // namespace cli
