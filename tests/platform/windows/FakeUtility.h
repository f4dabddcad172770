// tests/platform/windows/FakeUtility.h: a cache utility in this process that does what a test says.
#pragma once

#include <functional>
#include <map>
#include <string>
#include <vector>

#include "VelkorCacheUtility.h"
#include "tests/standin/ClassOffer.h"
#include "tests/standin/ServedObject.h"

namespace velkor {

/// Given to whoever asks for the cache utility in this process; writes down what is called.
class FakeUtility {
 public:
  FakeUtility() {
    object->events = ComPtr<ConnectionPoint>(
        new ConnectionPoint(*object.Get(), DIID__IVelkorCacheUtilityEvents));
    for (const char* member : {"ClientProcess", "ViewYear", "FirstMonth", "CacheFile", "WorkFile",
                               "FolderID", "StoreID", "Start", "Stop"}) {
      object->members[member] = [this, member](const ServedCall& call) {
        log.push_back(member + (call.IsPut() ? "=" + call[0].ToText() : std::string()));
        onCall(log.back());
        return Variant();
      };
    }
  }

  ~FakeUtility() { object->events->Detach(); }
  FakeUtility(const FakeUtility&) = delete;
  FakeUtility& operator=(const FakeUtility&) = delete;

  ServedProgram program;
  ComPtr<ServedObject> object = MakeServed(program, "VelkorCacheUtility");
  std::function<void(const std::string&)> onCall = [](const std::string&) {};
  std::vector<std::string> log;
  const ClassOffer offer{CLSID_VelkorCacheUtility, CLSCTX_INPROC_SERVER,
                         [this] { return ComPtr<IDispatch>(object.Get()); }};

  void Complete(std::int16_t result, std::int32_t error) const {
    object->events->Fire(1, {Variant(result).Get(), Variant(error).Get()});
  }
};

}  // namespace velkor
