#include "planner/names/Names.h"

#include "embedded/Error.h"
#include "host/fastening/TuvIBIWFastener.h"
#include "host/values/Each.h"
#include "planner/import/RowFault.h"
#include "planner/names/Nearest.h"
#include "services/TuvBIWServices.h"

namespace biwplan {

namespace {

constexpr std::string_view kRange = "..";

[[noreturn]] void RefuseAmbiguous(const std::string& kind, const std::string& name,
                                  const std::vector<std::string>& keys) {
  std::string some;
  for (std::size_t i = 0; i < keys.size() && i < 3; ++i) some += (i == 0 ? "" : ", ") + keys[i];
  throw embedded::InputError(std::to_string(keys.size()) + " " + kind + " are called " +
                             Quoted(name) + "; name one of them by its key: " + some);
}

bool IsWeld(const ZefBaseUnknown_var& feature) {
  return static_cast<bool>(TuvIBIWFastener_var(feature));
}

void AppendOnce(const ZefBaseUnknown_var& weld, ZefListValZefBaseUnknown_var& ioWelds) {
  if (ioWelds.Locate(weld) == 0) ioWelds.Append(weld);
}

}  // namespace

embedded::Activity& Names::ActivityOf(const std::string& iName) const {
  if (embedded::Activity* const activity = document_.FindActivity(iName)) return *activity;
  embedded::Activity* found = nullptr;
  std::vector<std::string> keys;
  NearestNames nearest(iName);
  for (const auto& activity : document_.Activities()) {
    nearest.Offer(activity->Data().key);
    if (activity->Data().label != iName) continue;
    found = activity.Get();
    keys.push_back(activity->Data().key);
  }
  if (keys.size() > 1) RefuseAmbiguous("activities", iName, keys);
  if (found) return *found;
  throw embedded::InputError("there is no activity " + Quoted(iName) + nearest.Hint() +
                             "; 'activities' lists them");
}

embedded::Product& Names::PartOf(const std::string& iName) const {
  if (embedded::Product* const part = document_.FindProduct(iName)) return *part;
  embedded::Product* found = nullptr;
  std::vector<std::string> keys;
  NearestNames nearest(iName);
  for (const auto& part : document_.Products()) {
    const embedded::ProductData& data = part->Data();
    nearest.Offer(data.key);
    if (!data.name.empty()) nearest.Offer(data.name);
    if (data.name != iName && data.partNumber != iName) continue;
    found = part.Get();
    keys.push_back(data.key);
  }
  if (keys.size() > 1) RefuseAmbiguous("parts", iName, keys);
  if (found) return *found;
  throw embedded::InputError("there is no part " + Quoted(iName) + nearest.Hint() +
                             "; 'parts' lists them");
}

ZefBaseUnknown_var Names::FeatureOf(const std::string& iName) const {
  return document_.FindFeature(iName);
}

ZefBaseUnknown_var Names::WeldOf(const std::string& iName) const {
  const ZefBaseUnknown_var feature = FeatureOf(iName);
  if (!IsWeld(feature)) RefuseWeld(iName);
  return feature;
}

ZefListValZefBaseUnknown_var Names::Welds(const std::vector<std::string>& iWords) const {
  ZefListValZefBaseUnknown_var welds;
  for (const std::string& word : iWords) AppendWelds(word, welds);
  return welds;
}

ZefListValZefBaseUnknown_var Names::AllWelds() const { return Welds({"*"}); }

void Names::AppendWelds(const std::string& word, ZefListValZefBaseUnknown_var& ioWelds) const {
  const ZefBaseUnknown_var feature = FeatureOf(word);
  if (IsWeld(feature)) return AppendOnce(feature, ioWelds);
  const bool isPattern = word.find_first_of("*?") != std::string::npos;
  const bool isFound = isPattern ? AppendMatches(word, ioWelds) : AppendRange(word, ioWelds);
  if (isFound || word == "*") return;
  if (isPattern) throw embedded::InputError("no weld's name is like " + Quoted(word));
  RefuseWeld(word);
}

bool Names::AppendRange(const std::string& word, ZefListValZefBaseUnknown_var& ioWelds) const {
  const std::size_t middle = word.find(kRange);
  if (middle == std::string::npos) return false;
  const ZefBaseUnknown_var first = WeldOf(word.substr(0, middle));
  const ZefBaseUnknown_var last = WeldOf(word.substr(middle + kRange.size()));
  bool isInside = false;
  for (const ZefBaseUnknown_var& feature : document_.Features()) {
    isInside = isInside || feature == first;
    if (isInside && IsWeld(feature)) AppendOnce(feature, ioWelds);
    if (isInside && feature == last) return true;
  }
  throw embedded::InputError("in " + Quoted(word) + " the second weld stands before the first; " +
                             "'welds' shows their order");
}

bool Names::AppendMatches(const std::string& pattern, ZefListValZefBaseUnknown_var& ioWelds) const {
  bool isFound = false;
  for (const ZefBaseUnknown_var& feature : document_.Features()) {
    if (!IsWeld(feature) || !MatchesPattern(NameOf(feature), pattern)) continue;
    AppendOnce(feature, ioWelds);
    isFound = true;
  }
  return isFound;
}

void Names::RefuseWeld(const std::string& name) const {
  NearestNames nearest(name);
  for (const ZefBaseUnknown_var& feature : document_.Features()) {
    if (IsWeld(feature)) nearest.Offer(NameOf(feature));
  }
  throw embedded::InputError("there is no weld " + Quoted(name) + nearest.Hint() +
                             "; 'welds' lists them");
}

std::string NameOf(const ZefBaseUnknown_var& iObject) {
  return TuvBIWServices::GetWeldID(iObject).Bytes();
}

std::vector<std::string> NamesOf(const ZefListValZefBaseUnknown_var* iObjects) {
  std::vector<std::string> names;
  for (const auto& object : Each<ZefBaseUnknown>(iObjects)) names.push_back(NameOf(object));
  return names;
}

bool MatchesPattern(std::string_view iText, std::string_view iPattern) {
  std::size_t text = 0;
  std::size_t pattern = 0;
  std::size_t star = std::string_view::npos;
  std::size_t resume = 0;
  while (text < iText.size()) {
    const bool isStar = pattern < iPattern.size() && iPattern[pattern] == '*';
    const bool fits =
        pattern < iPattern.size() && (iPattern[pattern] == '?' || iPattern[pattern] == iText[text]);
    if (isStar) {
      star = pattern++;
      resume = text;
    } else if (fits) {
      ++text;
      ++pattern;
    } else if (star != std::string_view::npos) {
      pattern = star + 1;
      text = ++resume;
    } else {
      return false;
    }
  }
  return iPattern.find_first_not_of('*', pattern) == std::string_view::npos;
}

}  // namespace biwplan
