#include "core/nlp/spacy/mapped_file.hpp"

#include <cerrno>
#include <system_error>
#include <utility>

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include "core/nlp/spacy/model_error.hpp"

namespace core::nlp::spacy {
namespace {

constexpr std::size_t LARGEST_SMALL_FILE = 8 << 20;

[[noreturn]] void fail_to_read(const std::string& name, int error) {
  throw ModelError(name, "", std::generic_category().message(error));
}

class OpenFile {
 public:
  explicit OpenFile(const std::string& name)
      : descriptor_(::open(name.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK)) {
    if (descriptor_ < 0) fail_to_read(name, errno);
  }
  ~OpenFile() { ::close(descriptor_); }
  OpenFile(const OpenFile&) = delete;
  OpenFile& operator=(const OpenFile&) = delete;
  int get() const { return descriptor_; }

 private:
  int descriptor_;
};

}  // namespace

MappedFile::MappedFile(const std::filesystem::path& path) : name_(path.string()) {
  const OpenFile file(name_);
  struct stat status {};
  if (::fstat(file.get(), &status) != 0) fail_to_read(name_, errno);
  if (!S_ISREG(status.st_mode)) throw ModelError(name_, "", "not a file");
  const auto size = static_cast<std::size_t>(status.st_size);
  if (size == 0) return;
  void* address = ::mmap(nullptr, size, PROT_READ, MAP_PRIVATE, file.get(), 0);
  if (address == MAP_FAILED) fail_to_read(name_, errno);
  is_mapped_ = true;
  bytes_ = {static_cast<const char*>(address), size};
}

MappedFile::MappedFile(std::string name, std::string_view bytes)
    : name_(std::move(name)), bytes_(bytes) {}

MappedFile::~MappedFile() {
  if (!is_mapped_) return;
  ::munmap(const_cast<char*>(bytes_.data()), bytes_.size());  // NOLINT: what mmap gave
}

std::string read_small_file(const std::filesystem::path& path) {
  const MappedFile file(path);
  if (file.bytes().size() > LARGEST_SMALL_FILE) {
    throw ModelError(file.name(), "", "too large for a file of its kind");
  }
  return std::string(file.bytes());
}

}  // namespace core::nlp::spacy
