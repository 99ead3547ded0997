// How an installed command knows that it is.
#include "cli/installed.hpp"

#include <gtest/gtest.h>

#include "tests/cli/support.hpp"

namespace {

TEST(Installed, GoesByTheMarkerBesideTheFolderOfTheCommand) {
  const test::Folder folder;
  folder.write("usr/bin/veildoc", "");
  folder.write("build/cli/veildoc", "");
  folder.write("usr/share/veildoc/installed.txt", "");
  EXPECT_TRUE(cli::is_installed(folder.path("usr/bin/veildoc")));
  EXPECT_FALSE(cli::is_installed(folder.path("build/cli/veildoc")));
  EXPECT_FALSE(cli::is_installed("veildoc"));
}

}  // namespace
