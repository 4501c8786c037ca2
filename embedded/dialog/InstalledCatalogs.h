#pragma once

#include <filesystem>

namespace embedded {

// The folder of message catalogs that belongs to the library, or to the program that holds it:
// share/TuvKelBIWUtils/catalogs of its installation, or resources/catalogs beside its build. Empty
// when there is none.
std::filesystem::path InstalledCatalogs();

}  // namespace embedded
