#pragma once

#include "host/component/Handle.h"
#include "host/component/ZefNotification.h"

// A change of the process. It holds references on both objects.
class ZefSPPActivityNotification : public ZefNotification {
 public:
  // The kinds, with the platform's numbers.
  enum Kind {
    ItemFirstAssigned = 17,
    ItemRemoved = 18,
    LinkRemoved = 29,
    FlowCreated = 30,
    OutputCreated = 39
  };

  ZefSPPActivityNotification(ZefBaseUnknown* iFather, ZefBaseUnknown* iSon, int iKind)
      : father_(iFather), son_(iSon), kind_(iKind) {}

  // The activity that the change belongs to and the object that was created, linked or removed; no
  // reference taken, either may be null.
  ZefBaseUnknown* GetFather() { return father_; }
  ZefBaseUnknown* GetSon() { return son_; }
  int GetNotificationKind() { return kind_; }

  static const char* ClassName() { return "ZefSPPActivityNotification"; }
  static ZefMetaClass* MetaObject();
  ZefMetaClass* GetMetaObject() const override { return MetaObject(); }

 private:
  ZefBaseUnknown_var father_;
  ZefBaseUnknown_var son_;
  int kind_;
};
