#include "embedded/model/Activity.h"
#include "embedded/model/Fasteners.h"

namespace embedded {

int Activity::IsValidFastener(const TuvIBIWFastener_var& iFastener) {
  if (FaultPoint::Strikes()) return 0;
  using Task = ActivityData::Task;
  const bool isCurve = ObjectAs<CurveFastener>(iFastener.Get()) != nullptr;
  if (data_.task == Task::Welding) return isCurve ? 0 : 1;
  if (data_.task == Task::CurveFastening) return isCurve ? 1 : 0;
  return 1;
}

HRESULT Activity::UpdateCycleTime() {
  if (FaultPoint::Strikes()) return E_FAIL;
  const double curves = data_.speedMmPerSecond > 0 ? CurveLength() / data_.speedMmPerSecond : 0.0;
  cycleTime_ = data_.fixedSeconds + data_.secondsPerWeld * CountSpotWelds() + curves;
  return S_OK;
}

int Activity::CountSpotWelds() const {
  int count = 0;
  links_.ForEach([&](const ItemLink& link) {
    if (ObjectAs<SpotWeld>(link.Item().Get())) ++count;
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
