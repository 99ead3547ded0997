// Mapping files, plain and sealed: what is written, what is refused.
#include "core/restore/mapping_file.hpp"

#include <functional>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include "core/restore/sealed_mapping.hpp"
#include "tests/restore/restoring.hpp"
#include "tests/support/notation.hpp"

namespace {

using core::restore::is_sealed_mapping;
using core::restore::Mapping;
using core::restore::MappingError;
using core::restore::open_sealed_mapping;
using core::restore::read_mapping;
using core::restore::seal_mapping;
using core::restore::SealCost;
using core::restore::sha256_hex;
using core::restore::write_mapping;
using nlohmann::json;

// A key that costs nothing.
constexpr SealCost CHEAP{1, 8192};

Mapping example() {
  auto mapping =
      test::mask("甲方：{[机构1]|华信科技}，即 {[机构1]|华信}；{人民币[MONEY1]元|人民币5元}。")
          .mapping;
  mapping.masked_sha256 = sha256_hex("abc");
  return mapping;
}

std::string failure(const std::function<void()>& action) {
  try {
    action();
  } catch (const MappingError& e) {
    return e.what();
  }
  return "nothing";
}

TEST(MappingFile, Format) {
  EXPECT_EQ(json::parse(write_mapping(example())), json::parse(R"({
    "format": "veildoc-mapping", "version": 1, "language": "zh",
    "masked_sha256": "ba7816bf8f01cfea414140de5dae2223b00361a396177a9cb410ff61f20015ad",
    "entries": [
      {"placeholder": "[机构1]", "surfaces": ["华信科技", "华信"], "count": 2,
       "occurrences": [
         {"surface": 0, "before": "甲方:", "after": ",即[机构1];人民币[MONEY1]元。"},
         {"surface": 1, "before": "甲方:[机构1],即", "after": ";人民币[MONEY1]元。"}]},
      {"placeholder": "[MONEY1]", "surfaces": ["5"], "count": 1}]})"));
  EXPECT_EQ(read_mapping(write_mapping(example())), example());
}

TEST(MappingFile, RefusesWhatItCannotRead) {
  const auto changed = [](const std::function<void(json&)>& change) {
    auto object = json::parse(write_mapping(example()));
    change(object);
    return object.dump();
  };
  struct Case {
    const char* why;
    std::string bytes;
    const char* says;
  };
  const auto whole = write_mapping(example());
  const Case cases[] = {
      {"empty", "", "no mapping file"},
      {"cut short", whole.substr(0, whole.size() / 2), "damaged"},
      {"another JSON", "[1]", "no mapping file"},
      {"another JSON", R"({"format": 3})", "no mapping file"},
      {"nested without end", std::string(100000, '['), "no mapping file"},
      {"not UTF-8", "{\"format\": \"\xFF\"}", "no mapping file"},
      {"newer", changed([](json& j) { j["version"] = 2; }), "version 2"},
      {"no version", changed([](json& j) { j.erase("version"); }), "version"},
      {"no entries", changed([](json& j) { j.erase("entries"); }), "entries"},
      {"no hash", changed([](json& j) { j["masked_sha256"] = "abc"; }), "masked_sha256"},
      {"no surface", changed([](json& j) { j["entries"][0]["surfaces"] = json::array(); }),
       "entry 1: no surface"},
      {"a surface that is no text", changed([](json& j) { j["entries"][1]["surfaces"][0] = 5; }),
       "entry 2: a surface"},
      {"no such surface",
       changed([](json& j) { j["entries"][0]["occurrences"][0]["surface"] = 2; }), "entry 1"},
      {"negative", changed([](json& j) { j["entries"][0]["count"] = -1; }), "entry 1"},
      {"an occurrence is missing",
       changed([](json& j) { j["entries"][0]["occurrences"].erase(0); }), "occurrences"},
      {"twice", changed([](json& j) { j["entries"].push_back(j["entries"][0]); }),
       "entry 3: its placeholder"},
      {"sealed", seal_mapping(whole, "p", CHEAP), "passphrase"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.why);
    const auto said = failure([&] { read_mapping(c.bytes); });
    EXPECT_NE(said.find(c.says), std::string::npos) << said;
    EXPECT_EQ(said.find("华信"), std::string::npos) << said;
  }
}

// Written before there were counts and occurrences.
TEST(MappingFile, ReadsOneWithoutOccurrences) {
  const auto mapping = read_mapping(R"({"format": "veildoc-mapping", "version": 1,
    "language": "en", "entries": [{"placeholder": "[ORG1]", "surfaces": ["Acme Ltd", "Acme"]}]})");
  EXPECT_EQ(test::restored("[ORG1]", mapping), "Acme Ltd");
  EXPECT_EQ(test::outcomes("[ORG1]", mapping), "F");
}

TEST(SealedMapping, OpensWithItsPassphraseOnly) {
  const auto plain = write_mapping(example());
  const auto sealed = seal_mapping(plain, "正确 passphrase", CHEAP);
  EXPECT_TRUE(is_sealed_mapping(sealed));
  EXPECT_FALSE(is_sealed_mapping(plain));
  EXPECT_EQ(sealed.find("华信"), std::string::npos);
  EXPECT_EQ(open_sealed_mapping(sealed, "正确 passphrase"), plain);
  EXPECT_NE(seal_mapping(plain, "正确 passphrase", CHEAP), sealed) << "salt and nonce are new";
  for (const auto* wrong : {"", "passphrase", "正确 passphrase "}) {
    const auto said = failure([&] { open_sealed_mapping(sealed, wrong); });
    EXPECT_NE(said.find("passphrase is wrong"), std::string::npos) << said;
  }
}

TEST(SealedMapping, RefusesWhatWasChanged) {
  const auto sealed = json::parse(seal_mapping(write_mapping(example()), "p", CHEAP));
  struct Case {
    const char* member;
    json value;
    const char* says;
  };
  auto flipped = sealed["sealed"]["content"].get<std::string>();
  flipped[5] = flipped[5] == 'A' ? 'B' : 'A';
  const Case cases[] = {
      {"content", flipped, "damaged"},
      {"content", "", "not whole"},
      {"content", "?", "base64"},
      {"salt", "AAAA", "not whole"},
      {"passes", 2, "damaged"},
      {"passes", 1000000, "passes"},
      {"memory", 16384, "damaged"},
      {"memory", 1, "not whole"},
      {"memory", std::int64_t{1} << 40, "memory"},
      {"cipher", "rot13", "does not know"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.member);
    auto changed = sealed;
    changed["sealed"][c.member] = c.value;
    const auto said = failure([&] { open_sealed_mapping(changed.dump(), "p"); });
    EXPECT_NE(said.find(c.says), std::string::npos) << said;
  }
  EXPECT_EQ(failure([] { open_sealed_mapping(write_mapping(example()), "p"); }), "not sealed");
}

}  // namespace
