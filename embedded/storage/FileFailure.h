#pragma once

#include <filesystem>
#include <string>

namespace embedded {

// InputError with the reason that errno has: "FILE: the file WHAT (REASON); REMEDY".
[[noreturn]] void FailOnFile(const std::filesystem::path& iFile, const char* iWhat,
                             const std::string& iRemedy);
[[noreturn]] void FailToSave(const std::filesystem::path& iFile);

}  // namespace embedded
