// tests/hosts/windows/ContainerCase.h: holds one control in a bare container for each test.
#pragma once

#include "tests/hosts/windows/BareContainer.h"

namespace velkor {

/// One control in a bare container, closed by the end.
class ContainerCase : public ControlCase {
 protected:
  ~ContainerCase() override {
    if (container_) container_->Close();
  }

  BareContainer& Container() {
    container_ = ComPtr<BareContainer>(new BareContainer(Create<IOleObject>()));
    return *container_.Get();
  }
  template <typename Interface>
  ComPtr<Interface> Control() {
    return As<Interface>(container_->control);
  }

  ComPtr<BareContainer> container_;
};

}  // namespace velkor
