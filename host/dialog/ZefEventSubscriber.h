#pragma once

#include <functional>
#include <memory>
#include <vector>

#include "host/component/Callbacks.h"
#include "host/component/ZefNotification.h"

class ZefCommand;

// An object that reacts to notifications sent to it.
class ZefEventSubscriber : public ZefBaseUnknown {
 public:
  // Calls the receiver's member whenever `iNotification` reaches this object. Neither is counted:
  // the subscription ends with this object or with the receiver.
  template <class T>
  void AddNotificationCallback(T* iReceiver, ZefNotification* iNotification,
                               void (T::*iMember)(ZefCommand*, ZefNotification*, void*),
                               void* iData) {
    reactions_.push_back(
        {iNotification, LifeOf(iReceiver), [=](ZefCommand* from, ZefNotification* notification) {
           (iReceiver->*iMember)(from, notification, iData);
         }});
  }

  // Runs the reactions to the notification; the object is kept alive meanwhile.
  virtual void ReceiveNotification(ZefCommand* iFrom, ZefNotification* iNotification);

  static const char* ClassName() { return "ZefEventSubscriber"; }
  static ZefMetaClass* MetaObject();
  ZefMetaClass* GetMetaObject() const override { return MetaObject(); }

 private:
  struct Reaction {
    const ZefNotification* notification;
    std::weak_ptr<const void> receiver;
    std::function<void(ZefCommand*, ZefNotification*)> run;
  };
  std::vector<Reaction> reactions_;
};
