#include "planner/Resources.h"

#include <cstdlib>

#include "embedded/dialog/CatalogStore.h"

namespace biwplan {

namespace {

namespace fs = std::filesystem;

fs::path GivenFolder() {
  const char* const given = std::getenv("TUV_RESOURCES");
  return given ? given : "";
}

fs::path FindBesideProgram(const fs::path& iName) {
  std::error_code error;
  const fs::path program = fs::read_symlink("/proc/self/exe", error);
  for (fs::path folder = program.parent_path(); folder.has_relative_path();
       folder = folder.parent_path()) {
    for (const char* const place : {"share/TuvKelBIWUtils", "resources"}) {
      if (fs::exists(folder / place / iName, error)) return folder / place / iName;
    }
  }
  return {};
}

}  // namespace

fs::path FindResource(const fs::path& iName) {
  std::error_code error;
  const fs::path given = GivenFolder();
  if (!given.empty() && fs::exists(given / iName, error)) return given / iName;
  return FindBesideProgram(iName);
}

void AddResources(embedded::CatalogStore& ioCatalogs) {
  const fs::path given = GivenFolder();
  if (!given.empty()) ioCatalogs.AddFolder(given / "catalogs");
  const fs::path found = FindBesideProgram("catalogs");
  if (!found.empty()) ioCatalogs.AddFolder(found);
}

}  // namespace biwplan
