#pragma once

#include <filesystem>
#include <memory>

#include "embedded/Application.h"
#include "embedded/dialog/RecordedDialogs.h"
#include "hostcheck/HostCheck.h"

namespace embeddedcheck {

// The embedded host, for the checks.
class EmbeddedHooks : public hostcheck::HostHooks {
 public:
  // The folder with the message catalogs; none for an empty path.
  explicit EmbeddedHooks(std::filesystem::path iCatalogs = {}) : catalogs_(std::move(iCatalogs)) {}
  ~EmbeddedHooks() override;

  void SetUp() override;
  void TearDown() override;
  HostApplication* Application() override { return application_.get(); }
  ZefBaseUnknown* Document() override { return document_->Identity(); }
  ZefBaseUnknown* Root() override { return document_->Root()->Identity(); }
  ZefBaseUnknown* AddActivity(ZefBaseUnknown* iParent, const char* iName,
                              hostcheck::ActivityRole iRole) override;
  ZefBaseUnknown* AddPart(ZefBaseUnknown* iParent, const char* iName) override;
  ZefBaseUnknown* AddWeld(const char* iName, const std::array<double, 3>& iAt,
                          ZefBaseUnknown* iPart, ZefBaseUnknown* iOther) override;
  ZefBaseUnknown* AddAssembly(const char* iName) override;
  bool AddProcess(const char* iIdentifier, const char* iParent, ZefBaseUnknown* iActivity) override;
  ZefBaseUnknown* DrawFlow(ZefBaseUnknown* iFrom, ZefBaseUnknown* iTo) override;
  void RemoveFlow(ZefBaseUnknown* iFlow) override;
  void RemoveActivity(ZefBaseUnknown* iActivity) override;
  void RemoveOutput(ZefBaseUnknown* iActivity, ZefBaseUnknown* iOutput) override;

 protected:
  virtual std::unique_ptr<embedded::Application> MakeApplication();
  virtual embedded::Owned<embedded::Document> MakeDocument();

  embedded::RecordedDialogs dialogs_;

 private:
  std::filesystem::path catalogs_;
  std::filesystem::path folder_;  // of the process database
  std::unique_ptr<embedded::Application> application_;
  embedded::Owned<embedded::Document> document_;
};

}  // namespace embeddedcheck
