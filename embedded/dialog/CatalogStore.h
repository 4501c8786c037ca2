#pragma once

#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "embedded/dialog/CatalogFile.h"

namespace embedded {

// The message catalogs of the application: files <name>.<language>.txt in a list of folders. What
// the user's language lacks is taken from English. Files are read once, when they are first needed.
class CatalogStore {
 public:
  // The folders are searched in the order in which they were added.
  void AddFolder(const std::filesystem::path& iFolder);
  // The folder that is searched after all of them; empty for none.
  void FallBackTo(const std::filesystem::path& iFolder);
  // "en", "de", "pt-BR"; InputError for what cannot be part of a file name.
  void SetLanguage(const std::string& iLanguage);
  const std::string& Language() const { return language_; }

  // False when there is no usable file in either language.
  bool Has(const std::string& iCatalog);
  // Null when the catalog or the key is missing; valid until the folders or the language change.
  const std::string* Find(const std::string& iCatalog, const std::string& iKey);

  // Says what the look-ups pass over in silence: InputError when a file of the catalog, in either
  // language, cannot be read or understood, or when there is none at all.
  void Check(const std::string& iCatalog) const;

 private:
  std::filesystem::path Locate(const std::string& catalog, const std::string& language) const;
  const Catalog* Load(const std::string& catalog, const std::string& language);

  std::vector<std::filesystem::path> folders_;
  std::filesystem::path last_;
  std::string language_ = "en";
  // By catalog and language; nothing for one that is missing or malformed.
  std::map<std::pair<std::string, std::string>, std::optional<Catalog>> loaded_;
};

}  // namespace embedded
