// hosts/yearplan/window/CalendarPane.cpp: rows of two lines, and the menu of each.
#include "hosts/yearplan/window/CalendarPane.h"

#include <QAction>
#include <QApplication>
#include <QHBoxLayout>
#include <QIcon>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QMessageBox>
#include <QPainter>
#include <QSignalBlocker>
#include <QStyledItemDelegate>
#include <QToolButton>
#include <QVBoxLayout>
#include <algorithm>
#include <utility>

#include "hosts/yearplan/window/ColourSquare.h"
#include "hosts/yearplan/window/QuietText.h"
#include "platform/desktop/QtDialogs.h"
#include "platform/desktop/QtMessageBoxes.h"
#include "platform/desktop/QtPeers.h"
#include "platform/desktop/QtText.h"

namespace velkor {
namespace {

enum Role { StateRole = Qt::UserRole, FailingRole };

/// Draws the state below the name; the style draws the rest, and names are edited in the first
/// line.
class RowDelegate : public QStyledItemDelegate {
 public:
  using QStyledItemDelegate::QStyledItemDelegate;

  QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override {
    QStyleOptionViewItem item = option;
    initStyleOption(&item, index);
    const QSize one = QStyledItemDelegate::sizeHint(option, index);
    return {one.width(), 2 * item.fontMetrics.height() + Air};
  }

  void paint(QPainter* painter, const QStyleOptionViewItem& option,
             const QModelIndex& index) const override {
    QStyleOptionViewItem item = option;
    initStyleOption(&item, index);
    const QRect words = TextOf(item);
    const QString name = std::exchange(item.text, QString());
    const QStyle& style = *StyleOf(item);
    style.drawControl(QStyle::CE_ItemViewItem, &item, painter, item.widget);

    const bool selected = item.state.testFlag(QStyle::State_Selected);
    const QPalette& colours = item.palette;
    const QColor plain = colours.color(selected ? QPalette::HighlightedText : QPalette::WindowText);
    painter->save();
    painter->setFont(item.font);
    DrawLine(*painter, item, words, 0, name, plain);
    QColor quiet = selected ? plain : QuietColour(colours);
    if (index.data(FailingRole).toBool() && !selected) quiet = FailingColour;
    QFont plainFont = item.font;
    plainFont.setBold(false);
    painter->setFont(plainFont);
    DrawLine(*painter, item, words, 1, index.data(StateRole).toString(), quiet);
    painter->restore();
  }

  void updateEditorGeometry(QWidget* editor, const QStyleOptionViewItem& option,
                            const QModelIndex& index) const override {
    QStyleOptionViewItem item = option;
    initStyleOption(&item, index);
    QRect place = TextOf(item);
    place.setHeight(std::min(place.height(), editor->sizeHint().height()));
    editor->setGeometry(place);
  }

 private:
  static constexpr int Air = 8;
  static constexpr QColor FailingColour{0xC0, 0x2B, 0x1D};

  static const QStyle* StyleOf(const QStyleOptionViewItem& item) {
    return item.widget ? item.widget->style() : QApplication::style();
  }

  static QRect TextOf(const QStyleOptionViewItem& item) {
    return StyleOf(item)->subElementRect(QStyle::SE_ItemViewItemText, &item, item.widget);
  }

  static void DrawLine(QPainter& painter, const QStyleOptionViewItem& item, QRect words, int line,
                       const QString& text, const QColor& colour) {
    const int height = item.fontMetrics.height();
    const int top = item.rect.center().y() - height + 1 + line * height;
    const QRect place(words.left() + 2, top, item.rect.right() - words.left() - 4, height);
    painter.setPen(colour);
    painter.drawText(place, Qt::AlignLeft | Qt::AlignVCenter,
                     painter.fontMetrics().elidedText(text, Qt::ElideRight, place.width()));
  }
};

}  // namespace

CalendarPane::CalendarPane(PaneCommands commands, const QList<QAction*>& adding, QWidget* parent)
    : QWidget(parent),
      commands_(std::move(commands)),
      list_(new QListWidget),
      invitation_(MakeNote(tr("No calendar yet. Press Add, or drop calendar files (.ics) here."))) {
  setObjectName("CalendarPane");
  MakeList();
  invitation_->setAlignment(Qt::AlignTop | Qt::AlignLeft);
  auto* const rows = new QVBoxLayout(this);
  rows->setContentsMargins(4, 4, 4, 4);
  rows->addWidget(invitation_, 1);
  rows->addWidget(list_, 1);
  rows->addWidget(MakeButtons(adding));
  Show({});
}

void CalendarPane::MakeList() {
  list_->setObjectName("calendarList");
  list_->setAccessibleName(tr("Calendars"));
  list_->setItemDelegate(new RowDelegate(list_));
  list_->setEditTriggers(QAbstractItemView::EditKeyPressed);
  list_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  list_->setContextMenuPolicy(Qt::CustomContextMenu);
  connect(list_, &QListWidget::itemChanged, this,
          [this](QListWidgetItem* item) { TakeEdit(*item); });
  connect(list_, &QListWidget::customContextMenuRequested, this, [this](QPoint at) {
    if (list_->itemAt(at)) PopUp(list_->viewport()->mapToGlobal(at));
  });
  connect(list_, &QListWidget::currentRowChanged, this,
          [this](int row) { rowButton_->setEnabled(row >= 0); });
  list_->installEventFilter(this);
}

bool CalendarPane::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::KeyPress &&
      dynamic_cast<const QKeyEvent&>(*event).matches(QKeySequence::Delete)) {
    AskToRemove();
    return true;
  }
  return QWidget::eventFilter(watched, event);
}

QWidget* CalendarPane::MakeButtons(const QList<QAction*>& adding) {
  const auto button = [this](const char* name, const QString& text, const QString& tip) {
    auto* const made = new QToolButton;
    made->setObjectName(QString::fromLatin1(name));
    made->setText(text);
    made->setToolTip(tip);
    made->setToolButtonStyle(Qt::ToolButtonTextOnly);
    made->setPopupMode(QToolButton::InstantPopup);
    made->setFocusPolicy(Qt::StrongFocus);
    made->setMenu(new QMenu(this));
    return made;
  };
  QToolButton* const add = button("addCalendar", tr("Add"), tr("Add a calendar to the planner"));
  add->menu()->addActions(adding);
  rowButton_ = button("calendarMenu", tr("Calendar"), tr("What can be done with this calendar"));
  rowButton_->setEnabled(false);
  connect(rowButton_->menu(), &QMenu::aboutToShow, this, [this] { FillMenu(*rowButton_->menu()); });
  auto* const bar = new QWidget;
  auto* const row = new QHBoxLayout(bar);
  row->setContentsMargins(0, 0, 0, 0);
  row->addWidget(add);
  row->addWidget(rowButton_);
  row->addStretch();
  return bar;
}

void CalendarPane::Show(const std::vector<CalendarRow>& rows) {
  const bool same = std::ranges::equal(rows, rows_, {}, &CalendarRow::id, &CalendarRow::id);
  const CalendarRow* const current = Current();
  const std::string selected = current ? current->id : std::string();
  rows_ = rows;
  const QSignalBlocker silent(list_);
  if (!same) list_->clear();
  for (std::size_t i = 0; i < rows_.size(); ++i) {
    const int at = static_cast<int>(i);
    if (!same) list_->addItem(new QListWidgetItem);
    // News would put the old name back into the field in which a new one is being typed.
    if (!list_->isPersistentEditorOpen(list_->item(at))) Mirror(*list_->item(at), rows_[i]);
    if (!same && rows_[i].id == selected) list_->setCurrentRow(at);
  }
  list_->setHidden(rows_.empty());
  invitation_->setVisible(rows_.empty());
  rowButton_->setEnabled(list_->currentRow() >= 0);
}

void CalendarPane::Mirror(QListWidgetItem& item, const CalendarRow& row) const {
  const QString name = ToQt(row.name);
  const QString state = StateOf(row);
  item.setFlags(Qt::ItemIsSelectable | Qt::ItemIsEnabled | Qt::ItemIsUserCheckable |
                Qt::ItemIsEditable);
  item.setText(name);
  item.setCheckState(row.shown ? Qt::Checked : Qt::Unchecked);
  item.setData(StateRole, state);
  item.setData(FailingRole, row.IsFailing());
  item.setIcon(ColourSquare(row.colour, row.daysOff));
  QFont font = list_->font();
  font.setBold(row.isDefault);
  item.setFont(font);
  QString said = tr("%1: %2").arg(name, state);
  if (row.isDefault) said += tr(", takes new appointments");
  item.setData(Qt::AccessibleTextRole, said);
  if (row.offline && !row.trouble.empty()) said += "\n" + ToQt(row.trouble);
  item.setToolTip(ToolTipText(said.toStdString()));
}

void CalendarPane::TakeEdit(const QListWidgetItem& item) {
  CalendarRow& row = rows_.at(static_cast<std::size_t>(list_->row(&item)));
  // The command may bring other rows.
  const std::string id = row.id;
  const bool shown = item.checkState() == Qt::Checked;
  const std::string name = item.text().trimmed().toStdString();
  if (name.empty()) return Show(std::vector<CalendarRow>(rows_));
  const bool turned = std::exchange(row.shown, shown) != shown;
  const bool renamed = std::exchange(row.name, name) != name;
  if (turned) commands_.show(id, shown);
  if (renamed) commands_.rename(id, name);
}

const CalendarRow* CalendarPane::Current() const {
  const int row = list_->currentRow();
  return row < 0 ? nullptr : &rows_.at(static_cast<std::size_t>(row));
}

void CalendarPane::FillMenu(QMenu& menu) {
  menu.clear();
  const CalendarRow* const current = Current();
  if (!current) return;
  const std::string id = current->id;
  const auto add = [&](const char* name, const QString& text, bool enabled,
                       const std::function<void()>& steps) {
    QAction* const action = menu.addAction(text);
    action->setObjectName(QString::fromLatin1(name));
    action->setEnabled(enabled);
    connect(action, &QAction::triggered, this, steps);
    return action;
  };
  const auto mark = [](QAction* action, bool checked) {
    action->setCheckable(true);
    action->setChecked(checked);
  };
  add("rename", tr("Re&name"), true, [this] { list_->editItem(list_->currentItem()); });
  add("colour", tr("&Colour..."), true, [this] { AskForColour(); });
  const bool canTake = !current->readOnly && !current->daysOff;
  mark(add("default", tr("&Take New Appointments"), canTake,
           [this, id] { commands_.makeDefault(id); }),
       current->isDefault);
  const bool daysOff = current->daysOff;
  mark(add("daysOff", tr("Show as &Days Off"), true,
           [this, id, daysOff] { commands_.markDaysOff(id, !daysOff); }),
       daysOff);
  menu.addSeparator();
  add("refresh", tr("Refresh No&w"), current->remote, [this, id] { commands_.refresh(id); });
  add("reason", tr("Show &Reason..."), !current->trouble.empty(), [this] { TellReason(); });
  add("export", tr("E&xport Refused Edits..."), current->refused > 0,
      [this, id] { commands_.exportRefused(id); });
  menu.addSeparator();
  add("remove", tr("Re&move..."), true, [this] { AskToRemove(); });
}

void CalendarPane::PopUp(QPoint at) {
  FillMenu(*rowButton_->menu());
  rowButton_->menu()->popup(at);
}

void CalendarPane::AskForColour() {
  const CalendarRow row = *Current();
  const auto colour = QtCommonDialogs(this).ShowColour(row.colour);
  if (colour && *colour != row.colour) commands_.recolour(row.id, *colour);
}

void CalendarPane::TellReason() {
  const CalendarRow& row = *Current();
  QtMessageBoxes(this).Show(
      {.text = row.name + "\n\n" + row.trouble, .title = {}, .icon = MessageIcon::Information});
}

void CalendarPane::AskToRemove() {
  const CalendarRow* const current = Current();
  if (!current) return;
  const CalendarRow row = *current;
  const std::size_t lost = row.waiting + row.refused;
  if (lost > 0) {
    const std::string edits =
        lost == 1 ? "One edit of it is" : std::to_string(lost) + " edits of it are";
    const MessageAnswer answer =
        QtMessageBoxes(this).Show({.text = "Remove \"" + row.name + "\" from the planner?\n\n" +
                                           edits + " not on the server yet and would be lost.",
                                   .title = {},
                                   .buttons = MessageButtons::YesNo,
                                   .icon = MessageIcon::Exclamation,
                                   .defaultButton = 2});
    if (answer != MessageAnswer::Yes) return;
  }
  commands_.remove(row.id);
}

}  // namespace velkor
