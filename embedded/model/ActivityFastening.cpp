#include "embedded/model/Activity.h"
#include "embedded/model/Fasteners.h"

namespace embedded {

int Activity::IsValidFastener(const TuvIBIWFastener_var& iFastener) {
  if (FaultPoint::Strikes()) return 0;
  using Task = ActivityData::Task;
  const bool isCurve = static_cast<bool>(TuvIBIWCurveFastener_var(iFastener));
  if (data_.task == Task::Welding) return isCurve ? 0 : 1;
  if (data_.task == Task::CurveFastening) return isCurve ? 1 : 0;
  return 1;
}

HRESULT Activity::UpdateCycleTime() {
  if (FaultPoint::Strikes()) return E_FAIL;
  using Task = ActivityData::Task;
  const bool welds = data_.task == Task::Welding || data_.task == Task::Both;
  const bool makesSeams = data_.task == Task::CurveFastening || data_.task == Task::Both;
  cycleTime_ = 0;
  if (welds) cycleTime_ += data_.fixedSeconds + data_.secondsPerWeld * CountSpotWelds();
  if (makesSeams && data_.speedMmPerSecond > 0) {
    cycleTime_ += CurveLength() / data_.speedMmPerSecond;
  }
  return S_OK;
}

int Activity::CountSpotWelds() const {
  int count = 0;
  links_.ForEach([&](const ItemLink& link) {
    if (TuvISpotWeld_var(link.Item())) ++count;
  });
  return count;
}

double Activity::CurveLength() const {
  double length = 0;
  links_.ForEach([&](const ItemLink& link) {
    if (const auto* const curve = ObjectAs<CurveFastener>(link.Item().Get())) {
      length += curve->Length();
    }
  });
  return length;
}

}  // namespace embedded
