#include "embedded/dialog/CatalogStore.h"

#include <algorithm>

#include "embedded/Error.h"

namespace embedded {

namespace {

constexpr char kFallback[] = "en";

bool IsLetterOrHyphen(char c) {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '-' || c == '_';
}

}  // namespace

void CatalogStore::AddFolder(const std::filesystem::path& iFolder) {
  folders_.push_back(iFolder);
  loaded_.clear();
}

void CatalogStore::FallBackTo(const std::filesystem::path& iFolder) {
  last_ = iFolder;
  loaded_.clear();
}

void CatalogStore::SetLanguage(const std::string& iLanguage) {
  const bool isName = std::all_of(iLanguage.begin(), iLanguage.end(), IsLetterOrHyphen);
  if (!isName || iLanguage.empty() || iLanguage.size() > 16) {
    throw InputError("The language \"" + iLanguage.substr(0, 40) +
                     "\" is not one: a language is a short code of letters, such as en or de.");
  }
  language_ = iLanguage;
  loaded_.clear();
}

bool CatalogStore::Has(const std::string& iCatalog) {
  return Load(iCatalog, language_) || Load(iCatalog, kFallback);
}

const std::string* CatalogStore::Find(const std::string& iCatalog, const std::string& iKey) {
  for (const std::string& language : {language_, std::string(kFallback)}) {
    const Catalog* const catalog = Load(iCatalog, language);
    if (!catalog) continue;
    const auto found = catalog->find(iKey);
    if (found != catalog->end()) return &found->second;
  }
  return nullptr;
}

void CatalogStore::Check(const std::string& iCatalog) const {
  bool found = false;
  for (const std::string& language : {language_, std::string(kFallback)}) {
    const std::filesystem::path file = Locate(iCatalog, language);
    if (file.empty()) continue;
    ReadCatalogFile(file);
    found = true;
  }
  if (found) return;
  throw InputError("There is no message catalog \"" + iCatalog + "\": a file " + iCatalog + "." +
                   kFallback + ".txt must stand in one of the resource folders.");
}

std::filesystem::path CatalogStore::Locate(const std::string& catalog,
                                           const std::string& language) const {
  const std::string name = catalog + "." + language + ".txt";
  std::error_code error;
  for (const std::filesystem::path& folder : folders_) {
    if (std::filesystem::exists(folder / name, error)) return folder / name;
  }
  const bool isLast = !last_.empty() && std::filesystem::exists(last_ / name, error);
  return isLast ? last_ / name : std::filesystem::path();
}

const Catalog* CatalogStore::Load(const std::string& catalog, const std::string& language) {
  const auto [entry, isNew] = loaded_.try_emplace({catalog, language});
  std::optional<Catalog>& loaded = entry->second;
  if (isNew) {
    const std::filesystem::path file = Locate(catalog, language);
    try {
      if (!file.empty()) loaded = ReadCatalogFile(file);
    } catch (const InputError&) {
      // The planner is asked in the middle of a plan: a message without its text is better than
      // none. Check reports the file.
    }
  }
  return loaded ? &*loaded : nullptr;
}

}  // namespace embedded
