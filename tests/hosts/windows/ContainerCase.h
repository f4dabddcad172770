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

  static CLSID Id() {
    CLSID id{};
    EXPECT_EQ(::CLSIDFromProgID(L"OutlookVelkor.YearPlan", &id), S_OK);
    return id;
  }
  template <typename Interface>
  static ComPtr<Interface> Create() {
    ComPtr<Interface> made;
    EXPECT_EQ(::CoCreateInstance(Id(), nullptr, CLSCTX_INPROC_SERVER, IID_PPV_ARGS(&made)), S_OK);
    return made;
  }
  BareContainer& Container() {
    container_ = ComPtr<BareContainer>(new BareContainer(Create<IOleObject>()));
    return *container_.Get();
  }
  template <typename Interface>
  ComPtr<Interface> Control() {
    ComPtr<Interface> answered;
    EXPECT_EQ(container_->control.As(&answered), S_OK);
    return answered;
  }

  ComPtr<BareContainer> container_;
};

}  // namespace velkor
