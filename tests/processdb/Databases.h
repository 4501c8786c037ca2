#pragma once

#include <filesystem>
#include <memory>
#include <string>

#include "embedded/processdb/ProcessDatabase.h"
#include "tests/support/ScratchFolder.h"

namespace tests {

// Writes the lists of a small plant, with an entry of every kind, as many hands would write them.
void WriteLists(const ScratchFolder& folder);

// Changes a database as another program would. Answers what SQLite has against it.
std::string ChangeAsOthers(const std::filesystem::path& file, const std::string& statements);

// What the objects of a list are called; gives the objects back and deletes the list.
std::string Identifiers(embedded::ProcessDatabase& database, ZefListPtrIUnknown* list);

// Everything that a database answers about the small plant, in one text.
std::string Story(embedded::ProcessDatabase& database);

// The story of a database that was filled from the lists.
constexpr char kWholeStory[] =
    "LINE 'The LINE' base LINE below [] versions []\n"
    "CELL 'The CELL' base CELL below [ LINE] versions [ CELL-2 CELL]\n"
    "CELL-2 'The CELL-2' base CELL-2 below [] versions []\n"
    "TASK 'The TASK' base TASK below [ NÖTE CELL LINE] versions []\n"
    "NÖTE '' base none below [] versions []\n"
    "OP10 in TASK, OP20 in none\n"
    "SW-1 assigned [ TASK CELL] versions[ LINE CELL-2][][ TASK]\n"
    "SW-2 not assigned [] versions\n";

}  // namespace tests
