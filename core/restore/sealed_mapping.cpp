#include "core/restore/sealed_mapping.hpp"

#include <array>
#include <vector>

#include <sodium.h>

#include "core/restore/mapping_json.hpp"

namespace core::restore {
namespace {

using Bytes = std::vector<unsigned char>;

constexpr auto KEY_BY = "argon2id13";
constexpr auto CIPHER = "xchacha20-poly1305-ietf";
constexpr std::size_t NONCE_BYTES = crypto_aead_xchacha20poly1305_ietf_NPUBBYTES;
constexpr std::size_t TAG_BYTES = crypto_aead_xchacha20poly1305_ietf_ABYTES;
// A file may not keep the machine busy for long.
constexpr std::size_t MOST_PASSES = 16;
constexpr std::size_t MOST_MEMORY = std::size_t{1} << 30U;

void start_sodium() {
  if (sodium_init() < 0) throw ExternalError("libsodium does not start");
}

const unsigned char* bytes_of(std::string_view text) {
  return reinterpret_cast<const unsigned char*>(text.data());
}

// A key that does not stay in memory.
class Key {
 public:
  Key(std::string_view passphrase, const Bytes& salt, const SealCost& cost) {
    const int failed =
        crypto_pwhash(key_.data(), key_.size(), passphrase.data(), passphrase.size(), salt.data(),
                      cost.passes, cost.memory, crypto_pwhash_ALG_ARGON2ID13);
    if (failed != 0) throw ExternalError("not enough memory to make a key of the passphrase");
  }
  ~Key() { sodium_memzero(key_.data(), key_.size()); }
  Key(const Key&) = delete;
  Key& operator=(const Key&) = delete;

  const unsigned char* data() const { return key_.data(); }

 private:
  std::array<unsigned char, crypto_aead_xchacha20poly1305_ietf_KEYBYTES> key_{};
};

// What is not secret is authenticated with the content.
std::string header_of(const SealCost& cost) {
  return std::string(MAPPING_FORMAT) + " " + std::to_string(MAPPING_VERSION) + " " + KEY_BY + " " +
         std::to_string(cost.passes) + " " + std::to_string(cost.memory) + " " + CIPHER;
}

std::string base64(const Bytes& bytes) {
  constexpr int VARIANT = sodium_base64_VARIANT_ORIGINAL;
  std::string out(sodium_base64_encoded_len(bytes.size(), VARIANT), '\0');
  sodium_bin2base64(out.data(), out.size(), bytes.data(), bytes.size(), VARIANT);
  out.resize(out.size() - 1);  // the NUL behind it
  return out;
}

Bytes from_base64(const ordered_json& sealed, const char* name) {
  const auto text = string_member(sealed, name, "the seal");
  if (text.empty()) return {};
  Bytes out(text.size());
  std::size_t size = 0;
  const int failed = sodium_base642bin(out.data(), out.size(), text.data(), text.size(), nullptr,
                                       &size, nullptr, sodium_base64_VARIANT_ORIGINAL);
  if (failed != 0) damaged(std::string("the seal: \"") + name + "\" is no base64");
  out.resize(size);
  return out;
}

Bytes random_bytes(std::size_t size) {
  Bytes out(size);
  randombytes_buf(out.data(), out.size());
  return out;
}

const ordered_json& seal_of(const ordered_json& object) {
  const auto* sealed = find_member(object, "sealed");
  if (sealed == nullptr) throw MappingError("not sealed");
  if (!sealed->is_object()) damaged("the seal is no object");
  if (string_member(*sealed, "key", "the seal") != KEY_BY ||
      string_member(*sealed, "cipher", "the seal") != CIPHER) {
    throw MappingError("sealed in a way that this veildoc does not know");
  }
  return *sealed;
}

}  // namespace

std::string sha256_hex(std::string_view bytes) {
  start_sodium();
  std::array<unsigned char, crypto_hash_sha256_BYTES> hash{};
  crypto_hash_sha256(hash.data(), bytes_of(bytes), bytes.size());
  std::string out(2 * hash.size() + 1, '\0');
  sodium_bin2hex(out.data(), out.size(), hash.data(), hash.size());
  out.resize(2 * hash.size());
  return out;
}

std::string seal_mapping(std::string_view mapping_file, std::string_view passphrase,
                         const SealCost& cost) {
  start_sodium();
  const auto salt = random_bytes(crypto_pwhash_SALTBYTES);
  const auto nonce = random_bytes(NONCE_BYTES);
  const Key key(passphrase, salt, cost);
  const auto header = header_of(cost);
  Bytes content(mapping_file.size() + TAG_BYTES);
  unsigned long long size = 0;
  crypto_aead_xchacha20poly1305_ietf_encrypt(content.data(), &size, bytes_of(mapping_file),
                                             mapping_file.size(), bytes_of(header), header.size(),
                                             nullptr, nonce.data(), key.data());
  content.resize(size);
  const ordered_json sealed = {{"key", KEY_BY},
                               {"passes", cost.passes},
                               {"memory", cost.memory},
                               {"salt", base64(salt)},
                               {"cipher", CIPHER},
                               {"nonce", base64(nonce)},
                               {"content", base64(content)}};
  return dump_mapping_object(
      {{"format", MAPPING_FORMAT}, {"version", MAPPING_VERSION}, {"sealed", sealed}});
}

bool is_sealed_mapping(std::string_view bytes) {
  return find_member(parse_mapping_object(bytes), "sealed") != nullptr;
}

std::string open_sealed_mapping(std::string_view bytes, std::string_view passphrase) {
  start_sodium();
  const auto object = parse_mapping_object(bytes);
  const auto& sealed = seal_of(object);
  const SealCost cost{number_member(sealed, "passes", MOST_PASSES, "the seal"),
                      number_member(sealed, "memory", MOST_MEMORY, "the seal")};
  const auto salt = from_base64(sealed, "salt");
  const auto nonce = from_base64(sealed, "nonce");
  const auto content = from_base64(sealed, "content");
  if (salt.size() != crypto_pwhash_SALTBYTES || nonce.size() != NONCE_BYTES ||
      content.size() < TAG_BYTES || cost.passes < crypto_pwhash_OPSLIMIT_MIN ||
      cost.memory < crypto_pwhash_MEMLIMIT_MIN) {
    damaged("the seal is not whole");
  }
  const Key key(passphrase, salt, cost);
  const auto header = header_of(cost);
  std::string out(content.size() - TAG_BYTES, '\0');
  unsigned long long size = 0;
  const int failed = crypto_aead_xchacha20poly1305_ietf_decrypt(
      reinterpret_cast<unsigned char*>(out.data()), &size, nullptr, content.data(), content.size(),
      bytes_of(header), header.size(), nonce.data(), key.data());
  if (failed != 0) throw MappingError("the passphrase is wrong, or the file is damaged");
  out.resize(size);
  return out;
}

}  // namespace core::restore
