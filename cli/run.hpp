// The command `veildoc` as a function, so that tests can call it.
//
// Masked text and answers go to `out`, messages to `err`, each prefixed with
// "veildoc: ". No message quotes the document.
#pragma once

#include <functional>
#include <iosfwd>
#include <memory>
#include <span>
#include <string>

#include "core/anonymization/analyzer.hpp"
#include "core/recognition/recognizer_registry.hpp"

namespace core::nlp {
class HanlpClient;
}

namespace cli {

// What the process ends with.
enum ExitCode {
  EXIT_DONE = 0,           // also when the reader of the output went away early
  EXIT_FAILED = 1,         // anything that none of the others names, such as an unwritable output
  EXIT_USAGE = 2,          // the command line is wrong
  EXIT_INPUT = 3,          // the input could not be read or decoded
  EXIT_ANALYZER = 4,       // the analyzer failed or could not be reached
  EXIT_INTERRUPTED = 130,  // by a signal, behind the work that was finished
};

struct AnalyzerOptions {
  std::string profile;
  core::recognition::RecognizerList recognizers = {};  // of the user
  // Services to ask; nullptr: none.
  std::shared_ptr<const core::anonymization::Analyzer> presidio = {};
  bool embedded = true;  // beside Presidio
  std::shared_ptr<const core::nlp::HanlpClient> hanlp = {};
  // Where it does not answer, the embedded finders serve and this is told why.
  // Empty: it is an error.
  std::function<void(const std::string& reason)> hanlp_fallback = {};
  // The folder of a spaCy model; empty: none, or what the environment names.
  std::string spacy_model = {};
};

// Makes the analyzer that a command asks for.
using AnalyzerFactory =
    std::function<std::unique_ptr<core::anonymization::Analyzer>(const AnalyzerOptions& options)>;

// `args` without the program's name. Returns an ExitCode; throws nothing.
int run(std::span<const std::string> args, std::istream& in, std::ostream& out, std::ostream& err);

// The same with another analyzer than the embedded one.
int run(std::span<const std::string> args, std::istream& in, std::ostream& out, std::ostream& err,
        const AnalyzerFactory& make_analyzer);

}  // namespace cli
