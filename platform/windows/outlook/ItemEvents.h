// platform/windows/outlook/ItemEvents.h: item events of another program, raised when no call is
// under way.
#pragma once

#include <deque>
#include <memory>
#include <optional>

#include "platform/Outlook.h"
#include "platform/windows/com/Automation.h"
#include "platform/windows/system/MessageWindow.h"

namespace velkor {

class OutlookLink;
class ItemEventSink;

/// Keeps events in their order until messages are processed outside of any call to the program,
/// and raises each once. Outlives its connections.
class ItemEventQueue {
 public:
  explicit ItemEventQueue(OutlookLink& link);
  ~ItemEventQueue();
  ItemEventQueue(const ItemEventQueue&) = delete;
  ItemEventQueue& operator=(const ItemEventQueue&) = delete;

  /// @param event  one of the items' event identifiers
  /// @param item   null for an event that names none
  void Add(ComPtr<ItemEventSink> sink, DISPID event, ComPtr<IDispatch> item);
  /// Before the first event. Throws Error when it cannot.
  void Begin();
  OutlookLink& Link() const { return link_; }

 private:
  struct Event {
    ComPtr<ItemEventSink> sink;
    DISPID id;
    ComPtr<IDispatch> item;
  };

  void Post();
  void RaiseNext();

  OutlookLink& link_;
  std::deque<Event> events_;
  /// Only gets the message that the next event is due; none before the first connection.
  std::optional<MessageWindow> window_;
  bool posted_ = false;
};

/// One receiver's events of one item collection, for as long as this lives.
class ItemEventConnection {
 public:
  /// Throws Error when the collection raises no events. `events` outlives this.
  ItemEventConnection(OutlookLink& link, const AutomationObject& items, OutlookItemEvents& events);
  ~ItemEventConnection();
  ItemEventConnection(const ItemEventConnection&) = delete;
  ItemEventConnection& operator=(const ItemEventConnection&) = delete;

  /// @param ask  in any case; else only when another call has found the program gone
  bool IsAlive(bool ask);

 private:
  AutomationProgram& program_;
  ComPtr<ItemEventSink> sink_;
  ComPtr<IConnectionPoint> point_;
  DWORD cookie_ = 0;
  /// As many calls had found the program gone when this was known to live.
  int losses_;
  bool gone_ = false;
  /// Expires with this.
  std::shared_ptr<char> life_ = std::make_shared<char>();
};

}  // namespace velkor
