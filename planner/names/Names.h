#pragma once

#include <string>
#include <vector>

#include "embedded/model/Document.h"
#include "host/values/ZefListValZefBaseUnknown_var.h"

namespace biwplan {

// Finds a document's objects by the names that the user gives. InputError with the nearest names
// for one that is not there, and for one that several objects have. The document outlives it.
class Names {
 public:
  explicit Names(const embedded::Document& iDocument) : document_(iDocument) {}

  // By key or, where no key fits, by label.
  embedded::Activity& ActivityOf(const std::string& iName) const;
  // By key, part number or name.
  embedded::Product& PartOf(const std::string& iName) const;
  // A weld, a locating point or a clamping point by key.
  ZefBaseUnknown_var FeatureOf(const std::string& iName) const;
  ZefBaseUnknown_var WeldOf(const std::string& iName) const;

  // The welds that the words name, each once, in the words' order. A word is a weld, a pattern with
  // * and ?, or FIRST..LAST for the welds from one to the other in the document's order.
  ZefListValZefBaseUnknown_var Welds(const std::vector<std::string>& iWords) const;
  ZefListValZefBaseUnknown_var AllWelds() const;

 private:
  void AppendWelds(const std::string& word, ZefListValZefBaseUnknown_var& ioWelds) const;
  bool AppendRange(const std::string& word, ZefListValZefBaseUnknown_var& ioWelds) const;
  bool AppendMatches(const std::string& pattern, ZefListValZefBaseUnknown_var& ioWelds) const;
  [[noreturn]] void RefuseWeld(const std::string& name) const;

  const embedded::Document& document_;
};

// The name under which an object is shown and found again.
std::string NameOf(const ZefBaseUnknown_var& iObject);
std::vector<std::string> NamesOf(const ZefListValZefBaseUnknown_var* iObjects);

// * stands for any characters, ? for one.
bool MatchesPattern(std::string_view iText, std::string_view iPattern);

}  // namespace biwplan
