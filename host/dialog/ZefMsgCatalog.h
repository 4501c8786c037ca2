#pragma once

#include <map>
#include <string>

#include "host/values/ZefUnicodeString.h"

// A message of a catalog.
class ZefMsg {
 public:
  explicit ZefMsg(std::string iText = {}) : text_(std::move(iText)) {}
  // The text with "%1" to "%9" replaced by the parameters, as far as there are any.
  ZefUnicodeString BuildMessage(const ZefUnicodeString* iParameters = nullptr,
                                int iCount = 0) const;

 private:
  std::string text_;
};

// Messages by key, from the application's resources in the user's language.
class ZefMsgCatalog {
 public:
  // Non-zero when the catalog was found. `iFlag` is 0.
  int LoadMsgCatalog(const char* iName, int iFlag);
  // Empty for a missing key; null before a catalog was loaded. Lives as long as the catalog.
  ZefMsg* GetCatalogMsg(const char* iKey);

  // The message, or the default text when the catalog or the key is missing.
  static ZefUnicodeString BuildMessage(const char* iCatalog, const char* iKey,
                                       const ZefUnicodeString* iParameters, int iCount,
                                       const char* iDefault);

 private:
  std::string name_;
  std::map<std::string, ZefMsg> messages_;
};
