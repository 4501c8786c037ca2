#pragma once

#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <string>
#include <unistd.h>

#include "embedded/Error.h"

namespace tests {

// A folder of files for the length of one test or fuzzed input, of one of the runs that may go on
// at a time.
class ScratchFolder {
 public:
  ScratchFolder() {
    const auto* const test = testing::UnitTest::GetInstance()->current_test_info();
    const std::string name =
        test ? std::string(test->test_suite_name()) + "." + test->name() : "untested";
    path_ = std::filesystem::path(testing::TempDir()) / (name + "." + std::to_string(getpid()));
    std::filesystem::create_directories(path_);
  }
  ~ScratchFolder() { std::filesystem::remove_all(path_); }
  ScratchFolder(const ScratchFolder&) = delete;
  ScratchFolder& operator=(const ScratchFolder&) = delete;

  const std::filesystem::path& Path() const { return path_; }
  std::filesystem::path Write(const std::string& name, const std::string& bytes) const {
    std::filesystem::create_directories((path_ / name).parent_path());
    std::ofstream(path_ / name, std::ios::binary) << bytes;
    return path_ / name;
  }

 private:
  std::filesystem::path path_;
};

inline std::string BytesOf(const std::filesystem::path& file) {
  std::ifstream stream(file, std::ios::binary);
  return {std::istreambuf_iterator<char>(stream), {}};
}

// The files and folders directly in a folder.
inline long CountFiles(const std::filesystem::path& folder) {
  using Iterator = std::filesystem::directory_iterator;
  return std::distance(Iterator(folder), Iterator());
}

// What the error says, or nothing when there is none.
template <class Action>
std::string ErrorOf(const Action& action) {
  try {
    action();
  } catch (const embedded::InputError& error) {
    return error.what();
  }
  return "";
}

}  // namespace tests
