#pragma once

#include <cstddef>
#include <filesystem>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "embedded/storage/FileLock.h"

namespace embedded {

// The bytes of a file. InputError for what cannot be read, is no ordinary file or is larger.
std::string ReadWholeFile(const std::filesystem::path& iFile, std::size_t iMaxBytes);

struct Replacement {
  // Asked when the new file is ready to take the place; what it throws leaves the former one.
  std::function<void()> approve = {};
  // InputError when a file is there.
  bool onlyIfFree = false;
  // Goes over to the new file without a gap. May be null.
  FileLock* lock = nullptr;
};

// Gives the file new bytes, all of them or none: they are written and flushed beside it and then
// take its place. Its owner, rights and attributes are kept where that is permitted, symbolic links
// are followed. InputError when it fails, which leaves the former file and nothing else. Answers
// in sentences what the user should know: what was not kept, and whether a loss of power may
// still undo it.
std::vector<std::string> ReplaceFile(const std::filesystem::path& iFile, std::string_view iBytes,
                                     const Replacement& iHow = {});

// Where symbolic links lead from a path, whether or not there is a file.
std::filesystem::path FollowLinks(const std::filesystem::path& iFile);

}  // namespace embedded
