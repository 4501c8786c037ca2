#include "embedded/model/Activity.h"

#include <memory>
#include <utility>

#include "embedded/model/Document.h"
#include "embedded/model/ObjectClass.h"
#include "embedded/model/ProductOutput.h"

namespace embedded {

namespace {

void Withhold(Activity& activity, const ActivityData& data, bool isRoot) {
  using Task = ActivityData::Task;
  const bool welds = data.task == Task::Welding || data.task == Task::Both;
  const bool seams = data.task == Task::CurveFastening || data.task == Task::Both;
  const bool station = data.role == ActivityData::Role::Station;
  activity.AnswerInterface(IID_ZefISPPActivityRoot, isRoot);
  activity.AnswerInterface(IID_TuvIBIWActivity, station || welds || seams);
  activity.AnswerInterface(IID_TuvIBIWActivityWelding, welds);
  activity.AnswerInterface(IID_TuvIBIWActivityCurveFastening, seams);
  activity.AnswerInterface(IID_TuvIBIWItemInfo, station);
}

}  // namespace

Activity::Activity(const ActivityData& iData, bool iIsRoot, MembershipPointer iMembership)
    : data_(iData), isRoot_(iIsRoot) {
  if (data_.label.empty()) data_.label = data_.key;
  alias_ = data_.key;
  below_.fill(this);
  Join(std::move(iMembership));
  Withhold(*this, data_, iIsRoot);
}

Activity::~Activity() {
  links_.Clear();
  for (const Owned<ProductOutput>& output : outputs_) output->Leave();
  if (container_) container_->Leave();
}

ZefMetaClass* Activity::GetMetaObject() const {
  struct Physical {};
  struct Logical {};
  return data_.kind == ActivityData::Kind::Physical
             ? ObjectClass<Physical>("PhysicalActivity", "Activity")
             : ObjectClass<Logical>("LogicalActivity", "Activity");
}

ZefUnicodeString Activity::GetLabel() {
  return FaultPoint::Strikes() ? ZefUnicodeString() : ZefUnicodeString(data_.label);
}

HRESULT Activity::GetFeatContainer(ZefIContainer_var& oContainer) {
  if (FaultPoint::Strikes()) return E_FAIL;
  if (isRoot_ && OwnDocument()) {
    oContainer = OwnDocument()->RootContainerObject();
    return S_OK;
  }
  if (!container_) container_ = TryMakeOwned<ActivityContainer>(this);
  if (!container_) return E_FAIL;
  oContainer = container_->Identity();
  return S_OK;
}

ZefSPPActivityNotificationDispatcher* Activity::GetDispatcher() {
  return FaultPoint::Strikes() ? nullptr : GetOwnDispatcher();
}

ZefSPPActivityNotificationDispatcher* Activity::GetOwnDispatcher() const {
  return OwnDocument() ? OwnDocument()->Dispatcher() : nullptr;
}

}  // namespace embedded
