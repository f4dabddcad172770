// platform/windows/elements/WindowsMenuPeer.cpp: menus that pop up at a point of a control.
#include <type_traits>
#include <vector>

#include "platform/windows/elements/MakePeer.h"
#include "platform/windows/system/DialogOwner.h"

namespace velkor {
namespace {

struct DestroyMenuHandle {
  void operator()(HMENU menu) const { ::DestroyMenu(menu); }
};
/// Owns the menus within it as well.
using MenuHandle = std::unique_ptr<std::remove_pointer_t<HMENU>, DestroyMenuHandle>;

/// Builds a menu from entries as they are now.
class MenuBuilder {
 public:
  MenuHandle Build(const std::vector<MenuItem*>& items) {
    MenuHandle menu(::CreatePopupMenu());
    bool separate = false;
    bool any = false;
    for (MenuItem* item : items) {
      if (!item->Visible()) continue;
      if (item->Caption().empty()) {
        separate = any;
        continue;
      }
      // Neither first nor last nor beside another, whichever entries are hidden.
      if (separate) ::AppendMenuW(menu.get(), MF_SEPARATOR, 0, nullptr);
      separate = false;
      any = true;
      Append(menu.get(), *item);
    }
    return menu;
  }

  /// The entry of a command; null for what is none.
  MenuItem* Entry(int command) const {
    const auto number = static_cast<std::size_t>(command);
    return number >= 1 && number <= entries_.size() ? entries_[number - 1] : nullptr;
  }

 private:
  void Append(HMENU menu, MenuItem& item) {
    const UINT flags = MF_STRING | (item.Enabled() ? MF_ENABLED : MF_GRAYED) |
                       (item.Checked() ? MF_CHECKED : MF_UNCHECKED);
    const std::wstring caption = ToWide(item.Caption());
    if (item.entries.empty()) {
      entries_.push_back(&item);
      ::AppendMenuW(menu, flags, entries_.size(), caption.c_str());
      return;
    }
    MenuHandle inner = Build(item.entries);
    const auto handle = reinterpret_cast<UINT_PTR>(inner.get());
    if (::AppendMenuW(menu, flags | MF_POPUP, handle, caption.c_str())) inner.release();
  }

  /// The command of an entry is its place here, counted from 1.
  std::vector<MenuItem*> entries_;
};

class MenuPeer : public ElementPeer {
 public:
  MenuPeer(Menu& menu, HWND control, DialogOwner& owner)
      : menu_(menu), control_(control), owner_(owner) {
    menu_.Attach(this);
  }
  ~MenuPeer() override {
    if (menu_.Peer() == this) menu_.Attach(nullptr);
  }
  MenuPeer(const MenuPeer&) = delete;
  MenuPeer& operator=(const MenuPeer&) = delete;

  void Changed() override {}

  /// Returns when the menu is gone and what was chosen is done.
  void PopUp(Point position) override {
    if (!::IsWindow(control_)) return;
    const BusyScope busy(owner_);
    MenuBuilder builder;
    if (MenuItem* const chosen = builder.Entry(Track(builder, position))) chosen->Click();
  }

 private:
  /// @return the command of what was chosen; 0 for nothing
  int Track(MenuBuilder& builder, Point position) {
    const MenuHandle shown = builder.Build(menu_.entries);
    POINT at = DensityOf(control_).ToPixels(position);
    ::ClientToScreen(control_, &at);
    return ::TrackPopupMenuEx(
        shown.get(), TPM_LEFTALIGN | TPM_TOPALIGN | TPM_RIGHTBUTTON | TPM_RETURNCMD | TPM_NONOTIFY,
        at.x, at.y, control_, nullptr);
  }

  Menu& menu_;
  HWND control_;
  DialogOwner& owner_;
};

}  // namespace

std::unique_ptr<ElementPeer> MakePeer(Menu& menu, HWND control, DialogOwner& owner) {
  return std::make_unique<MenuPeer>(menu, control, owner);
}

}  // namespace velkor
