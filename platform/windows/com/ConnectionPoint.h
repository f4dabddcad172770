// platform/windows/com/ConnectionPoint.h: those who listen to an object's events.
#pragma once

#include <initializer_list>
#include <map>
#include <vector>

#include "platform/windows/com/ComObject.h"

namespace velkor {

/// One outgoing interface of an object. The object owns it and calls Detach at its own end, since
/// listeners may hold it longer.
class ConnectionPoint : public ComObject<IConnectionPoint> {
 public:
  /// @param container  the object whose events these are; no reference is held
  ConnectionPoint(IConnectionPointContainer& container, REFIID events)
      : container_(&container), events_(events) {}

  /// Lets all listeners go.
  void Detach();
  /// All listeners, as the interface of the events or as what they are known by. They may come and
  /// go while one of them is called.
  std::vector<ComPtr<IUnknown>> Listeners() const;
  /// Calls a member of a dispatch interface on every listener; what fails there is theirs.
  /// @param arguments  in their order; what a listener writes into those passed by reference stays
  void Fire(DISPID member, std::initializer_list<VARIANT> arguments);

  STDMETHODIMP GetConnectionInterface(IID* events) override;
  STDMETHODIMP GetConnectionPointContainer(IConnectionPointContainer** container) override;
  STDMETHODIMP Advise(IUnknown* listener, DWORD* cookie) override;
  STDMETHODIMP Unadvise(DWORD cookie) override;
  STDMETHODIMP EnumConnections(IEnumConnections** connections) override;

 private:
  IConnectionPointContainer* container_;
  IID events_;
  std::map<DWORD, ComPtr<IUnknown>> listeners_;
  DWORD lastCookie_ = 0;
};

/// Answers IConnectionPointContainer for an object with these points.
HRESULT FindConnectionPoint(std::initializer_list<ConnectionPoint*> points, REFIID events,
                            IConnectionPoint** found);
HRESULT EnumerateConnectionPoints(std::initializer_list<ConnectionPoint*> points,
                                  IEnumConnectionPoints** enumeration);

}  // namespace velkor
