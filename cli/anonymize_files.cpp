#include "cli/anonymize_files.hpp"

#include <algorithm>
#include <atomic>
#include <deque>
#include <exception>
#include <filesystem>
#include <mutex>
#include <optional>
#include <ostream>
#include <sstream>
#include <thread>

#include "cli/document_masker.hpp"
#include "cli/documents.hpp"
#include "cli/failure.hpp"
#include "cli/file_plan.hpp"
#include "cli/files.hpp"
#include "cli/interrupt.hpp"
#include "cli/json.hpp"
#include "cli/matter_store.hpp"
#include "cli/rate_progress.hpp"
#include "cli/review_table.hpp"
#include "core/restore/sealed_mapping.hpp"
#include "core/text/unicode.hpp"
#include "core/text/utf8.hpp"
#include "documents/document.hpp"
#include "documents/errors.hpp"

namespace cli {
namespace {

namespace fs = std::filesystem;
namespace restore = core::restore;

FilesRequest request_of(const FilesOptions& options, const MaskingOptions& masking) {
  FilesRequest request;
  request.inputs = options.inputs;
  if (!options.dry_run) {
    request.output = options.output;
    request.mappings = options.mappings;
  }
  request.others = {options.matter,      options.report, options.passphrase_file,
                    masking.recognizers, masking.keep,   masking.mask};
  request.overwrite = options.overwrite || options.resume;
  return request;
}

// A mapping is text, too, but masking it would be of no use to anybody.
void refuse_mapping_file(const std::string& path, std::string_view bytes) {
  constexpr std::size_t HEAD = 200;
  if (bytes.starts_with('{') &&
      bytes.substr(0, HEAD).find("\"veildoc-mapping\"") != std::string_view::npos) {
    throw Failure(EXIT_INPUT, path + ": a mapping file, no document");
  }
}

// Whether something that was masked can be read in the name of the file.
bool names_something_masked(const std::string& name,
                            const core::anonymization::AnonymizedDocument& document) {
  constexpr std::size_t SHORTEST_CHINESE = 2;
  constexpr std::size_t SHORTEST_OTHER = 4;
  std::u32string text;
  try {
    text = core::text::case_fold(core::text::decode_utf8(name));
  } catch (const core::text::DecodeError&) {
    return false;
  }
  return std::any_of(document.placements.begin(), document.placements.end(), [&](const auto& p) {
    const auto least =
        core::text::contains_ideograph(p.surface) ? SHORTEST_CHINESE : SHORTEST_OTHER;
    return p.surface.size() >= least && p.surface.size() <= text.size() &&
           text.find(core::text::case_fold(p.surface)) != std::u32string::npos;
  });
}

// Of several failures the one that the command ends with.
ExitCode graver(ExitCode a, ExitCode b) {
  for (const auto code : {EXIT_FAILED, EXIT_ANALYZER, EXIT_INPUT}) {
    if (a == code || b == code) return code;
  }
  return a;
}

// What one file becomes, ready on the disk but not in place.
struct FileOutcome {
  ordered_json entry;
  std::string messages;
  std::string table;
  std::deque<std::unique_ptr<PendingFile>> written;
  std::optional<Told> failure;
};

class FilesRun {
 public:
  FilesRun(const FilesOptions& options, const MaskingOptions& masking, const Context& context)
      : options_(options), masking_(masking), context_(context) {}

  void run();

 private:
  void open();
  bool is_done(const PlannedFile& file) const;
  void mask(const PlannedFile& file, FileOutcome& outcome);
  FileOutcome outcome_of(const PlannedFile& file);
  void take(const PlannedFile& file, FileOutcome outcome, ordered_json& entry);
  void mask_all(const std::vector<PlannedFile>& files);
  std::string mapping_bytes(const restore::Mapping& mapping) const;
  void put_in_place();
  void tell(const std::string& file, const std::string& messages) const;
  void finish(std::size_t files);

  const FilesOptions& options_;
  const MaskingOptions& masking_;
  const Context& context_;
  std::optional<InterruptWatch> watch_;  // while documents are masked
  std::optional<MatterStore> matter_;
  std::optional<Passphrase> passphrase_;
  std::optional<OverrideLists> overrides_;
  std::optional<GuardedAnalyzer> analyzer_;
  std::optional<RateProgress> progress_;
  std::deque<std::unique_ptr<PendingFile>> pending_;
  std::size_t until_saved_ = 1;  // documents
  std::size_t saved_ = 0;
  ordered_json report_ = ordered_json::array();
  std::size_t done_ = 0;
  std::size_t skipped_ = 0;
  std::size_t failed_ = 0;
  ExitCode code_ = EXIT_DONE;
};

// Everything that may be refused, before anything is written.
void FilesRun::open() {
  if (!options_.matter.empty()) {
    matter_.emplace(options_.matter, options_.encrypt, options_.passphrase_file,
                    options_.dry_run ? MatterStore::Use::LOOK : MatterStore::Use::WRITE);
  } else if (options_.encrypt) {
    passphrase_ = read_passphrase(options_.passphrase_file, Asked::TWICE);
  }
  overrides_.emplace(masking_);
  analyzer_.emplace(context_, masking_);
}

void FilesRun::tell(const std::string& file, const std::string& messages) const {
  constexpr std::string_view PREFIX = "veildoc: ";
  std::istringstream lines(messages);
  for (std::string line; std::getline(lines, line);) {
    if (line.starts_with(PREFIX)) line.erase(0, PREFIX.size());
    context_.err << PREFIX << (file.empty() ? "" : file + ": ") << line << '\n';
  }
  context_.err << std::flush;
}

std::string FilesRun::mapping_bytes(const restore::Mapping& mapping) const {
  auto bytes = restore::write_mapping(mapping);
  const auto& passphrase = matter_ ? matter_->passphrase() : passphrase_;
  return passphrase ? restore::seal_mapping(bytes, passphrase->text()) : bytes;
}

// The matter first: a document whose numbers nobody knows could never be restored.
void FilesRun::put_in_place() {
  if (pending_.empty()) return;
  if (matter_) matter_->write()->commit();
  for (const auto& file : pending_) file->commit();
  pending_.clear();
}

// An output is put in place behind its mapping, and whole. One that is older than the
// document is not made of it.
bool FilesRun::is_done(const PlannedFile& file) const {
  if (!options_.resume) return false;
  std::error_code error;
  const auto written = fs::last_write_time(file.output, error);
  if (error) return false;
  const auto changed = fs::last_write_time(file.input, error);
  return !error && changed <= written && (file.mapping.empty() || fs::exists(file.mapping, error));
}

// Shares nothing with other threads but what does not change; with a matter there is
// one thread.
void FilesRun::mask(const PlannedFile& file, FileOutcome& outcome) {
  const auto bytes = read_all(file.input, context_.in);
  refuse_mapping_file(file.input, bytes);
  std::unique_ptr<documents::Document> source;
  try {
    source = documents::read_document(bytes);
  } catch (const documents::DocumentError& e) {
    throw Failure(EXIT_INPUT, file.input + ": " + e.what());
  }
  std::ostringstream warnings;
  warn_of_placeholders(source->text(), warnings);
  const DocumentMasker masker(masking_, *analyzer_, matter_ ? &matter_->matter() : nullptr);
  // A line of a list need not mean something in each document.
  const auto masked = masker.mask(
      *source, overrides_->find(source->text(), nullptr),
      {.bytes = !options_.dry_run, .mapping = !file.mapping.empty(), .matter = matter_.has_value()},
      warnings);
  warn_of_unmaskable(masked.unmaskable, warnings);
  if (options_.dry_run) {
    outcome.table = review_table(restore::make_mapping(masked.document));
  } else {
    const auto put = [&](const std::string& path, std::string_view what, Privacy privacy) {
      make_folders_of(path);
      outcome.written.push_back(std::make_unique<PendingFile>(path, what, privacy));
    };
    if (masked.mapping) put(file.mapping, mapping_bytes(*masked.mapping), Privacy::SECRET);
    put(file.output, masked.bytes, Privacy::ORDINARY);
    warn_of_report(source->report(), warnings);
    outcome.entry["output"] = file.output;
    outcome.entry.update(report_object(source->report(), masked.document.language));
    if (names_something_masked(file.name, masked.document)) {
      warnings << "veildoc: warning: the name of the file holds something that was masked\n";
    }
  }
  if (matter_) {
    matter_->matter().add({file.name, masked.document.language, masked.matter->masked_sha256,
                           masked.matter->encoding},
                          *masked.matter);
  }
  outcome.messages = warnings.str();
}

FileOutcome FilesRun::outcome_of(const PlannedFile& file) {
  FileOutcome outcome;
  outcome.entry["file"] = file.input;
  try {
    mask(file, outcome);
  } catch (const std::exception&) {
    outcome.failure = told_of_current_exception();
    outcome.written.clear();
    outcome.entry = {{"file", file.input}, {"error", outcome.failure->message}};
  }
  return outcome;
}

void FilesRun::take(const PlannedFile& file, FileOutcome outcome, ordered_json& entry) {
  for (auto& written : outcome.written) pending_.push_back(std::move(written));
  if (outcome.failure || !outcome.messages.empty() || !outcome.table.empty()) progress_->clear();
  if (!outcome.table.empty()) {
    write_all(context_.out, (done_ == 0 ? "" : "\n") + file.input + "\n" + outcome.table);
  }
  tell(file.input, outcome.messages);
  ++done_;
  if (outcome.failure) {
    const auto& [code, message] = *outcome.failure;
    ++failed_;
    code_ = failed_ == 1 ? code : graver(code_, code);
    // Not every message names the file.
    tell(message.find(file.input) == std::string::npos ? file.input : "", message);
  }
  entry = std::move(outcome.entry);
  // The matter is written whole each time: the more it holds, the less often.
  if (!matter_ || matter_->matter().documents().size() - saved_ >= until_saved_) {
    put_in_place();
    saved_ = matter_ ? matter_->matter().documents().size() : 0;
    until_saved_ = std::max<std::size_t>(1, saved_);
  }
  progress_->show(done_ + skipped_, 0, skipped_);
}

void FilesRun::mask_all(const std::vector<PlannedFile>& files) {
  std::vector<ordered_json> entries(files.size());
  std::atomic<std::size_t> next = 0;
  std::mutex mutex;
  std::exception_ptr broken;
  const auto work = [&] {
    for (auto i = next++; i < files.size() && !watch_->interrupted(); i = next++) {
      const auto& file = files[i];
      if (is_done(file)) {
        const std::lock_guard lock(mutex);
        ++skipped_;
        entries[i] = {{"file", file.input}, {"output", file.output}, {"skipped", true}};
        continue;
      }
      auto outcome = outcome_of(file);
      const std::lock_guard lock(mutex);
      try {
        take(file, std::move(outcome), entries[i]);
      } catch (const std::exception&) {
        if (broken == nullptr) broken = std::current_exception();
        next = files.size();
      }
    }
  };
  std::vector<std::thread> threads;
  for (std::size_t i = 1; i < options_.jobs; ++i) threads.emplace_back(work);
  work();
  for (auto& thread : threads) thread.join();
  progress_->clear();
  if (broken != nullptr) std::rethrow_exception(broken);
  for (auto& entry : entries) {
    if (!entry.is_null()) report_.push_back(std::move(entry));
  }
}

void FilesRun::finish(std::size_t files) {
  put_in_place();
  if (!options_.report.empty()) {
    PendingFile(options_.report, reports_json(report_), Privacy::ORDINARY).commit();
  }
  if (watch_->interrupted()) {
    throw Failure(EXIT_INTERRUPTED, "interrupted; " + std::to_string(report_.size() - failed_) +
                                        " of " + std::to_string(files) + " documents are masked");
  }
  if (failed_ > 0) {
    throw Failure(code_, std::to_string(failed_) + " of " + std::to_string(files) +
                             (files == 1 ? " file" : " files") + (failed_ == 1 ? " was" : " were") +
                             " not masked");
  }
}

void FilesRun::run() {
  const auto plan = plan_files(request_of(options_, masking_));
  for (const auto& problem : plan.problems) {
    ++failed_;
    code_ = EXIT_INPUT;
    tell("", problem);
    report_.push_back({{"file", problem.substr(0, problem.rfind(": "))}, {"error", problem}});
  }
  const auto all = plan.files.size() + plan.problems.size();
  if (all == 0) throw Failure(EXIT_INPUT, options_.inputs.front() + ": no file is in it");
  open();
  watch_.emplace();
  progress_.emplace(context_.err, RateProgress::Unit::FILES, plan.files.size());
  mask_all(plan.files);
  finish(all);
}

}  // namespace

void anonymize_files(const FilesOptions& options, const MaskingOptions& masking,
                     const Context& context) {
  FilesRun(options, masking, context).run();
}

}  // namespace cli
