#include "planner/check/PartConstraint.h"

#include "host/values/Each.h"
#include "planner/check/LoadedParts.h"

namespace biwplan {

namespace {

// Of such welds one part that is loaded suffices.
constexpr char kLenient[] = "endo";

bool IsLenient(TuvIBIWFastener& weld) {
  ZefUnicodeString type;
  weld.GetFastenerType(type);
  return type == kLenient;
}

}  // namespace

std::vector<LackingParts> KeptOffByParts(embedded::Document& iDocument,
                                         embedded::Activity& iActivity,
                                         const ZefListValZefBaseUnknown_var& iWelds) {
  std::vector<LackingParts> keptOff;
  if (!iDocument.settings.partLoadConstraint) return keptOff;
  std::vector<LoadedQuestion> questions;
  for (const auto& weld : Each<TuvIBIWFastener>(iWelds)) {
    ZefListValZefBaseUnknown_var joined;
    weld->GetJointedParts(joined);
    for (const auto& part : Each<ZefBaseUnknown>(joined)) {
      questions.push_back({&iActivity, part.Get()});
    }
  }
  const std::vector<bool> isLoaded = AreLoaded(iDocument, questions);
  std::size_t next = 0;
  for (const auto& weld : Each<TuvIBIWFastener>(iWelds)) {
    ZefListValZefBaseUnknown_var joined;
    weld->GetJointedParts(joined);
    LackingParts lacking{ZefBaseUnknown_var(weld), {}};
    for (const auto& part : Each<ZefBaseUnknown>(joined)) {
      if (!isLoaded[next++]) lacking.parts.Append(part);
    }
    const bool hasSome = lacking.parts.Size() < joined.Size();
    const bool hasAll = hasSome && lacking.parts.Size() == 0;
    if (!(IsLenient(*weld) ? hasSome : hasAll)) keptOff.push_back(std::move(lacking));
  }
  return keptOff;
}

}  // namespace biwplan
