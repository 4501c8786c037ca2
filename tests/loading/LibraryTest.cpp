#include <cstdlib>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <optional>
#include <utility>

#include "embedded/Error.h"
#include "embedded/loading/LibraryLoader.h"
#include "embedded/model/Document.h"
#include "host/component/Callbacks.h"
#include "manufassly/TuvIUpdateManufAssly.h"
#include "tests/loading/MappedFiles.h"
#include "tests/support/ReferenceAudit.h"
#include "tests/support/TraceRecorder.h"
#include "visu/TuvBIWCustomRep.h"

namespace {

using embedded::Document;
using embedded::LibraryInUse;
using embedded::LibraryLoader;
using embedded::Owned;
using testing::ElementsAre;
using testing::HasSubstr;

constexpr char kLibrary[] = "libTuvKelBIWUtils.so";
constexpr char kTrace[] = "TuvKelBIWUtilsTrace";
constexpr char kFactory[] = "CreateBOATuvIUpdateManufAsslyTuvEUpdateManufAssly";

// The plug-in's classes are reached as the platform reaches them, through the dictionary: nothing
// of it is linked to this program.
class LibraryTest : public tests::ReferenceAudit {
 protected:
  void TearDown() override {
    library.reset();
    EXPECT_FALSE(tests::IsMapped(kLibrary));
    ReferenceAudit::TearDown();
  }
  std::string WhyInUse() {
    try {
      library->Unload();
    } catch (const LibraryInUse& error) {
      return error.what();
    }
    return {};
  }

  std::optional<LibraryLoader> library{TUV_LIBRARY};
};

Owned<Document> Process() { return embedded::MakeOwned<Document>(Document::Kind::Process); }

ZefBaseUnknown* AddActivity(Document& document, embedded::ActivityData::Kind kind) {
  return document.AddActivity(*document.Root(), {.key = "OP10", .kind = kind}).Identity();
}

TuvIUpdateManufAssly_var Update(Document& document) { return document.Root()->Identity(); }

// A weld's label, as the library's services make it.
Handle<Zef3DRep> MakeLabel(const LibraryLoader& library, ZefBaseUnknown* weld) {
  using Constructor = void(void*, ZefBaseUnknown*);
  auto* const construct =
      reinterpret_cast<Constructor*>(library.Find("_ZN15TuvBIWCustomRepC1EP14ZefBaseUnknown"));
  if (!construct) return {};
  void* const memory = ZefBaseUnknown::operator new(sizeof(TuvBIWCustomRep));
  construct(memory, weld);
  return Adopt(static_cast<Zef3DRep*>(memory));
}

TEST_F(LibraryTest, RegistersAtLoadWhatItOffers) {
  const ZefMetaClass* const update = FindInterface("TuvIUpdateManufAssly");
  const ZefMetaClass* const extension = FindMetaClass("TuvEUpdateManufAssly");
  const ZefMetaClass* const setup = FindInterface("TuvIBIWSetup");
  ASSERT_TRUE(update && extension && setup);
  EXPECT_EQ(update->GetKind(), TypeInterface);
  EXPECT_EQ(update->GetBase(), ZefBaseUnknown::MetaObject());
  EXPECT_EQ(extension->GetKind(), TypeExtension);
  EXPECT_EQ(extension->GetBase(), update);
  EXPECT_EQ(extension->GetExtendedType(), "PhysicalActivity");
  EXPECT_STREQ(extension->GetFWname(), "TuvKelBodyInWhiteUI");
  EXPECT_GE(extension->GetInstanceSize(), static_cast<int>(sizeof(ZefBaseUnknown)));
  EXPECT_EQ(setup->GetKind(), TypeInterface);
  EXPECT_EQ(setup->GetBase(), ZefBaseUnknown::MetaObject());
  EXPECT_STREQ(setup->GetFWname(), "TuvKelBodyInWhiteUI");
  const _GUID id{0x13727A5C, 0xF893, 0x11D4, {0x80, 0xCF, 0x00, 0x50, 0x04, 0x0C, 0xCF, 0xB4}};
  EXPECT_EQ(setup->GetClassId(), id);
  EXPECT_EQ(FindInterface(id), setup);
  const auto* const exported = static_cast<const _GUID*>(library->Find("IID_TuvIBIWSetup"));
  ASSERT_NE(exported, nullptr);
  EXPECT_EQ(*exported, id);
  EXPECT_TRUE(IsTraceRegistered(kTrace));
  EXPECT_FALSE(IsTraceOn(kTrace));
}

TEST_F(LibraryTest, ExtendsPhysicalActivitiesThroughItsFactoryAndNothingElse) {
  const auto process = Process();
  ZefBaseUnknown* const physical = AddActivity(*process, embedded::ActivityData::Kind::Physical);
  const _GUID& id = TuvIUpdateManufAssly::InterfaceId();
  const auto factory = FindExtensionFactory(physical->GetMetaObject(), id);
  EXPECT_EQ(reinterpret_cast<void*>(factory), library->Find(kFactory));
  for (const char* const other : {"LogicalActivity", "Product", "Zefnull", "ZefNull"}) {
    EXPECT_EQ(FindExtensionFactory(FindMetaClass(other), id), nullptr) << other;
  }
  const TuvIUpdateManufAssly_var update = physical;
  ASSERT_TRUE(update);
  EXPECT_EQ(update, physical);
  EXPECT_STREQ(update->IsA(), "TuvEUpdateManufAssly");
  EXPECT_EQ(update->IsAKindOf("TuvIUpdateManufAssly"), 1);
  EXPECT_EQ(TuvIUpdateManufAssly_var(physical).Get(), update.Get());
}

TEST_F(LibraryTest, DescribesAClassOfItsOwnOnFirstUseOnly) {
  const auto process = Process();
  const auto label = MakeLabel(*library, nullptr);
  ASSERT_TRUE(label);
  EXPECT_STREQ(label->IsA(), "TuvBIWCustomRep");
  const ZefMetaClass* const meta = FindMetaClass("TuvBIWCustomRep");
  ASSERT_NE(meta, nullptr);
  EXPECT_EQ(meta, label->GetMetaObject());
  EXPECT_EQ(meta->GetKind(), Implementation);
  EXPECT_STREQ(meta->GetBase()->GetClassName(), "Zef3DCustomRep");
  EXPECT_EQ(meta->GetExtendedType(), "Zefnull");
  EXPECT_STREQ(meta->GetFWname(), "TuvKelBodyInWhiteUI");
  EXPECT_EQ(meta->GetInstanceSize(), static_cast<int>(sizeof(TuvBIWCustomRep)));
}

TEST_F(LibraryTest, StaysWhileItsObjectsLiveAndNamesThem) {
  auto process = Process();
  embedded::SpotWeldData data;
  data.key = "W1";
  ZefBaseUnknown* const weld = process->AddSpotWeld(data).Identity();
  auto* const bag = dynamic_cast<Zef3DBagRep*>(ZefI3DGeoVisu_var(weld)->GetRep());
  ASSERT_NE(bag, nullptr);
  bag->AddChild(MakeLabel(*library, weld).Get());
  bag->AddChild(MakeLabel(*library, weld).Get());
  ASSERT_TRUE(Update(*process));
  EXPECT_THAT(WhyInUse(), HasSubstr("alive: TuvBIWCustomRep (2), TuvEUpdateManufAssly (1)."));
  // A refusal changes nothing.
  EXPECT_TRUE(library->IsLoaded());
  EXPECT_TRUE(TuvIUpdateManufAssly_var(AddActivity(*process, {})));
  {
    const tests::TraceRecorder trace(kTrace);
    bag->RemoveAllChildren();
    EXPECT_THAT(trace.Lines(), ElementsAre("TuvBIWCustomRep <-- OUT", "TuvBIWCustomRep <-- OUT"));
  }
  EXPECT_THAT(WhyInUse(), HasSubstr("alive: TuvEUpdateManufAssly (2)."));
  process = {};
  EXPECT_EQ(WhyInUse(), "");
  EXPECT_FALSE(library->IsLoaded());
  EXPECT_EQ(library->Find(kFactory), nullptr);
  EXPECT_NO_THROW(library->Unload());
}

TEST_F(LibraryTest, OutlivesALoaderThatGoesWhileItIsInUse) {
  EXPECT_EXIT(
      {
        const auto process = Process();
        const auto update = Update(*process);
        library.reset();
        std::_Exit(tests::IsMapped(kLibrary) && update->AddUpdateCallback() == S_OK ? 0 : 1);
      },
      testing::ExitedWithCode(0), "");
}

TEST_F(LibraryTest, LoadsAndUnloadsAHundredTimes) {
  library.reset();
  const ZefMetaClass* described = nullptr;
  for (int round = 1; round <= 100 && !HasFailure(); ++round) {
    SCOPED_TRACE(round);
    EXPECT_FALSE(tests::IsMapped(kLibrary));
    EXPECT_FALSE(IsTraceRegistered(kTrace));
    auto process = Process();
    EXPECT_FALSE(Update(*process)) << "a registration dangles";

    library.emplace(TUV_LIBRARY);
    EXPECT_TRUE(tests::IsMapped(kLibrary));
    EXPECT_TRUE(IsTraceRegistered(kTrace));
    const ZefMetaClass* const meta = FindMetaClass("TuvEUpdateManufAssly");
    EXPECT_EQ(std::exchange(described, meta), round == 1 ? nullptr : meta);
    const Handle<ZefSPPActivityNotificationDispatcher> dispatcher = process->Dispatcher();
    auto update = Update(*process);
    ASSERT_TRUE(update);
    EXPECT_EQ(update->AddUpdateCallback(), S_OK);
    EXPECT_EQ(update->AddWeldColorUpdateCallback(), S_OK);
    process->AddFlow(*process->Root(), *process->Root());
    EXPECT_EQ(update->RemoveUpdateCallback(), S_OK);
    EXPECT_NE(WhyInUse(), "");

    update = nullptr;
    process = {};
    EXPECT_EQ(CountCallbacks(), 1);
    library->Unload();
    EXPECT_EQ(CountCallbacks(), 0) << "a subscription dangles";
    Deliver(dispatcher, dispatcher->GetSPPViewsChange(), nullptr);
  }
}

}  // namespace
