// hosts/windows/OutlookVelkor/PlannerAccess.h: what the property page asks of a control on its
// thread.
#pragma once

#include "control/PropertyTable.h"
#include "platform/windows/com/ComObject.h"

namespace velkor {

// As in ComObject.h: Release ends it.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wnon-virtual-dtor"

/// Reaches all properties, also the one that has no member for programs. Of this library alone: no
/// other process knows how to pass it on.
class IPlannerAccess : public IUnknown {
 public:
  virtual HRESULT STDMETHODCALLTYPE GetProperties(PlannerProperties* properties) = 0;
  /// Refuses what the property does not take, with error information.
  virtual HRESULT STDMETHODCALLTYPE SetProperty(const Property* property,
                                                const PropertyValue* value) = 0;
};

#pragma GCC diagnostic pop

}  // namespace velkor

__CRT_UUID_DECL(velkor::IPlannerAccess, 0xb5a8f0c4, 0x50d1, 0x4f0e, 0x9c, 0x1c, 0x0d, 0x6f, 0x3a,
                0x9a, 0x7e, 0x42)
