#include "cli/documents.hpp"

#include <ostream>

#include "cli/failure.hpp"
#include "cli/masking.hpp"
#include "documents/errors.hpp"

namespace cli {
namespace {

constexpr int REPORT_VERSION = 1;
constexpr int REPORT_INDENT = 2;

}  // namespace

std::unique_ptr<documents::Document> read_document(const std::string& path, bool input_named,
                                                   const Context& context) {
  const auto bytes = read_bytes(path, input_named, context);
  try {
    return documents::read_document(bytes);
  } catch (const documents::DocumentError& e) {
    throw Failure(EXIT_INPUT, input_name(path) + ": " + e.what());
  }
}

ordered_json report_object(const documents::Report& report, const std::string& language) {
  auto kinds = ordered_json::object();
  auto stories = ordered_json::array();
  for (const auto& [story, counts] : report.stories) {
    auto of_story = ordered_json::object();
    for (const auto& [kind, count] : counts) {
      of_story[kind] = count;
      kinds[kind] = kinds.value(kind, std::size_t{0}) + count;
    }
    stories.push_back({{"story", story}, {"kinds", std::move(of_story)}});
  }
  return {{"document", report.format},           {"language", language},
          {"kinds", std::move(kinds)},           {"stories", std::move(stories)},
          {"not_examined", report.not_examined}, {"removed", report.removed},
          {"warnings", report.warnings}};
}

std::string report_json(const documents::Report& report, const std::string& language) {
  ordered_json object = {{"format", "veildoc-report"}, {"version", REPORT_VERSION}};
  object.update(report_object(report, language));
  return dump_json(object, REPORT_INDENT);
}

std::string reports_json(ordered_json files) {
  return dump_json(
      {{"format", "veildoc-report"}, {"version", REPORT_VERSION}, {"files", std::move(files)}},
      REPORT_INDENT);
}

void warn_of_report(const documents::Report& report, std::ostream& err) {
  const auto count = report.not_examined.size();
  if (count > 0) {
    err << "veildoc: warning: " << count << (count == 1 ? " part was" : " parts were")
        << " not examined (pictures, fonts, data); look at them before you pass the document on\n";
  }
  for (const auto& warning : report.warnings) err << "veildoc: warning: " << warning << '\n';
}

}  // namespace cli
