// tests/standin/ServedObject.h: an object of the program that answers calls by name; part
// of the calendar program for tests, never shipped.
#pragma once

#include "platform/windows/com/NamedMembers.h"
#include "tests/standin/StandInSession.h"

namespace velkor {

/// What all served objects of one class share.
struct WatchedClass : ObjectClass {
  /// Counted and open to faults that tests ask for.
  bool watched = true;
  /// The program runs on while there is such an object.
  bool keepsRunning = true;
};

class ServedMembers : public NamedMembers {
 public:
  ServedMembers(StandInSession& session, const WatchedClass& kind)
      : NamedMembers(kind), session_(session), kind_(kind) {
    if (kind_.keepsRunning) session_.loop.Enter();
  }
  ~ServedMembers() override {
    if (kind_.keepsRunning) session_.loop.Leave();
  }

 protected:
  HRESULT OnLookup() override {
    const HRESULT result = OnInvoke();
    if (SUCCEEDED(result) && kind_.watched) session_.watch.CountLookup();
    return result;
  }
  HRESULT OnInvoke() override {
    session_.loop.NoteCall();
    return kind_.watched && session_.watch.PutsOff() ? RPC_E_SERVERCALL_RETRYLATER : S_OK;
  }
  void OnCall(const Member& member) override {
    if (kind_.watched) session_.watch.BeginCall(kind_.name, member.name);
  }
  StandInSession& Shared() const { return session_; }

 private:
  StandInSession& session_;
  const WatchedClass& kind_;
};

template <typename... More>
class ServedObject : public NamedObject<ServedMembers, More...> {
 public:
  using NamedObject<ServedMembers, More...>::NamedObject;
};

}  // namespace velkor
