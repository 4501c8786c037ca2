#pragma once

#include <filesystem>
#include <string>

namespace embedded {

// InputError unless an ordinary file is there: opening a pipe would wait for whoever writes to it,
// and a device may never end. `iRemedy` ends the sentence: "name a CSV file".
void RequireOrdinaryFile(const std::filesystem::path& iFile, const std::string& iRemedy);

// The same for what SQLite reads beside a database, where that is there.
void RequireOrdinaryJournals(const std::filesystem::path& iDatabase);

}  // namespace embedded
