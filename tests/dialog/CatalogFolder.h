#pragma once

#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <string>

// A folder of catalog files for the length of one test.
class CatalogFolder {
 public:
  CatalogFolder() {
    const auto* const test = testing::UnitTest::GetInstance()->current_test_info();
    path_ = std::filesystem::path(testing::TempDir()) /
            (std::string(test->test_suite_name()) + "." + test->name());
    std::filesystem::create_directories(path_);
  }
  ~CatalogFolder() { std::filesystem::remove_all(path_); }
  CatalogFolder(const CatalogFolder&) = delete;
  CatalogFolder& operator=(const CatalogFolder&) = delete;

  const std::filesystem::path& Path() const { return path_; }
  std::filesystem::path Write(const std::string& name, const std::string& bytes) const {
    std::ofstream(path_ / name, std::ios::binary) << bytes;
    return path_ / name;
  }

 private:
  std::filesystem::path path_;
};
