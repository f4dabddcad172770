// platform/windows/com/ConnectionPoint.cpp: listeners by cookie, and their enumerations.
#include "platform/windows/com/ConnectionPoint.h"

#include <algorithm>
#include <iterator>

#include "platform/windows/com/Enumeration.h"

namespace velkor {
namespace {

struct KeptConnection {
  ComPtr<IUnknown> listener;
  DWORD cookie;
};

void GiveConnection(const KeptConnection& kept, CONNECTDATA& given) {
  given.pUnk = ComPtr<IUnknown>(kept.listener).Detach();
  given.dwCookie = kept.cookie;
}

void GivePoint(const ComPtr<IConnectionPoint>& kept, IConnectionPoint*& given) {
  given = ComPtr<IConnectionPoint>(kept).Detach();
}

using Connections = Enumeration<IEnumConnections, CONNECTDATA, KeptConnection, GiveConnection>;
using Points =
    Enumeration<IEnumConnectionPoints, IConnectionPoint*, ComPtr<IConnectionPoint>, GivePoint>;

}  // namespace

void ConnectionPoint::Detach() {
  container_ = nullptr;
  listeners_.clear();
}

std::vector<ComPtr<IUnknown>> ConnectionPoint::Listeners() const {
  std::vector<ComPtr<IUnknown>> listeners;
  for (const auto& [cookie, listener] : listeners_) listeners.push_back(listener);
  return listeners;
}

void ConnectionPoint::Fire(DISPID member, std::initializer_list<VARIANT> arguments) {
  // Invoke takes the last argument first.
  std::vector<VARIANT> reversed(std::rbegin(arguments), std::rend(arguments));
  for (const ComPtr<IUnknown>& listener : Listeners()) {
    ComPtr<IDispatch> sink;
    if (FAILED(listener.As(&sink))) continue;
    DISPPARAMS parameters{reversed.data(), nullptr, static_cast<UINT>(reversed.size()), 0};
    sink->Invoke(member, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD, &parameters, nullptr,
                 nullptr, nullptr);
  }
}

STDMETHODIMP ConnectionPoint::GetConnectionInterface(IID* events) {
  if (events == nullptr) return E_POINTER;
  *events = events_;
  return S_OK;
}

STDMETHODIMP ConnectionPoint::GetConnectionPointContainer(IConnectionPointContainer** container) {
  if (container == nullptr) return E_POINTER;
  *container = container_;
  if (container_ == nullptr) return E_UNEXPECTED;
  container_->AddRef();
  return S_OK;
}

STDMETHODIMP ConnectionPoint::Advise(IUnknown* listener, DWORD* cookie) {
  if (listener == nullptr || cookie == nullptr) return E_POINTER;
  *cookie = 0;
  if (container_ == nullptr) return E_UNEXPECTED;
  ComPtr<IUnknown> sink;
  // A listener of a dispatch interface need not know the interface by its own name.
  if (FAILED(listener->QueryInterface(events_, &sink)) &&
      (events_ == __uuidof(IPropertyNotifySink) ||
       FAILED(listener->QueryInterface(__uuidof(IDispatch), &sink)))) {
    return CONNECT_E_CANNOTCONNECT;
  }
  *cookie = ++lastCookie_;
  listeners_[*cookie] = std::move(sink);
  return S_OK;
}

STDMETHODIMP ConnectionPoint::Unadvise(DWORD cookie) {
  return listeners_.erase(cookie) > 0 ? S_OK : CONNECT_E_NOCONNECTION;
}

STDMETHODIMP ConnectionPoint::EnumConnections(IEnumConnections** connections) {
  if (connections == nullptr) return E_POINTER;
  std::vector<KeptConnection> kept;
  for (const auto& [cookie, listener] : listeners_) kept.push_back({listener, cookie});
  *connections = ComPtr<IEnumConnections>(new Connections(std::move(kept))).Detach();
  return S_OK;
}

HRESULT FindConnectionPoint(std::initializer_list<ConnectionPoint*> points, REFIID events,
                            IConnectionPoint** found) {
  if (found == nullptr) return E_POINTER;
  *found = nullptr;
  for (ConnectionPoint* point : points) {
    IID own{};
    point->GetConnectionInterface(&own);
    if (own == events) return point->QueryInterface(IID_PPV_ARGS(found));
  }
  return CONNECT_E_NOCONNECTION;
}

HRESULT EnumerateConnectionPoints(std::initializer_list<ConnectionPoint*> points,
                                  IEnumConnectionPoints** enumeration) {
  if (enumeration == nullptr) return E_POINTER;
  std::vector<ComPtr<IConnectionPoint>> kept;
  for (ConnectionPoint* point : points) kept.emplace_back(point);
  *enumeration = ComPtr<IEnumConnectionPoints>(new Points(std::move(kept))).Detach();
  return S_OK;
}

}  // namespace velkor
