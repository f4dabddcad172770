// hosts/windows/TryOut/ControlEvents.h: hears what the control tells its container.
#pragma once

#include <functional>
#include <string>

#include "platform/windows/com/Variant.h"

namespace velkor {

/// What the control tells; each may be unset.
struct ControlListener {
  std::function<void(const std::string& message)> onStatus;
  /// The stock event of controls for what goes wrong.
  std::function<void(int number, const std::string& description)> onError;
  std::function<void(const std::string& name)> onPropertyChanged;
};

/// Connected to a control from here on to its own end.
class ControlEvents {
 public:
  /// @param listener  outlives this
  ControlEvents(IDispatch& control, const ControlListener& listener);
  ~ControlEvents();
  ControlEvents(const ControlEvents&) = delete;
  ControlEvents& operator=(const ControlEvents&) = delete;

 private:
  struct Connection {
    ComPtr<IConnectionPoint> point;
    DWORD cookie = 0;
  };
  static Connection Connect(IDispatch& control, REFIID events, IUnknown* sink);

  Connection events_;
  Connection properties_;
};

}  // namespace velkor
