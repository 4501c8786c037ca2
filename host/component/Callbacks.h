#pragma once

#include <functional>
#include <memory>

#include "host/component/ZefBaseUnknown.h"

class ZefNotification;

// What a subscription calls: a receiver with a member of its own class, checked by the compiler,
// or a plain function. It is separate from the subscriber, which is only an identity for
// book-keeping.
class ZefCallbackMethod {
 public:
  using Function = void(const char* iEvent, void* iPublisher, ZefNotification* iNotification,
                        void* iData, long iCallback);

  template <class T>
  ZefCallbackMethod(T* iReceiver,
                    void (T::*iMember)(const char*, void*, ZefNotification*, void*, long))
      : receiver_(iReceiver),
        code_(reinterpret_cast<const void*>(&Bind<T>)),
        call_(Bind<T>(iReceiver, iMember)) {}
  ZefCallbackMethod(Function* iFunction)
      : code_(reinterpret_cast<const void*>(iFunction)), call_(iFunction) {}

  // Null for a plain function.
  ZefBaseUnknown* Receiver() const { return receiver_; }
  // An address in the library whose code is called.
  const void* Code() const { return code_; }
  const std::function<Function>& Call() const { return call_; }

 private:
  template <class T>
  static std::function<Function> Bind(T* receiver,
                                      void (T::*member)(const char*, void*, ZefNotification*, void*,
                                                        long)) {
    return [receiver, member](const char* event, void* publisher, ZefNotification* notification,
                              void* data, long callback) {
      (receiver->*member)(event, publisher, notification, data, callback);
    };
  }

  ZefBaseUnknown* receiver_ = nullptr;
  const void* code_;
  std::function<Function> call_;
};

// Subscribes to an event of a publisher and answers the subscription's identifier, from 1 to
// 2^31-1 and never used again; 0 when there is no publisher or no event name. The receiver is
// referenced until the subscription ends; the subscriber and the publisher are not. A publisher is
// the same through all its interfaces.
long AddCallback(ZefBaseUnknown* iSubscriber, ZefBaseUnknown* iPublisher, const char* iEvent,
                 const ZefCallbackMethod& iMethod, void* iData);

// Ends the subscription with this publisher and identifier, before its next call; whoever
// subscribed. Nothing happens for an unknown one.
void RemoveCallback(ZefBaseUnknown* iSubscriber, ZefBaseUnknown* iPublisher, long iCallback);

// Calls the event's subscriptions in the order of their identifiers. Those added meanwhile are not
// called, those removed meanwhile no longer.
//
// It calls them at once, also from within another delivery. Changes of the process must not reach
// the library so: a host queues what is raised during a delivery, with references on the
// notification and on father and son, and delivers it in the order in which it was raised before
// its outermost operation returns.
void Deliver(ZefBaseUnknown* iPublisher, const char* iEvent, ZefNotification* iNotification);

// Expires when the object dies; for whoever calls an object that it does not hold.
std::weak_ptr<const void> LifeOf(ZefBaseUnknown* iObject);

// Ends the object's life, and every subscription whose receiver or publisher it is.
void ForgetCallbacks(ZefBaseUnknown* iObject);

// Ends every subscription whose code lies in [iBegin, iEnd); answers how many.
int PurgeCallbacks(const void* iBegin, const void* iEnd);

// How many subscriptions are in force.
int CountCallbacks();
