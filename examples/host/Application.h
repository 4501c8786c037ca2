#pragma once

#include <iostream>

#include "Process.h"
#include "host/HostApplication.h"
#include "host/dialog/Dialog.h"

namespace workshop {

// The editor of the one document; it shows nothing, so that it has no sets.
class Editor : public ZefFrmEditor {
 public:
  explicit Editor(Process& process) : process_(process) {}
  ZefDocument* GetDocument() override { return &process_; }
  ZefHSO* GetHSO() override { return nullptr; }
  ZefISO* GetISO(int) override { return nullptr; }
  ZefPSO* GetPSO() override { return nullptr; }

 private:
  Process& process_;
};

// The window over which the library opens dialogs.
class MainFrame : public ZefApplicationFrame {
 public:
  ZefFrmWindow* GetMainWindow() override { return window_.Get(); }

 private:
  Handle<ZefFrmWindow> window_ = Make<ZefFrmWindow>();
};

// The program around a process. It answers what the library asks while it lives; dialogs are lines
// on the console, and there are no catalogs: the texts of the library stand in.
class Application : public HostApplication {
 public:
  explicit Application(Process& process) : process_(process), editor_(Make<Editor>(process)) {
    Install(this);
  }
  ~Application() override { Install(nullptr); }
  Application(const Application&) = delete;
  Application& operator=(const Application&) = delete;

  ZefFrmEditor* CurrentEditor() override { return editor_.Get(); }
  ZefApplicationFrame* Frame() override { return frame_.Get(); }
  int ShowDialog(const DialogRequest& iRequest) override {
    std::cout << iRequest.title << ": " << iRequest.message << "\n";
    return 0;
  }
  HRESULT PartLoadConstraint(unsigned char& oOn) override {
    oOn = 0;
    return S_OK;
  }
  // There is one document, which is meant also when none is named.
  HRESULT CreateMfgAssembly(ZefDocument*, TuvIMfgAssembly** oAssembly) override {
    const TuvIMfgAssembly_var made = process_.AddItem<Assembly>().Identity();
    *oAssembly = TuvIMfgAssembly_var(made).Detach();
    return S_OK;
  }

 private:
  Process& process_;
  Handle<Editor> editor_;
  Handle<MainFrame> frame_ = Make<MainFrame>();
};

}  // namespace workshop
