#include "host/component/ComponentObject.h"

bool AnswerInterface(ZefBaseUnknown* iObject, const _GUID& iIID, bool iAnswer) {
  auto* const object = dynamic_cast<SelectiveObject*>(IdentityOf(iObject));
  return object && object->AnswerInterface(iIID, iAnswer);
}
