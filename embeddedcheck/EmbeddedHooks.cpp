#include "embeddedcheck/EmbeddedHooks.h"

#include <random>
#include <string>
#include <system_error>

#include "embedded/processdb/ProcessDatabase.h"

namespace embeddedcheck {

namespace {

using namespace embedded;

ActivityData DataFor(const char* name, hostcheck::ActivityRole role) {
  ActivityData data{.key = name};
  switch (role) {
    case hostcheck::ActivityRole::Station:
      data.role = ActivityData::Role::Station;
      break;
    case hostcheck::ActivityRole::Operation:
      data.task = ActivityData::Task::Welding;
      break;
    case hostcheck::ActivityRole::Logical:
      data.kind = ActivityData::Kind::Logical;
      break;
  }
  return data;
}

std::filesystem::path NewFolder() {
  std::random_device chance;
  const auto base = std::filesystem::temp_directory_path();
  for (;;) {
    const auto folder = base / ("tuv-host-check-" + std::to_string(chance()));
    if (std::filesystem::create_directory(folder)) return folder;
  }
}

}  // namespace

EmbeddedHooks::~EmbeddedHooks() { EmbeddedHooks::TearDown(); }

std::unique_ptr<Application> EmbeddedHooks::MakeApplication() {
  return std::make_unique<embedded::Application>(dialogs_);
}

Owned<Document> EmbeddedHooks::MakeDocument() {
  return MakeOwned<embedded::Document>(embedded::Document::Kind::Process);
}

void EmbeddedHooks::SetUp() {
  application_ = MakeApplication();
  if (!catalogs_.empty()) application_->Catalogs().AddFolder(catalogs_);
  document_ = MakeDocument();
  application_->Edit(document_);
}

void EmbeddedHooks::TearDown() {
  application_.reset();
  document_ = {};
  std::error_code ignored;
  if (!folder_.empty()) std::filesystem::remove_all(folder_, ignored);
  folder_.clear();
}

ZefBaseUnknown* EmbeddedHooks::AddActivity(ZefBaseUnknown* iParent, const char* iName,
                                           hostcheck::ActivityRole iRole) {
  Activity& parent = *ObjectAs<Activity>(iParent);
  return document_->AddActivity(parent, DataFor(iName, iRole)).Identity();
}

ZefBaseUnknown* EmbeddedHooks::AddPart(ZefBaseUnknown* iParent, const char* iName) {
  Product& parent = iParent ? *ObjectAs<Product>(iParent) : document_->RootProduct();
  return document_->AddProduct(parent, {.key = iName}).Identity();
}

ZefBaseUnknown* EmbeddedHooks::AddWeld(const char* iName, const std::array<double, 3>& iAt,
                                       ZefBaseUnknown* iPart, ZefBaseUnknown* iOther) {
  SpotWeldData data;
  data.key = iName;
  data.type = "spot";
  for (ZefBaseUnknown* const part : {iPart, iOther}) {
    if (part) data.parts.push_back(ObjectAs<Product>(part));
  }
  data.position = {iAt[0], iAt[1], iAt[2], 0, 0, 0};
  return document_->AddSpotWeld(data).Identity();
}

ZefBaseUnknown* EmbeddedHooks::AddAssembly(const char* iName) {
  return document_->AddAssembly(iName).Identity();
}

bool EmbeddedHooks::AddProcess(const char* iIdentifier, const char* iParent,
                               ZefBaseUnknown* iActivity) {
  if (!document_->Database()) {
    folder_ = NewFolder();
    document_->AttachDatabase(ProcessDatabase::Create(folder_ / "processes.sqlite"));
  }
  ProcessDatabase& database = *document_->Database();
  database.AddProcess(iIdentifier, "", !iParent);
  if (iParent) database.AddParent(iIdentifier, iParent);
  if (iActivity) database.LinkActivity(ObjectAs<Activity>(iActivity)->Key(), iIdentifier);
  return true;
}

ZefBaseUnknown* EmbeddedHooks::DrawFlow(ZefBaseUnknown* iFrom, ZefBaseUnknown* iTo) {
  return document_->AddFlow(*ObjectAs<Activity>(iFrom), *ObjectAs<Activity>(iTo)).Identity();
}

void EmbeddedHooks::RemoveFlow(ZefBaseUnknown* iFlow) {
  document_->RemoveFlow(*ObjectAs<ControlFlow>(iFlow));
}

void EmbeddedHooks::RemoveActivity(ZefBaseUnknown* iActivity) {
  document_->RemoveActivity(*ObjectAs<Activity>(iActivity));
}

void EmbeddedHooks::RemoveOutput(ZefBaseUnknown* iActivity, ZefBaseUnknown* iOutput) {
  document_->RemoveOutput(*ObjectAs<Activity>(iActivity), *ObjectAs<ProductOutput>(iOutput));
}

}  // namespace embeddedcheck
