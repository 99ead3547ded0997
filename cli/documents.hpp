// Documents of any format that veildoc reads, for the commands.
#pragma once

#include <memory>
#include <string>

#include "cli/command.hpp"
#include "cli/json.hpp"
#include "documents/document.hpp"

namespace cli {

// Reads a file, or standard input for "-", and tells its format. Throws
// Failure(EXIT_INPUT) for what cannot be read.
std::unique_ptr<documents::Document> read_document(const std::string& path, bool input_named,
                                                   const Context& context);

// The file of --report.
//
//   {"format":"veildoc-report","version":1,"document":"docx","language":"zh",
//    "kinds":{"ORG":3},"stories":[{"story":"body","kinds":{"ORG":3}}],
//    "not_examined":["word/media/image1.png: picture"],"removed":[],"warnings":[]}
std::string report_json(const documents::Report& report, const std::string& language);

// What it says of one document: all but "format" and "version".
ordered_json report_object(const documents::Report& report, const std::string& language);

// The file of --report for several: its "files", as they are.
std::string reports_json(ordered_json files);

// Tells of what a person has to look at.
void warn_of_report(const documents::Report& report, std::ostream& err);

}  // namespace cli
