#include <filesystem>
#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "embedded/Error.h"
#include "embedded/loading/LibraryLoader.h"
#include "tests/loading/MappedFiles.h"

namespace {

using testing::HasSubstr;
namespace fs = std::filesystem;

class LibraryFileTest : public testing::Test {
 protected:
  LibraryFileTest() { fs::create_directories(folder); }
  ~LibraryFileTest() override { fs::remove_all(folder); }

  // What the user is told; empty when the file was loaded.
  static std::string Refusal(const fs::path& file) {
    try {
      embedded::LibraryLoader library(file);
      library.Unload();
    } catch (const embedded::InputError& error) {
      return error.what();
    }
    return {};
  }
  fs::path Write(const char* name, const std::string& bytes) const {
    std::ofstream(folder / name, std::ios::binary) << bytes;
    return folder / name;
  }

  fs::path folder = fs::path(testing::TempDir()) / "tuv_library_files";
};

std::string Plugin(const char* name) { return std::string(TUV_PLUGINS) + "/lib" + name + ".so"; }

TEST_F(LibraryFileTest, WhatIsNoLibraryIsRefusedInOneSentence) {
  const struct {
    fs::path file;
    const char* reason;
  } cases[] = {
      {folder / "missing.so", "must be a readable file"},
      {folder, "must be a readable file"},
      {"/dev/zero", "must be a readable file"},
      {Write("empty.so", ""), "must be a shared library for this machine"},
      {Write("text.so", std::string(5000, 'x')), "must be a shared library for this machine"},
      {Write("magic.so",
             "\x7f"
             "ELF"),
       "must be a shared library for this machine"},
      {"/proc/self/exe", "must be built for this application"},
      {Plugin("unresolved"), "undefined symbol: _Z23MissingFromEveryLibraryv; it must be built"},
  };
  for (const auto& [file, reason] : cases) {
    const std::string refusal = Refusal(file);
    EXPECT_THAT(refusal, HasSubstr(reason)) << file;
    EXPECT_THAT(refusal, HasSubstr("The library " + file.string() + " cannot be loaded: "));
    EXPECT_THAT(refusal, testing::EndsWith("."));
  }
  EXPECT_FALSE(tests::IsMapped("libunresolved.so"));
}

// The system's loader would read past the end of the file, which ends the process.
TEST_F(LibraryFileTest, ALibraryThatIsCutShortNeverEndsTheProcess) {
  std::ifstream whole(TUV_LIBRARY, std::ios::binary);
  const std::string bytes{std::istreambuf_iterator<char>(whole), {}};
  ASSERT_GT(bytes.size(), 20000u);
  const std::size_t step = bytes.size() / 40;
  int refused = 0;
  for (std::size_t size = 0; size < bytes.size(); size += size < 100 ? 7 : step) {
    refused += !Refusal(Write("cut.so", bytes.substr(0, size))).empty();
  }
  EXPECT_GE(refused, 15);
  EXPECT_EQ(Refusal(Write("cut.so", bytes)), "");
}

TEST_F(LibraryFileTest, ALibraryThatForbidsUnloadingIsReported) {
  embedded::LibraryLoader library(Plugin("pinned"));
  EXPECT_NE(library.Find("Pinned"), nullptr);
  try {
    library.Unload();
    FAIL() << "unloaded";
  } catch (const embedded::LibraryInUse& error) {
    EXPECT_THAT(error.what(), HasSubstr("forbids unloading"));
  }
  EXPECT_FALSE(library.IsLoaded());
}

}  // namespace
