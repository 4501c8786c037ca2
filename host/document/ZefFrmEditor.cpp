#include "host/document/ZefFrmEditor.h"

#include "host/HostApplication.h"

ZefFrmEditor* ZefFrmEditor::GetCurrentEditor() {
  return HostApplication::Installed().CurrentEditor();
}
