// hosts/windows/TryOut/TryOutForm.h: a window with the control, as a customer's form has it.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "hosts/windows/TryOut/ControlContainer.h"
#include "hosts/windows/TryOut/FormBar.h"
#include "platform/windows/system/WindowsFiles.h"

namespace velkor {

/// A bar with the control's properties, the control, and a line with its status. On the thread that
/// initialised OLE.
class TryOutForm {
 public:
  TryOutForm();
  ~TryOutForm();
  TryOutForm(const TryOutForm&) = delete;
  TryOutForm& operator=(const TryOutForm&) = delete;

  /// What the control tells, after the form showed it; each may be unset.
  ControlListener listener;

  /// Opens the window, empty; again after it was closed. Throws Error.
  void Open();
  bool IsOpen() const { return window_ != nullptr; }
  /// Takes the control away, and the window with it.
  void Close();

  /// Makes the control anew (see ControlContainer::Place), in an open window.
  std::string Place(const std::optional<std::string>& properties);
  ControlContainer& Container();

  /// Throw Error (PathNotFound, FileNotFound) with the path.
  void Save(const std::string& path);
  /// Makes the control anew from saved properties.
  /// @return what the control said against them; empty for nothing
  std::string Restore(const std::string& path);

  /// Gives the control this size in pixels, and the window what that takes.
  void Resize(SIZE control);

  /// Lets messages flow for a time, until `holds`, or until the program is to end.
  /// @param milliseconds  below 0 for no limit
  /// @return whether it holds; without it, whether the program goes on
  bool Pump(int milliseconds, const std::function<bool()>& holds = {});

  /// With the window open and the properties of the last time: runs until the user closes it.
  void RunForUser();

 private:
  static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
  std::optional<LRESULT> Handle(UINT message, WPARAM wParam, LPARAM lParam);
  void OnCommand(int command);
  bool TranslateKey(MSG& message);
  void TakeFont();
  void TakeDensity(UINT dots, const RECT& place);
  void Arrange();
  RECT ControlPlace() const;
  void ShowStatus(const std::string& text);
  void Tell(const std::string& text) const;

  Density density_;
  FontHandle font_;
  HWND window_ = nullptr;
  HWND status_ = nullptr;
  HWND lastFocus_ = nullptr;
  int barHeight_ = 0;
  std::unique_ptr<FormBar> bar_;
  std::unique_ptr<ControlContainer> container_;
  bool forUser_ = false;
};

/// Where the properties of the last time lie: TryOut.properties in the user's settings folder
/// (APPDATA) below OutlookVelkor; the folder is made.
std::string UsersPropertyFile();

}  // namespace velkor
