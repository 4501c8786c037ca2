#pragma once

#include <filesystem>
#include <string>
#include <sys/stat.h>
#include <vector>

#include "embedded/storage/Descriptor.h"

namespace embedded {

// Gives a new file the owner, the group, the mode and the extended attributes, access lists among
// them, of the one that it is to replace, each as far as that is permitted. Whoever owned that one
// can still use the new one. Answers what could not be kept, in clauses such as "its group (2000)
// could not be kept".
std::vector<std::string> KeepRights(const Descriptor& iNew, const std::filesystem::path& iFormer,
                                    const struct stat& iStatus);

}  // namespace embedded
