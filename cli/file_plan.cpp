#include "cli/file_plan.hpp"

#include <algorithm>
#include <array>
#include <cerrno>
#include <filesystem>
#include <fstream>
#include <map>
#include <system_error>

#include "cli/failure.hpp"
#include "cli/files.hpp"
#include "documents/pdf.hpp"

namespace cli {
namespace {

namespace fs = std::filesystem;

constexpr auto MAPPING_SUFFIX = ".mapping.json";

// A path by which the same file is known, whichever way it was named.
std::string settled_path(const fs::path& path) {
  std::error_code error;
  auto settled = fs::weakly_canonical(fs::absolute(path, error), error);
  if (settled.filename().empty()) settled = settled.parent_path();
  return settled.string();
}

bool begins_like_pdf(const std::string& path) {
  std::array<char, documents::PDF_HEAD> head{};
  std::ifstream file(path, std::ios::binary);
  file.read(head.data(), head.size());
  return documents::is_pdf({head.data(), static_cast<std::size_t>(file.gcount())});
}

class Planner {
 public:
  explicit Planner(const FilesRequest& request) : request_(request) {
    for (const auto* folder : {&request.output, &request.mappings}) {
      if (!folder->empty()) left_out_.push_back(settled_path(*folder));
    }
    for (const auto& other : request.others) {
      if (!other.empty()) left_out_.push_back(settled_path(other));
    }
  }

  FilePlan plan() {
    for (const auto& input : request_.inputs) add_input(input);
    place();
    return std::move(plan_);
  }

 private:
  void add_input(const std::string& input);
  void add_folder(const fs::path& folder, const fs::path& name);
  void place();
  void check_place(const std::string& path, const std::string& input);
  bool is_left_out(const fs::path& path) const {
    return std::find(left_out_.begin(), left_out_.end(), settled_path(path)) != left_out_.end();
  }

  const FilesRequest& request_;
  std::vector<std::string> left_out_;
  FilePlan plan_;
  std::map<std::string, std::string> inputs_;   // by settled path
  std::map<std::string, std::string> written_;  // settled path to the input it is made of
};

void Planner::add_input(const std::string& input) {
  std::error_code error;
  const auto status = fs::status(input, error);
  if (!fs::exists(status)) {
    throw Failure(EXIT_INPUT, with_errno("cannot read " + input, ENOENT));
  }
  if (fs::is_directory(status)) return add_folder(input, {});
  if (!fs::is_regular_file(status)) throw Failure(EXIT_INPUT, input + ": no regular file");
  plan_.files.push_back({input, fs::path(input).filename().string(), {}, {}});
}

void Planner::add_folder(const fs::path& folder, const fs::path& name) {
  std::vector<fs::path> children;
  std::error_code error;
  for (fs::directory_iterator entry(folder, error), end; !error && entry != end;
       entry.increment(error)) {
    if (!entry->path().filename().string().starts_with('.')) children.push_back(entry->path());
  }
  if (error) {
    plan_.problems.push_back(with_errno("cannot read " + folder.string(), error.value()));
    return;
  }
  std::sort(children.begin(), children.end());
  for (const auto& child : children) {
    if (is_left_out(child)) continue;
    const auto status = fs::status(child, error);
    if (fs::is_directory(status)) {
      // A link to a folder may lead back up.
      if (!fs::is_symlink(fs::symlink_status(child, error))) {
        add_folder(child, name / child.filename());
      } else {
        plan_.problems.push_back(child.string() + ": a link to a folder; left out");
      }
    } else if (fs::is_regular_file(status)) {
      plan_.files.push_back({child.string(), (name / child.filename()).string(), {}, {}});
    } else {
      plan_.problems.push_back(child.string() + ": no regular file; left out");
    }
  }
}

void Planner::check_place(const std::string& path, const std::string& input) {
  const auto settled = settled_path(path);
  if (inputs_.contains(settled) || is_left_out(path)) {
    throw Failure(EXIT_USAGE, input + " would be written over " + path);
  }
  const auto [other, is_new] = written_.try_emplace(settled, input);
  if (!is_new) {
    throw Failure(EXIT_USAGE,
                  input + " and " + other->second + " would both be written to " + path);
  }
  std::error_code error;
  if (!request_.overwrite && fs::exists(fs::symlink_status(path, error))) {
    throw Failure(EXIT_FAILED, path + " is there already (--overwrite replaces it)");
  }
}

void Planner::place() {
  for (const auto& file : plan_.files) inputs_.emplace(settled_path(file.input), file.input);
  for (auto& file : plan_.files) {
    if (!request_.output.empty()) {
      file.output = (fs::path(request_.output) / file.name).string();
      if (begins_like_pdf(file.input)) file.output += ".txt";
      check_place(file.output, file.input);
    }
    if (!request_.mappings.empty()) {
      file.mapping = (fs::path(request_.mappings) / (file.name + MAPPING_SUFFIX)).string();
      check_place(file.mapping, file.input);
    }
  }
}

}  // namespace

FilePlan plan_files(const FilesRequest& request) { return Planner(request).plan(); }

void make_folders_of(const std::string& path) {
  const auto folder = fs::path(path).parent_path();
  if (folder.empty()) return;
  std::error_code error;
  fs::create_directories(folder, error);
  if (error)
    throw Failure(EXIT_FAILED, with_errno("cannot make " + folder.string(), error.value()));
}

}  // namespace cli
