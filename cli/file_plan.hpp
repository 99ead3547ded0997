// Which files a command with several of them reads, and where it writes each.
#pragma once

#include <string>
#include <utility>
#include <vector>

namespace cli {

struct FilesRequest {
  std::vector<std::string> inputs;  // files and folders
  std::string output;               // a folder, which need not exist; empty: none is written
  std::string mappings;             // the same
  std::vector<std::string> others;  // files of other options, which are no documents
  bool overwrite = false;
};

struct PlannedFile {
  std::string input;
  std::string name;     // its place below the folder that was named
  std::string output;   // empty: none
  std::string mapping;  // empty: none
};

struct FilePlan {
  std::vector<PlannedFile> files;
  // What could not be looked into, and why.
  std::vector<std::string> problems;
};

// All files, folders in the order of their names. Hidden files are no documents, nor is
// what lies in the output folders. Throws Failure(EXIT_INPUT) for what is not there,
// Failure(EXIT_USAGE) if two files would be written to one place or one over an input,
// and Failure(EXIT_FAILED) for an output that is there already, unless `overwrite`.
FilePlan plan_files(const FilesRequest& request);

// Makes the folders above a file. Throws Failure(EXIT_FAILED).
void make_folders_of(const std::string& path);

}  // namespace cli
