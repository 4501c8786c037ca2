#include "embedded/dialog/InstalledCatalogs.h"

#include <dlfcn.h>

namespace embedded {

std::filesystem::path InstalledCatalogs() {
  Dl_info place{};
  if (!dladdr(reinterpret_cast<const void*>(&InstalledCatalogs), &place)) return {};
  std::error_code error;
  const auto file = std::filesystem::canonical(place.dli_fname, error);
  // From the library's folder up, as far as an installation of several architectures is deep.
  std::filesystem::path folder = file.parent_path();
  for (int i = 0; !error && i < 4; ++i, folder = folder.parent_path()) {
    for (const char* const catalogs : {"share/TuvKelBIWUtils/catalogs", "resources/catalogs"}) {
      if (std::filesystem::is_directory(folder / catalogs, error)) return folder / catalogs;
      error.clear();
    }
  }
  return {};
}

}  // namespace embedded
