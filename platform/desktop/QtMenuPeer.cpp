// platform/desktop/QtMenuPeer.cpp: menus that pop up at a point of a control.
#include <QMenu>
#include <QPointer>
#include <vector>

#include "platform/desktop/QtPeers.h"
#include "platform/desktop/QtText.h"

namespace velkor {
namespace {

/// One entry of a menu that was built. The action may vanish before it, with its menu.
class EntryPeer : public ElementPeer {
 public:
  EntryPeer(MenuItem& item, QAction* action) : item_(item), action_(action) {
    QObject::connect(action, &QAction::triggered, action, [&item](bool) { item.Click(); });
    item_.Attach(this);
    Changed();
  }
  ~EntryPeer() override { item_.Attach(nullptr); }
  EntryPeer(const EntryPeer&) = delete;
  EntryPeer& operator=(const EntryPeer&) = delete;

  void Changed() override {
    if (!action_) return;
    action_->setText(ToQt(item_.Caption()));
    action_->setEnabled(item_.Enabled());
    action_->setVisible(item_.Visible());
    action_->setToolTip(ToolTipText(item_.ToolTip()));
    // A mark is shown where the element has one: what the user presses changes nothing by itself.
    action_->setCheckable(item_.Checked());
    action_->setChecked(item_.Checked());
  }

 private:
  MenuItem& item_;
  QPointer<QAction> action_;
};

class MenuPeer : public ElementPeer {
 public:
  MenuPeer(Menu& menu, QWidget* control) : menu_(menu), control_(control) { menu_.Attach(this); }
  ~MenuPeer() override {
    entries_.clear();
    delete shown_;
    menu_.Attach(nullptr);
  }
  MenuPeer(const MenuPeer&) = delete;
  MenuPeer& operator=(const MenuPeer&) = delete;

  void Changed() override {}

  /// Returns while the menu is open: what is chosen arrives later.
  void PopUp(Point position) override {
    entries_.clear();
    // One of its own entries may be running.
    if (shown_) shown_->deleteLater();
    shown_ = new QMenu(control_);
    shown_->setObjectName(ToQt(menu_.Name()));
    Fill(*shown_, menu_.entries);
    shown_->popup(control_->mapToGlobal(ToQtPixels({position.x, position.y, 0, 0}).topLeft()));
  }

 private:
  void Fill(QMenu& menu, const std::vector<MenuItem*>& items) {
    menu.setToolTipsVisible(true);
    for (MenuItem* item : items) {
      if (item->Caption().empty()) {
        menu.addSeparator();
        continue;
      }
      QAction* action = nullptr;
      if (item->entries.empty()) {
        action = menu.addAction(QString());
      } else {
        QMenu* const inner = menu.addMenu(QString());
        Fill(*inner, item->entries);
        action = inner->menuAction();
      }
      entries_.push_back(std::make_unique<EntryPeer>(*item, action));
    }
  }

  Menu& menu_;
  QWidget* control_;
  QPointer<QMenu> shown_;
  std::vector<std::unique_ptr<EntryPeer>> entries_;
};

}  // namespace

std::unique_ptr<ElementPeer> MakePeer(Menu& menu, QWidget* control) {
  return std::make_unique<MenuPeer>(menu, control);
}

}  // namespace velkor
