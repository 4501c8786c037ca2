#pragma once

#include "host/component/Handle.h"
#include "host/component/ZefNotification.h"

// A change of the process. It holds references on both objects.
//
// Removing an activity raises LinkRemoved alone. First for every activity of the subtree, each
// after those below it and siblings in the order of their parent's list, while everything stands
// as before. Then the control flows go, activity by activity in the same order and of each the
// incoming ones before the outgoing ones; each is told of once both ends dropped it. At last, and
// told to nobody, each activity loses its place in the tree, its item links and its outputs.
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
