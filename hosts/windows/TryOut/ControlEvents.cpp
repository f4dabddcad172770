// hosts/windows/TryOut/ControlEvents.cpp: sinks of the control's event interface and of its
// changing properties.
#include "hosts/windows/TryOut/ControlEvents.h"

#include "OutlookVelkor.h"
#include "platform/windows/com/ComError.h"
#include "platform/windows/com/DispatchSink.h"

namespace velkor {
namespace {

/// Of _YearPlanEvents.
constexpr DISPID StatusChange = 1;

VARIANT& ArgumentOf(const DISPPARAMS& parameters, UINT place) {
  return parameters.rgvarg[parameters.cArgs - 1 - place];
}

std::string TextOf(VARIANT& argument) {
  Variant text;
  ::VariantCopyInd(text.Out(), &argument);
  return text.ToText();
}

class EventSink : public DispatchSink {
 public:
  explicit EventSink(const ControlListener& listener)
      : DispatchSink(DIID__YearPlanEvents), listener_(listener) {}

  STDMETHODIMP Invoke(DISPID member, REFIID, LCID, WORD, DISPPARAMS* parameters, VARIANT*,
                      EXCEPINFO*, UINT*) override {
    return Answer([&] {
      if (member == StatusChange && parameters->cArgs == 1 && listener_.onStatus) {
        listener_.onStatus(TextOf(ArgumentOf(*parameters, 0)));
      }
      if (member == DISPID_ERROREVENT && parameters->cArgs == 7 && listener_.onError) {
        listener_.onError(ArgumentOf(*parameters, 0).iVal, TextOf(ArgumentOf(*parameters, 1)));
      }
    });
  }

 private:
  const ControlListener& listener_;
};

class PropertySink : public ComObject<IPropertyNotifySink> {
 public:
  PropertySink(ComPtr<ITypeInfo> types, const ControlListener& listener)
      : types_(std::move(types)), listener_(listener) {}

  STDMETHODIMP OnChanged(DISPID member) override {
    return Answer([&] {
      BSTR name = nullptr;
      UINT count = 0;
      if (types_) types_->GetNames(member, &name, 1, &count);
      const std::string text = ToUtf8(name);
      ::SysFreeString(name);
      if (listener_.onPropertyChanged) listener_.onPropertyChanged(text);
    });
  }
  STDMETHODIMP OnRequestEdit(DISPID) override { return S_OK; }

 private:
  ComPtr<ITypeInfo> types_;
  const ControlListener& listener_;
};

}  // namespace

ControlEvents::ControlEvents(IDispatch& control, const ControlListener& listener) {
  const ComPtr<EventSink> events(new EventSink(listener));
  events_ = Connect(control, DIID__YearPlanEvents, events.Get());
  ComPtr<ITypeInfo> types;
  control.GetTypeInfo(0, LOCALE_USER_DEFAULT, &types);
  const ComPtr<PropertySink> properties(new PropertySink(std::move(types), listener));
  properties_ = Connect(control, __uuidof(IPropertyNotifySink), properties.Get());
}

ControlEvents::~ControlEvents() {
  for (const Connection* connection : {&events_, &properties_}) {
    if (connection->point) connection->point->Unadvise(connection->cookie);
  }
}

ControlEvents::Connection ControlEvents::Connect(IDispatch& control, REFIID events,
                                                 IUnknown* sink) {
  Connection connection;
  ComPtr<IConnectionPointContainer> points;
  Check(control.QueryInterface(IID_PPV_ARGS(&points)), "The control tells no events");
  Check(points->FindConnectionPoint(events, &connection.point), "The control tells no such events");
  const HRESULT result = connection.point->Advise(sink, &connection.cookie);
  if (FAILED(result)) connection.point.Reset();
  Check(result, "The control does not take a listener");
  return connection;
}

}  // namespace velkor
