#include <cstdlib>
#include <gmock/gmock.h>
#include <optional>
#include <utility>

#include "embedded/model/Document.h"
#include "host/component/Callbacks.h"
#include "host/loading/LibraryLoader.h"
#include "manufassly/TuvIUpdateManufAssly.h"
#include "tests/loading/MappedFiles.h"
#include "tests/support/ReferenceAudit.h"
#include "tests/support/TraceRecorder.h"
#include "visu/TuvBIWCustomRep.h"

namespace {

using embedded::Document;
using embedded::Owned;
using testing::HasSubstr;

constexpr char kLibrary[] = "libTuvKelBIWUtils.so";
constexpr char kTrace[] = "TuvKelBIWUtilsTrace";
constexpr char kFactory[] = "CreateBOATuvIUpdateManufAsslyTuvEUpdateManufAssly";

// The library's classes are reached as the platform reaches them, through the dictionary: nothing
// of it is linked to this program.
class LibraryTest : public tests::ReferenceAudit {
 protected:
  void TearDown() override {
    library.reset();
    EXPECT_FALSE(tests::IsMapped(kLibrary));
    ReferenceAudit::TearDown();
  }
  // Empty when the library was unloaded.
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

TuvIUpdateManufAssly_var Update(Document& document) { return document.Root()->Identity(); }

// A label of no weld.
Handle<Zef3DRep> MakeLabel(const LibraryLoader& library) {
  using Constructor = void(void*, ZefBaseUnknown*);
  auto* const construct =
      reinterpret_cast<Constructor*>(library.Find("_ZN15TuvBIWCustomRepC1EP14ZefBaseUnknown"));
  if (!construct) return {};
  void* const memory = ZefBaseUnknown::operator new(sizeof(TuvBIWCustomRep));
  construct(memory, nullptr);
  return Adopt(static_cast<Zef3DRep*>(memory));
}

TEST_F(LibraryTest, RegistersWhatItOffers) {
  for (const char* const drawn : {"TuvBIWCustomRep", "TuvBIWPreviewWindow"}) {
    EXPECT_EQ(FindMetaClass(drawn), nullptr) << drawn << " is described when it is first used";
  }
  const ZefMetaClass* const extension = FindMetaClass("TuvEUpdateManufAssly");
  ASSERT_NE(extension, nullptr);
  EXPECT_EQ(extension->GetKind(), TypeExtension);
  EXPECT_EQ(extension->GetBase(), FindInterface("TuvIUpdateManufAssly"));
  EXPECT_EQ(extension->GetExtendedType(), "PhysicalActivity");
  EXPECT_STREQ(extension->GetFWname(), "TuvKelBodyInWhiteUI");
  const auto* const id = static_cast<const _GUID*>(library->Find("IID_TuvIBIWSetup"));
  ASSERT_NE(id, nullptr);
  EXPECT_EQ(FindInterface(*id), FindInterface("TuvIBIWSetup"));
  EXPECT_TRUE(IsTraceRegistered(kTrace) && !IsTraceOn(kTrace));
  const auto process = Process();
  const auto factory =
      FindExtensionFactory(process->Root()->GetMetaObject(), TuvIUpdateManufAssly::InterfaceId());
  EXPECT_EQ(reinterpret_cast<void*>(factory), library->Find(kFactory));
  EXPECT_TRUE(Update(*process));
}

TEST_F(LibraryTest, StaysWhileItsObjectsLiveAndNamesThem) {
  auto process = Process();
  ASSERT_TRUE(Update(*process));
  const auto bag = Make<Zef3DBagRep>();
  for (int i = 0; i < 2; ++i) bag->AddChild(MakeLabel(*library).Get());
  EXPECT_THAT(WhyInUse(), HasSubstr("alive: TuvBIWCustomRep (2), TuvEUpdateManufAssly (1)."));
  EXPECT_TRUE(Update(*Process())) << "a refusal changes nothing";
  {
    const tests::TraceRecorder trace(kTrace);
    bag->RemoveAllChildren();
    EXPECT_EQ(trace.Lines(), (std::vector<std::string>(2, "TuvBIWCustomRep <-- OUT")));
  }
  EXPECT_THAT(WhyInUse(), HasSubstr("alive: TuvEUpdateManufAssly (1)."));
  process = {};
  EXPECT_EQ(WhyInUse(), "");
  EXPECT_EQ(library->Find(kFactory), nullptr);
  EXPECT_NO_THROW(library->Unload());
}

TEST_F(LibraryTest, IsNotLoadedTwiceAndOutlivesALoaderThatGoesWhileItIsInUse) {
  EXPECT_THROW(LibraryLoader again(TUV_LIBRARY), LibraryUnusable);
  EXPECT_TRUE(Update(*Process()));
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
    EXPECT_TRUE(!tests::IsMapped(kLibrary) && !IsTraceRegistered(kTrace));
    auto process = Process();
    EXPECT_FALSE(Update(*process)) << "a registration dangles";

    library.emplace(TUV_LIBRARY);
    EXPECT_TRUE(tests::IsMapped(kLibrary) && IsTraceRegistered(kTrace));
    const ZefMetaClass* const meta = FindMetaClass("TuvEUpdateManufAssly");
    EXPECT_EQ(std::exchange(described, meta), round == 1 ? nullptr : meta) << "refreshed";
    const Handle<ZefSPPActivityNotificationDispatcher> dispatcher = process->Dispatcher();
    auto update = Update(*process);
    ASSERT_TRUE(update);
    EXPECT_EQ(update->AddUpdateCallback(), S_OK);
    EXPECT_EQ(update->AddWeldColorUpdateCallback(), S_OK);
    process->AddFlow(*process->Root(), *process->Root());
    EXPECT_EQ(update->RemoveUpdateCallback(), S_OK);

    update = nullptr;
    process = {};
    EXPECT_EQ(CountCallbacks(), 1);
    EXPECT_EQ(WhyInUse(), "");
    EXPECT_EQ(CountCallbacks(), 0) << "a subscription dangles";
    Deliver(dispatcher, dispatcher->GetSPPViewsChange(), nullptr);
  }
}

}  // namespace
