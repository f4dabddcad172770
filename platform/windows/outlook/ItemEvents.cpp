// platform/windows/outlook/ItemEvents.cpp: the object that receives item events, and their queue.
#include "platform/windows/outlook/ItemEvents.h"

#include "platform/windows/com/DispatchSink.h"
#include "platform/windows/outlook/AutomationItem.h"
#include "platform/windows/outlook/OutlookLink.h"

namespace velkor {
namespace {

// Events of an item collection ("Items object, events" of the calendar program's documentation).
constexpr GUID ItemsEvents = {
    0x00063077, 0x0000, 0x0000, {0xC0, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x46}};
constexpr DISPID ItemAdd = 0xF001;
constexpr DISPID ItemChange = 0xF002;
constexpr DISPID ItemRemove = 0xF003;

constexpr UINT EventIsDue = WM_APP;

}  // namespace

/// Held by the calendar program, which may call it once more after it was told to let go.
class ItemEventSink : public DispatchSink {
 public:
  ItemEventSink(ItemEventQueue& queue, OutlookItemEvents& events)
      : DispatchSink(ItemsEvents), queue_(&queue), events_(&events) {}

  /// From now on nothing is raised, also not what waits.
  void Close() {
    queue_ = nullptr;
    events_ = nullptr;
  }

  void Raise(DISPID event, const ComPtr<IDispatch>& item) {
    if (events_ == nullptr) return;
    if (event == ItemRemove) return events_->ItemRemove();
    OutlookLink& link = queue_->Link();
    AutomationItem raised(link, AutomationObject(link.program, link.item, item));
    if (event == ItemAdd) {
      events_->ItemAdd(raised);
    } else {
      events_->ItemChange(raised);
    }
  }

  STDMETHODIMP Invoke(DISPID event, REFIID, LCID, WORD, DISPPARAMS* parameters, VARIANT*,
                      EXCEPINFO*, UINT*) override {
    if (event != ItemAdd && event != ItemChange && event != ItemRemove) {
      return DISP_E_MEMBERNOTFOUND;
    }
    if (queue_ == nullptr) return S_OK;
    ComPtr<IDispatch> item;
    if (event != ItemRemove) {
      Variant argument;
      if (parameters == nullptr || parameters->cArgs != 1) return DISP_E_BADPARAMCOUNT;
      ::VariantCopyInd(argument.Out(), parameters->rgvarg);
      item = argument.ToObject();
      if (item == nullptr) return DISP_E_TYPEMISMATCH;
    }
    queue_->Add(this, event, std::move(item));
    return S_OK;
  }

 private:
  ItemEventQueue* queue_;
  OutlookItemEvents* events_;
};

ItemEventQueue::ItemEventQueue(OutlookLink& link) : link_(link) {
  link_.program.onIdle = [this] { Post(); };
}

ItemEventQueue::~ItemEventQueue() {
  link_.program.onIdle = nullptr;
}

void ItemEventQueue::Begin() {
  if (!window_) window_.emplace([this](UINT, WPARAM) { RaiseNext(); });
}

void ItemEventQueue::Add(ComPtr<ItemEventSink> sink, DISPID event, ComPtr<IDispatch> item) {
  events_.push_back({std::move(sink), event, std::move(item)});
  Post();
}

void ItemEventQueue::Post() {
  if (events_.empty() || posted_ || link_.program.IsInCall()) return;
  posted_ = ::PostMessageW(window_->Get(), EventIsDue, 0, 0) != 0;
}

void ItemEventQueue::RaiseNext() {
  posted_ = false;
  // In the middle of a call the next one waits for its end.
  if (events_.empty() || link_.program.IsInCall()) return;
  const BusyScope busy(link_.program.Owner());
  const Event event = std::move(events_.front());
  events_.pop_front();
  Post();
  // What a receiver fails at is its own affair, since the item is saved: it ends at the window.
  event.sink->Raise(event.id, event.item);
}

ItemEventConnection::ItemEventConnection(OutlookLink& link, const AutomationObject& items,
                                         OutlookItemEvents& events)
    : program_(link.program),
      sink_(new ItemEventSink(link.events, events)),
      losses_(link.program.Losses()) {
  link.events.Begin();
  const HRESULT result = program_.Attempt([&] {
    ComPtr<IConnectionPointContainer> container;
    HRESULT done = items.Get()->QueryInterface(IID_PPV_ARGS(&container));
    if (SUCCEEDED(done)) done = container->FindConnectionPoint(ItemsEvents, &point_);
    if (FAILED(done)) return done;
    return point_ == nullptr ? E_NOINTERFACE : point_->Advise(sink_.Get(), &cookie_);
  });
  if (FAILED(result)) {
    sink_->Close();
    ::CoDisconnectObject(sink_.Get(), 0);
    program_.Fail(result, "Items.ItemAdd", {}, "Items");
  }
}

bool ItemEventConnection::IsAlive(bool ask) {
  if (gone_ || (!ask && losses_ == program_.Losses())) return !gone_;
  // Copies, as the call may end this.
  const ComPtr<IConnectionPoint> point = point_;
  AutomationProgram& program = program_;
  const std::weak_ptr<char> life = life_;
  IID events{};
  const bool lives =
      !IsDisconnected(program.AttemptOnce([&] { return point->GetConnectionInterface(&events); }));
  if (!life.expired()) {
    gone_ = !lives;
    losses_ = program.Losses();
  }
  return lives;
}

ItemEventConnection::~ItemEventConnection() {
  const BusyScope busy(program_.Owner());
  sink_->Close();
  program_.Attempt([&] { return point_->Unadvise(cookie_); });
  program_.LetGo(std::move(point_));
  // Nobody outside reaches it any more, even where the program did not answer.
  ::CoDisconnectObject(sink_.Get(), 0);
}

}  // namespace velkor
