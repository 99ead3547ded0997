#include "core/anonymization/analyzer/model_path.hpp"

#include <fstream>

#include <gtest/gtest.h>
#include <stdlib.h>

#include "core/app_paths.hpp"

namespace core::anonymization {
namespace {

namespace fs = std::filesystem;

// A folder of its own, gone at the end; the environment and the state of the
// application as they are at the start of a program.
class ModelPath : public ::testing::Test {
 protected:
  void SetUp() override {
    std::string pattern = (fs::temp_directory_path() / "veildoc-model-XXXXXX").string();
    root_ = fs::canonical(::mkdtemp(pattern.data()));
    ::unsetenv("VEILDOC_SPACY_MODEL_EN");
  }
  void TearDown() override {
    set_packaged_executable(std::nullopt);
    ::unsetenv("VEILDOC_SPACY_MODEL_EN");
    fs::remove_all(root_);
  }

  fs::path make_model(const fs::path& relative) {
    auto dir = root_ / relative;
    fs::create_directories(dir);
    std::ofstream(dir / "meta.json") << "{}";
    std::ofstream(dir / "config.cfg") << "";
    return dir;
  }
  static std::string resolve() { return resolve_spacy_model_path("en", "the_package"); }
  static void set_override(const std::string& value) {
    ::setenv("VEILDOC_SPACY_MODEL_EN", value.c_str(), 1);
  }
  void package(const fs::path& executable) { set_packaged_executable(root_ / executable); }

  fs::path root_;
};

TEST_F(ModelPath, TheOverrideNamesAModelOrTheFolderAboveIt) {
  const auto model = make_model("models/en_x");
  set_override("  " + (root_ / "models").string() + "\n");
  EXPECT_EQ(resolve(), model.string());
  fs::create_directory_symlink(model, root_ / "link");
  set_override((root_ / "link").string());
  EXPECT_EQ(resolve(), model.string()) << "resolved";
  fs::remove(root_ / "link");
  set_override(root_.string());
  EXPECT_EQ(resolve(), "the_package") << "two levels below is too deep";
  for (const auto* value : {"", " \t", "/nonexistent/model"}) {
    set_override(value);
    EXPECT_EQ(resolve(), "the_package") << value;
  }
}

TEST_F(ModelPath, AModelHasBothFiles) {
  const auto model = make_model("m");
  EXPECT_TRUE(_is_spacy_model_dir(model));
  fs::remove(model / "meta.json");
  EXPECT_FALSE(_is_spacy_model_dir(model));
  fs::create_directory(model / "meta.json");
  EXPECT_FALSE(_is_spacy_model_dir(model)) << "a folder of that name is no file";
  EXPECT_FALSE(_is_spacy_model_dir(root_ / "nothing"));
}

TEST_F(ModelPath, APackagedApplicationLooksBesideItselfThenAtItsRoot) {
  package("app/bin/veildoc");
  EXPECT_EQ(resolve(), "the_package");
  const auto at_root = make_model("app/adv_util/en/model-1.0");
  EXPECT_EQ(resolve(), at_root.string());
  const auto beside = make_model("app/bin/adv_util/en");
  EXPECT_EQ(resolve(), beside.string());
  EXPECT_EQ(_frozen_app_dir(), root_ / "app/bin");
  set_packaged_executable(std::nullopt);
  EXPECT_EQ(resolve(), "the_package");
  EXPECT_EQ(_frozen_app_dir(), std::nullopt);
}

TEST_F(ModelPath, TheRootIsTheFolderAboveBin) {
  package("app/bin/veildoc");
  EXPECT_EQ(resolve_app_root(), root_ / "app");
  package("portable/veildoc");
  EXPECT_EQ(resolve_app_root(), root_ / "portable");
}

}  // namespace
}  // namespace core::anonymization
