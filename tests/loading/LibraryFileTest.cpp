#include <filesystem>
#include <fstream>
#include <gmock/gmock.h>

#include "host/HostVersion.h"
#include "host/loading/LibraryLoader.h"
#include "tests/loading/MappedFiles.h"
#include "tests/support/ScratchFolder.h"

namespace {

using testing::HasSubstr;
namespace fs = std::filesystem;

class LibraryFileTest : public testing::Test {
 protected:
  tests::ScratchFolder folder;
};

// What the user is told; empty when the library was loaded and unloaded.
std::string Refusal(const fs::path& file) {
  try {
    LibraryLoader(file).Unload();
  } catch (const std::runtime_error& error) {
    return error.what();
  }
  return {};
}

// "0.1": what the names of the libraries carry.
std::string OwnVersion() {
  const std::string version = HostVersion();
  return version.substr(0, version.rfind('.'));
}

TEST_F(LibraryFileTest, WhatIsNoLibraryIsRefusedInOneSentence) {
  const struct {
    fs::path file;
    std::string reason;
  } cases[] = {
      {folder.Path() / "missing.so", "it must be a readable file."},
      {folder.Path(), "it must be a readable file."},
      {"/dev/zero", "it must be a readable file."},
      {folder.Write("empty.so", ""), "it must be a shared library for this machine."},
      {folder.Write("text.so", std::string(5000, 'x')),
       "it must be a shared library for this machine."},
      {"/proc/self/exe", "; it must be built for this application."},
      {TUV_PLUGINS "/libunresolved.so",
       "undefined symbol: _Z23MissingFromEveryLibraryv; it must be built for this application."},
      {TUV_PLUGINS "/libfuture.so",
       "it was built for libTuvHost.so.9.9 and this application has libTuvHost.so." + OwnVersion() +
           "; use the library of the application's version."},
  };
  for (const auto& [file, reason] : cases) {
    const std::string refusal = Refusal(file);
    EXPECT_THAT(refusal,
                testing::StartsWith("The library " + file.string() + " cannot be loaded: "));
    EXPECT_THAT(refusal, testing::EndsWith(reason));
  }
  for (const char* const name : {"libunresolved.so", "libTuvHost.so.9.9"}) {
    EXPECT_FALSE(tests::IsMapped(name)) << name;
  }
  EXPECT_THAT(Refusal(TUV_PLUGINS "/libpinned.so"), HasSubstr("forbids unloading"));
}

// The system's loader would read past the end of the file, which ends the process.
TEST_F(LibraryFileTest, ALibraryThatIsCutShortNeverEndsTheProcess) {
  std::ifstream whole(TUV_LIBRARY, std::ios::binary);
  const std::string bytes{std::istreambuf_iterator<char>(whole), {}};
  int refused = 0;
  for (std::size_t size = 0; size < bytes.size(); size += size < 100 ? 7 : bytes.size() / 12) {
    refused += !Refusal(folder.Write("cut.so", bytes.substr(0, size))).empty();
  }
  EXPECT_GE(refused, 15);
  EXPECT_EQ(Refusal(folder.Write("cut.so", bytes)), "");
}

}  // namespace
