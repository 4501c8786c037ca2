#include <array>
#include <cstdlib>

#include "host/HostApplication.h"
#include "host/dialog/Dialog.h"
#include "host/document/Document.h"
#include "host/fastening/Fastening.h"
#include "host/process/Process.h"
#include "host/visu/Visu.h"
#include "hostcheck/Bench.h"
#include "hostcheck/Check.h"

namespace hostcheck {

namespace {

constexpr char kApplication[] = "host/HostApplication.h";

void Installed(Bench& bench) {
  const HostApplication* const application = bench.hooks.Application();
  bench.Expect(application && &HostApplication::Installed() == application,
               "the application is installed while it lives");
  bench.Close();
  bench.Expect(&HostApplication::Installed() != application,
               "it is not installed any more once it ended");
}

void Editor(Bench& bench) {
  ZefFrmEditor* const editor = ZefFrmEditor::GetCurrentEditor();
  bench.Need(editor, "editor");
  bench.Equal(bench.NameOf(editor->GetDocument()), "the document", "the document of the editor");
  bench.Expect(ZefFrmEditor::GetCurrentEditor() == editor, "the editor is the same each time");
  bench.Expect(editor->GetHSO() == editor->GetHSO() && editor->GetPSO() == editor->GetPSO(),
               "its sets are the same each time");
  for (int rank = 0; rank < 3; ++rank) {
    const ZefISO* const set = editor->GetISO(rank);
    bench.Expect(set == editor->GetISO(rank), "a set of temporary objects is the same each time");
    for (int other = rank + 1; set && other < 3; ++other) {
      bench.Expect(set != editor->GetISO(other), "each rank has a set of its own");
    }
  }
}

void Frame(Bench& bench) {
  ZefApplicationFrame* const frame = ZefApplicationFrame::GetFrame();
  bench.Need(frame, "application frame");
  bench.Expect(ZefApplicationFrame::GetFrame() == frame, "the frame is the same each time");
  bench.Expect(frame->GetMainWindow() == frame->GetMainWindow(),
               "its main window is the same each time");
  const unsigned before = CountOf(frame);
  ZefApplicationFrame::GetFrame();
  bench.Expect(CountOf(frame) == before, "the frame comes without reference");
}

void Dialogs(Bench& bench) {
  ZefApplicationFrame* const frame = ZefApplicationFrame::GetFrame();
  ZefFrmWindow* const window = frame ? frame->GetMainWindow() : nullptr;
  bench.Need(window, "main window");
  const std::string before = bench.State();
  Witness witness(bench);
  auto* const dialog = new ZefDlgNotify(window, "HostCheck", 0);
  dialog->DisplayBlocked("A message of the host's check; nothing needs to be done.", "Check");
  dialog->SetVisibility(2);
  dialog->RequestDelayedDestruction();
  HostApplication::Installed().ShowDialog({nullptr, "HostCheck", 0, "", ""});
  bench.Equal(witness.Take(), "", "changes of the process while a dialog was shown");
  bench.Equal(bench.State(), before, "the process after a dialog");
}

void CatalogsThatAreMissing(Bench& bench) {
  HostApplication& application = HostApplication::Installed();
  constexpr char kNone[] = "HostCheckCatalogOfNobody";
  bench.Expect(!application.HasCatalog(kNone), "there is no catalog of an unknown name");
  std::string text = "kept";
  bench.Expect(!application.FindMessage(kNone, "Key", text), "an unknown catalog has no message");
  bench.Expect(!application.FindMessage("TuvKelBIWAssignWeldDlg", "KeyOfNobody", text),
               "an unknown key has no message");
  bench.Equal(ZefMsgCatalog::BuildMessage(kNone, "Key", nullptr, 0, "default").ConvertToChar(),
              "default", "the text that stands in for a missing message");
}

void CatalogsThatAreThere(Bench& bench) {
  constexpr char kUpdate[] = "TuvBIWUpdateManufAssemblyCmd";
  HostApplication& application = HostApplication::Installed();
  if (!application.HasCatalog(kUpdate)) throw Skipped("the application has no catalog of warnings");
  for (const char* const key :
       {"ErrorMessage.Title", "WarningMessage.Title", "ErrorMessageProcessFlow",
        "ErrorMessageProductFlow", "ErrorMessageForRecursion", "WarningMessageInputRemoved",
        "MultipleActsInFlow", "MultipleProductOutput", "MAIsChild"}) {
    std::string first, second;
    bench.Expect(application.FindMessage(kUpdate, key, first) && !first.empty(),
                 std::string("the catalog of warnings has ") + key);
    application.FindMessage(kUpdate, key, second);
    bench.Equal(second, first, "the same message again");
  }
}

void PartLoad(Bench& bench) {
  unsigned char value = 7;
  const HRESULT result = HostApplication::Installed().PartLoadConstraint(value);
  bench.Expect(Succeeded(result) ? value <= 1 : value == 7,
               "the part-load constraint is 0 or 1, or stays as it was after a failure");
  unsigned char again = 7;
  HostApplication::Installed().PartLoadConstraint(again);
  bench.Expect(again == value, "it is the same again");
}

void Environment(Bench& bench) {
  HostApplication& application = HostApplication::Installed();
  bench.Expect(!application.Environment("HOST_CHECK_VARIABLE_OF_NOBODY"),
               "a variable that is not set is null");
  ::setenv("HOST_CHECK_EMPTY_VARIABLE", "", 1);
  const char* const empty = application.Environment("HOST_CHECK_EMPTY_VARIABLE");
  bench.Expect(empty && !*empty, "a variable that is set to the empty text is that text");
}

void Assemblies(Bench& bench) {
  const ZefDocument_var document = bench.document;
  const auto make = [&](ZefDocument* in) {
    TuvIMfgAssembly_var made;
    const HRESULT result = HostApplication::Installed().CreateMfgAssembly(in, &made.Put());
    if (Failed(result)) throw Skipped("the application makes no assemblies");
    bench.Require(static_cast<bool>(made), "an assembly is made when the application says so");
    return made;
  };
  const TuvIMfgAssembly_var first = make(document), second = make(nullptr);
  bench.Expect(first != second, "each assembly is a new one");
  for (const TuvIMfgAssembly_var& made : {first, second}) {
    bench.Equal(bench.NameOf(bench.Ask<ZefILinkableObject>(made)->GetDocument()), "the document",
                "the document of a new assembly, also when none was named");
    bench.Expect(static_cast<bool>(ZefISPPItem_var(made)), "a new assembly is an item");
    bench.Equal(bench.AssemblyChildren(made), "", "the children of a new assembly");
  }
}

}  // namespace

std::vector<Check> ApplicationChecks() {
  return {
      {{"application.installed", kApplication, "An application is installed while it lives."},
       &Installed},
      {{"application.editor", "host/document/ZefFrmEditor.h",
        "The current editor edits the document and keeps its sets."},
       &Editor},
      {{"application.frame", "host/dialog/ZefApplicationFrame.h",
        "The frame and its window are the application's, without reference."},
       &Frame},
      {{"application.dialogs", kApplication, "A dialog does not change the model."}, &Dialogs},
      {{"application.no-catalogs", kApplication, "What a catalog lacks is said to be missing."},
       &CatalogsThatAreMissing},
      {{"application.catalogs", kApplication, "The catalog of warnings has all of its messages."},
       &CatalogsThatAreThere},
      {{"application.part-load", kApplication, "The part-load constraint is 0, 1 or left alone."},
       &PartLoad},
      {{"application.environment", kApplication, "Only a variable that is not set is null."},
       &Environment},
      {{"application.assemblies", kApplication, "New assemblies are made in the document."},
       &Assemblies},
  };
}

}  // namespace hostcheck
