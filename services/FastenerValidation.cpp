#include <optional>
#include <utility>
#include <vector>

#include "frame/Trace.h"
#include "host/component/ZefMetaClass.h"
#include "host/document/ZefILinkableObject.h"
#include "host/fastening/TuvIBIWFeatureContainer.h"
#include "host/fastening/TuvKelBIWSettingsServices.h"
#include "host/processdb/ProcessDb.h"
#include "host/values/Each.h"
#include "services/ActivityTree.h"
#include "services/LoadedOnce.h"
#include "services/TuvBIWServices.h"
#include "services/UnknownList.h"

namespace {

// How the joined parts are held against the loaded ones; see CompareTwoLists.
enum Comparison { kAllLoaded = 1, kAnyLoaded = 2 };

ZefListValZefBaseUnknown_var JoinedParts(TuvIBIWFastener& fastener) {
  ZefListValZefBaseUnknown_var parts;
  fastener.GetJointedParts(parts);
  return parts;
}

bool ArePartsAmong(const ZefListValZefBaseUnknown_var& loaded, TuvIBIWFastener& fastener) {
  const ZefListValZefBaseUnknown_var joined = JoinedParts(fastener);
  ZefUnicodeString type;
  fastener.GetFastenerType(type);
  // Texts that are equal compare as 1.
  const bool isEndo = type.Compare("endo") != 0;
  const Comparison comparison = isEndo ? kAnyLoaded : kAllLoaded;
  return TuvBIWServices::CompareTwoLists(loaded, joined, comparison) != 0;
}

// One new list costs less than many removals from a long one.
void RemoveInvalid(const ZefListValZefBaseUnknown_var& loaded,
                   ZefListValZefBaseUnknown_var& ioFasteners) {
  ZefListValZefBaseUnknown_var kept;
  for (int i = 1; i <= ioFasteners.Size(); ++i) {
    const ZefBaseUnknown_var element = ioFasteners[i];
    const TuvIBIWFastener_var fastener = element;
    if (!fastener || ArePartsAmong(loaded, *fastener)) kept.Append(element);
  }
  ioFasteners = std::move(kept);
}

// Whether the process database manages the document; nothing when the document has no environment
// to ask.
std::optional<bool> IsManaged(ZefDocument& document) {
  ZefBaseUnknown_var environment;
  document.GetDocEnvironment(environment.Put());
  if (!environment) return {};
  const ZefBaseUnknown* const implementation = environment->GetImpl(0);
  return implementation && implementation->IsAKindOf("IPDDocEnv");
}

// The database object of the activity or else of the nearest one above it.
Handle<IUnknown> FindDatabaseObject(ZefISPPActivity_var activity, ZefIIPDAdapter& adapter) {
  Handle<IUnknown> object;
  while (activity && Failed(adapter.GetIPDObject(activity, object.Put()))) {
    activity = ParentOf(activity);
    object = nullptr;
  }
  return object;
}

// The identifier lists of a fastener's process versions. Entries may be null.
class VersionLists {
 public:
  VersionLists() = default;
  ~VersionLists() {
    for (int i = 1; i <= lists_.Size(); ++i) delete lists_[i];
  }
  VersionLists(const VersionLists&) = delete;
  VersionLists& operator=(const VersionLists&) = delete;

  void Read(ZefDocument* document, const TuvIBIWFastener_var& fastener) {
    const TuvIBIWFeatureContainer_var container =
        TuvBIWServices::GetFeatContainerFromDocument(document);
    if (container) container->ListProcessVersionIDs(TuvIBIWFeature_var(fastener), lists_);
  }

  int Size() const { return lists_.Size(); }
  const ZefListValZefUnicodeString* operator[](int position) const { return lists_[position]; }

 private:
  ZefListPtrZefListValZefUnicodeString lists_;
};

enum class Verdict { Compatible, RelatedVersion, Invalid };

// Judges version lists against the chain of an activity's process, from the root down.
class VersionCheck {
 public:
  VersionCheck(const ZefListValZefUnicodeString& chain, ZefIIPDAdapter& adapter,
               ZefIIPDVersionMgt& versions)
      : chain_(chain),
        adapter_(adapter),
        versions_(versions),
        related_(static_cast<std::size_t>(chain.Size())) {}

  // A list that shares the whole chain, or lies within it, is compatible. Of another one the first
  // identifier that differs must be of a version related to the chain's.
  Verdict Judge(const ZefListValZefUnicodeString& list) {
    ZefListValZefUnicodeString common;
    ZefListValZefUnicodeString::Intersection(chain_, list, common);
    if (common.Size() == chain_.Size() || common.Size() == list.Size()) return Verdict::Compatible;
    const int differing = common.Size() + 1;
    const auto* const related = RelatedTo(chain_[differing]);
    const bool isRelated = related && related->Locate(list[differing], 1) != 0;
    return isRelated ? Verdict::RelatedVersion : Verdict::Invalid;
  }

 private:
  // The identifiers of the related versions, asked for once; null while the database does not know
  // the object.
  const ZefListValZefUnicodeString* RelatedTo(const ZefUnicodeString& identifier) {
    auto& entry = related_[static_cast<std::size_t>(chain_.Locate(identifier, 1) - 1)];
    if (!entry) entry = AskFor(identifier);
    return entry ? &*entry : nullptr;
  }

  std::optional<ZefListValZefUnicodeString> AskFor(const ZefUnicodeString& identifier) {
    Handle<IUnknown> object;
    if (Failed(adapter_.GetObjectFromID(identifier, object.Put())) || !object) return {};
    ZefListPtrIUnknown* answer = nullptr;
    versions_.ListRelatedVersions(object, answer);
    const UnknownList related(answer);
    ZefListValZefUnicodeString identifiers;
    for (int i = 1; related && i <= related->Size(); ++i) {
      IUnknown* const version = (*related)[i];
      ZefUnicodeString name;
      if (version && Succeeded(adapter_.GetObjectID(version, name))) identifiers.Append(name);
    }
    return identifiers;
  }

  const ZefListValZefUnicodeString& chain_;
  ZefIIPDAdapter& adapter_;
  ZefIIPDVersionMgt& versions_;
  // By position in the chain.
  std::vector<std::optional<ZefListValZefUnicodeString>> related_;
};

bool AreValid(const VersionLists& lists, VersionCheck check) {
  if (lists.Size() == 0) return true;
  bool valid = false;
  for (int i = 1; i <= lists.Size(); ++i) {
    if (!lists[i]) continue;
    const Verdict verdict = check.Judge(*lists[i]);
    if (verdict == Verdict::Invalid) return false;
    valid = valid || verdict == Verdict::RelatedVersion;
  }
  return valid;
}

}  // namespace

HRESULT TuvBIWServices::KoraWeldJointedPartsInList(TuvIBIWFastener* iWeld,
                                                   ZefListValZefBaseUnknown_var* iParts) {
  if (!iWeld || !iParts) return E_FAIL;
  for (const auto& part : Each<ZefBaseUnknown>(JoinedParts(*iWeld))) {
    if (iParts->Locate(part, 1) == 0) return E_FAIL;
  }
  return S_OK;
}

void TuvBIWServices::ValidateListOfFastenersForAssignmentToActivity(
    ZefListValZefBaseUnknown_var& ioFasteners, ZefISPPActivity_var iActivity) {
  unsigned char constrained = 0;
  TuvKelBIWSettingsServices::GetPartLoadConstraint(constrained);
  if (!constrained) return;
  ZefListValZefBaseUnknown_var loaded;
  ZefListValZefBaseUnknown_var* parts = &loaded;
  // Only what is in the list matters, unless somebody reads the lines, which tell of every path.
  (TuvKelBIWUtilsTrace.IsHeard() ? GetLoadedParts : AppendLoadedOnce)(iActivity, parts);
  if (loaded.Size() == 0) ioFasteners.RemoveAll();
  RemoveInvalid(loaded, ioFasteners);
}

int TuvBIWServices::IsValidProcessVersion(const ZefISPPActivity_var& iActivity,
                                          TuvIBIWFastener_var& iFastener) {
  if (!iActivity || !iFastener) return 0;
  const ZefILinkableObject_var linkable = iFastener;
  ZefDocument* const document = linkable ? linkable->GetDocument() : nullptr;
  const std::optional<bool> managed = document ? IsManaged(*document) : std::nullopt;
  if (!managed) return 0;
  if (!*managed) return 1;
  const ZefIIPDAdapter_var adapter = document;
  const ZefIIPDVersionMgt_var versions = document;
  if (!adapter || !versions) return 0;
  const Handle<IUnknown> object = FindDatabaseObject(iActivity, *adapter);
  if (!object) return 0;
  ZefListValZefUnicodeString chain;
  GetListPaskObjectIDsTillRoot(object, adapter, chain);
  if (chain.Size() == 0) return 0;
  VersionLists lists;
  lists.Read(document, iFastener);
  return AreValid(lists, VersionCheck(chain, *adapter, *versions));
}
