#pragma once

#include <cstddef>
#include <filesystem>
#include <string>
#include <string_view>

namespace embedded {

// The bytes of a file. InputError for what cannot be read, is no ordinary file or is larger.
std::string ReadWholeFile(const std::filesystem::path& iFile, std::size_t iMaxBytes);

// Gives the file new bytes, all of them or none: they are written and flushed beside it and then
// take its place. Permissions are kept, symbolic links are followed. InputError when that fails,
// which leaves the former file and nothing else.
void ReplaceFile(const std::filesystem::path& iFile, std::string_view iBytes);

// Where symbolic links lead from a path, whether or not there is a file.
std::filesystem::path FollowLinks(const std::filesystem::path& iFile);

}  // namespace embedded
