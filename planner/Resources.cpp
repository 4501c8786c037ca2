#include "planner/Resources.h"

#include <cstdlib>
#include <filesystem>

#include "embedded/dialog/CatalogStore.h"

namespace biwplan {

namespace {

namespace fs = std::filesystem;

fs::path FindBesideProgram() {
  std::error_code error;
  const fs::path program = fs::read_symlink("/proc/self/exe", error);
  for (fs::path folder = program.parent_path(); folder.has_relative_path();
       folder = folder.parent_path()) {
    for (const char* const place : {"share/TuvKelBIWUtils/catalogs", "resources/catalogs"}) {
      if (fs::is_directory(folder / place, error)) return folder / place;
    }
  }
  return {};
}

}  // namespace

void AddResources(embedded::CatalogStore& ioCatalogs) {
  const char* const given = std::getenv("TUV_RESOURCES");
  if (given && *given) ioCatalogs.AddFolder(fs::path(given) / "catalogs");
  const fs::path found = FindBesideProgram();
  if (!found.empty()) ioCatalogs.AddFolder(found);
}

}  // namespace biwplan
