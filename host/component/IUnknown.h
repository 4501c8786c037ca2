#pragma once

#include "host/component/Identifier.h"
#include "host/component/Result.h"

// The three operations that every counted object has. Objects are never deleted through it.
class IUnknown {
 public:
  virtual HRESULT QueryInterface(const _GUID& iIID, void** oPtr) = 0;
  virtual unsigned int AddRef() = 0;
  virtual unsigned int Release() = 0;

 protected:
  ~IUnknown() = default;
};

extern const _GUID IID_IUnknown;
