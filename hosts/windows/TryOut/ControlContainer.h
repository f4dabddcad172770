// hosts/windows/TryOut/ControlContainer.h: the control in a window of the system's own container.
#pragma once

#include <memory>
#include <optional>
#include <string>

#include "hosts/windows/TryOut/ControlEvents.h"
#include "platform/windows/drawing/DibSection.h"

namespace velkor {

/// Holds one control at a time in a child window of atl.dll. On the thread that initialised OLE.
class ControlContainer {
 public:
  /// @param parent  window that the control stands in; outlives this
  explicit ControlContainer(HWND parent) : parent_(parent) {}
  ~ControlContainer() { Remove(); }
  ControlContainer(const ControlContainer&) = delete;
  ControlContainer& operator=(const ControlContainer&) = delete;

  /// Takes effect with the next control.
  ControlListener listener;

  /// Makes the control, in the place of the one that was there, and has it load its properties
  /// before it starts.
  /// @param place  in pixels of the parent
  /// @param properties  as Properties gave them; none for a newly placed control
  /// @return what the control said against the properties; empty for nothing. It stands there with
  ///   its defaults then.
  /// Throws Error with what to do when there is no control to make.
  std::string Place(const RECT& place, const std::optional<std::string>& properties);
  void Remove();
  bool IsPlaced() const { return control_ != nullptr; }
  void Move(const RECT& place);

  /// These throw Error while there is no control.
  IDispatch& Control() const;
  /// The control's own window.
  HWND ControlWindow() const;
  /// All properties, as bytes that Place takes.
  std::string Properties() const;
  /// The control drawn by itself, in the size that it has on the screen.
  std::unique_ptr<DibSection> Draw() const;
  SIZE Size() const;

  /// Offers a key message to the control when it has the keyboard.
  /// @return whether it was handled
  bool TranslateKey(MSG& message) const;
  /// Takes the keyboard to the control.
  void Focus() const;

 private:
  ComPtr<IStream> MakeStream(const std::optional<std::string>& properties) const;
  template <typename Interface>
  ComPtr<Interface> As(const char* doing) const;

  HWND parent_;
  HWND window_ = nullptr;
  ComPtr<IDispatch> control_;
  std::unique_ptr<ControlEvents> events_;
};

}  // namespace velkor
