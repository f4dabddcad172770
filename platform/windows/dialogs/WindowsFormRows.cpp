// platform/windows/dialogs/WindowsFormRows.cpp: widths, heights and places of the windows of a
// form's rows.
#include "platform/windows/dialogs/WindowsFormRows.h"

#include <algorithm>
#include <numeric>
#include <utility>

#include "platform/windows/elements/MakePeer.h"
#include "platform/windows/system/Modules.h"

namespace velkor {
namespace {

// Pixels of 96 to the inch.
constexpr int Margin = 14;
constexpr int Gap = 8;
constexpr int FrameMargin = 10;
constexpr int ButtonsGap = 6;

/// In dialog units, so that as much text fits whatever the font.
constexpr int LeastTextWidth = 240;

constexpr double HeadingScale = 1.6;

bool IsInput(const Element& element) {
  return dynamic_cast<const TextBox*>(&element) || dynamic_cast<const CheckBox*>(&element) ||
         dynamic_cast<const OptionButton*>(&element) || dynamic_cast<const ComboBox*>(&element) ||
         dynamic_cast<const CheckListBox*>(&element);
}

bool IsLabel(const Element& element) {
  return dynamic_cast<const Label*>(&element) != nullptr;
}

/// Whether an element is a choice that is not made, of several of which another one is.
bool IsOtherChoice(const Element& element) {
  const auto* const option = dynamic_cast<const OptionButton*>(&element);
  return option != nullptr && !option->Chosen() &&
         std::any_of(option->group.begin(), option->group.end(),
                     [](const OptionButton* other) { return other->Chosen(); });
}

}  // namespace

WindowsFormRows::WindowsFormRows(const Form& form, HWND dialog)
    : dialog_(dialog), units_(DensityOf(dialog)) {
  for (const FormRow& row : form.Rows()) AddRow(row);
  Measure();
  GroupKeys();
}

void WindowsFormRows::TakeDensity(Density density) {
  units_ = density;
  // Kept for the windows that have it until they are told of the new one.
  const FontHandle heading = std::exchange(headingFont_, nullptr);
  for (const auto& peer : peers_) peer->TakeDensity(density);
  for (const Block& block : blocks_) {
    if (block.frame != nullptr) TakeFont(block.frame);
  }
  Measure();
}

void WindowsFormRows::TakeFont(HWND window) const {
  const LRESULT font = ::SendMessageW(dialog_, WM_GETFONT, 0, 0);
  ::SendMessageW(window, WM_SETFONT, static_cast<WPARAM>(font), FALSE);
}

void WindowsFormRows::AddRow(const FormRow& row) {
  EnterGroup(row.group);
  Row added{row.kind, {}};
  for (const FormCell& cell : row.cells) added.cells.push_back(MakeCell(row, cell));
  blocks_.back().rows.push_back(std::move(added));
}

/// What follows stands in the frame with this caption, a new one unless the last row stands there.
/// The frame is before its content in the order of windows, as screen readers expect; transparent,
/// so that it leaves the content alone.
void WindowsFormRows::EnterGroup(const std::string& group) {
  if (!blocks_.empty() && blocks_.back().group == group) return;
  Block& block = blocks_.emplace_back();
  block.group = group;
  if (group.empty()) return;
  block.frame = ::CreateWindowExW(WS_EX_TRANSPARENT, L"BUTTON", ToCaption(group).c_str(),
                                  WS_CHILD | WS_VISIBLE | BS_GROUPBOX, 0, 0, 0, 0, dialog_, nullptr,
                                  ThisModule(), nullptr);
  TakeFont(block.frame);
}

/// Pictures and the buttons at the bottom keep their size; labels that share the room wrap.
WindowsFormRows::Cell WindowsFormRows::MakeCell(const FormRow& row, const FormCell& described) {
  Element& element = *described.element;
  auto made = MakePeerOf<Label, CommandButton, Image, TextBox, CheckBox, OptionButton, ComboBox,
                         CheckListBox>(element, dialog_, Placement::Layout);
  const bool isButton = row.kind == FormRowKind::Buttons;
  auto* const button = dynamic_cast<CommandButton*>(&element);
  if (isButton && button != nullptr && default_ == nullptr) {
    default_ = button;
    ::SetWindowLongPtrW(made->Window(), GWLP_ID, IDOK);
    ::SendMessageW(dialog_, DM_SETDEFID, IDOK, 0);
    ::SendMessageW(made->Window(), BM_SETSTYLE, BS_DEFPUSHBUTTON, FALSE);
  }
  Cell cell;
  cell.element = &element;
  cell.peer = made.get();
  cell.share = isButton || dynamic_cast<Image*>(&element) != nullptr ? 0 : described.width;
  cell.takesHeight = dynamic_cast<CheckListBox*>(&element) != nullptr;
  peers_.push_back(std::move(made));
  return cell;
}

void WindowsFormRows::Measure() {
  textWidth_ = DialogUnits(dialog_, {LeastTextWidth, 0}).cx;
  for (Block& block : blocks_) {
    for (Row& row : block.rows) {
      for (Cell& cell : row.cells) MeasureCell(row, cell);
    }
  }
  AlignLabels();
}

void WindowsFormRows::MeasureCell(const Row& row, Cell& cell) {
  const bool isLabel = IsLabel(*cell.element);
  const bool isHeading = row.kind == FormRowKind::Heading;
  if (isHeading && isLabel) MakeHeading(cell.peer->Window());
  // Letters may reach beyond what the font says that they take.
  const int overhang = isLabel ? units_.Length(2) : 0;
  cell.width = cell.peer->NeededSize(0).cx + overhang;
  const bool wraps = isLabel && cell.share > 0 && !isHeading;
  cell.leastWidth = wraps ? std::min(cell.width, textWidth_ / 2) : cell.width;
}

void WindowsFormRows::MakeHeading(HWND window) {
  if (!headingFont_) {
    const auto ordinary = reinterpret_cast<HFONT>(::SendMessageW(window, WM_GETFONT, 0, 0));
    headingFont_ = MakeHeadingFont(ordinary, HeadingScale);
    if (!headingFont_) return;
  }
  ::SendMessageW(window, WM_SETFONT, reinterpret_cast<WPARAM>(headingFont_.get()), FALSE);
}

/// What follows the labels of a frame, or of the rows between two frames, stands in columns.
void WindowsFormRows::AlignLabels() {
  for (Block& block : blocks_) {
    for (std::size_t place = 0;; ++place) {
      std::vector<Cell*> leading;
      bool isLonger = false;
      for (Row& row : block.rows) {
        if (row.kind == FormRowKind::Buttons || place + 1 >= row.cells.size()) continue;
        isLonger = true;
        Cell& cell = row.cells[place];
        if (IsLabel(*cell.element) && cell.share == 0) leading.push_back(&cell);
      }
      if (!isLonger) break;
      int widest = 0;
      for (const Cell* cell : leading) widest = std::max(widest, cell->width);
      for (Cell* cell : leading) cell->width = cell->leastWidth = widest;
    }
  }
}

/// The arrow keys move between the buttons of one row; everything else is its own group of keys.
void WindowsFormRows::GroupKeys() {
  for (const Block& block : blocks_) {
    for (const Row& row : block.rows) {
      for (const Cell& cell : row.cells) {
        const bool follows = row.kind == FormRowKind::Buttons && &cell != &row.cells.front();
        if (follows) continue;
        const HWND window = cell.peer->Window();
        ::SetWindowLongW(window, GWL_STYLE, ::GetWindowLongW(window, GWL_STYLE) | WS_GROUP);
      }
    }
  }
}

Element* WindowsFormRows::First() const {
  for (const Block& block : blocks_) {
    for (const Row& row : block.rows) {
      for (const Cell& cell : row.cells) {
        const Element& element = *cell.element;
        const bool waits = !element.Visible() || !element.Enabled() || IsOtherChoice(element);
        if (IsInput(element) && !waits) return cell.element;
      }
    }
  }
  return default_;
}

WindowsFormRows::Box WindowsFormRows::Inside(const Block& block, Box box) const {
  if (block.frame == nullptr) return box;
  const int margin = units_.Length(FrameMargin);
  const int caption = MetricsOfFont(dialog_).tmHeight;
  return {box.left + margin, box.top + caption + margin / 2, box.width - 2 * margin};
}

/// What a frame takes above and below its rows.
int WindowsFormRows::FrameHeight(const Block& block) const {
  return block.frame == nullptr ? 0 : Inside(block, {}).top + units_.Length(FrameMargin);
}

int WindowsFormRows::LeastRowWidth(const Row& row) const {
  const auto gaps = static_cast<int>(row.cells.size()) - 1;
  return std::accumulate(row.cells.begin(), row.cells.end(), units_.Length(Gap) * gaps,
                         [](int sum, const Cell& cell) { return sum + cell.leastWidth; });
}

/// Cells that need more than their share get what they need; the others share the rest.
std::vector<int> WindowsFormRows::Widths(const Row& row, int room) const {
  const std::size_t count = row.cells.size();
  std::vector<int> widths(count);
  std::vector<bool> shares(count);
  int left = room - units_.Length(Gap) * (static_cast<int>(count) - 1);
  int parts = 0;
  const auto settle = [&](std::size_t i) {
    widths[i] = row.cells[i].leastWidth;
    left -= widths[i];
  };
  for (std::size_t i = 0; i < count; ++i) {
    shares[i] = row.cells[i].share > 0;
    if (shares[i]) {
      parts += row.cells[i].share;
    } else {
      settle(i);
    }
  }
  for (bool again = true; again;) {
    again = false;
    for (std::size_t i = 0; i < count && !again; ++i) {
      const Cell& cell = row.cells[i];
      if (!shares[i] || cell.leastWidth * parts <= left * cell.share) continue;
      settle(i);
      parts -= cell.share;
      shares[i] = false;
      again = true;
    }
  }
  for (std::size_t i = 0; i < count; ++i) {
    if (shares[i]) widths[i] = left * row.cells[i].share / parts;
  }
  return widths;
}

int WindowsFormRows::RowHeight(const Row& row, const std::vector<int>& widths) const {
  LONG height = 0;
  for (std::size_t i = 0; i < row.cells.size(); ++i) {
    height = std::max(height, row.cells[i].peer->NeededSize(widths[i]).cy);
  }
  return height;
}

/// Beside the gap between two rows.
int WindowsFormRows::GapAbove(const Row& row) const {
  return row.kind == FormRowKind::Buttons ? units_.Length(ButtonsGap) : 0;
}

bool WindowsFormRows::TakesHeight(const Row& row) {
  return std::any_of(row.cells.begin(), row.cells.end(),
                     [](const Cell& cell) { return cell.takesHeight; });
}

int WindowsFormRows::HeightAt(int width) const {
  int height = 2 * units_.Length(Margin) - units_.Length(Gap);
  for (const Block& block : blocks_) {
    const Box box = Inside(block, {0, 0, width - 2 * units_.Length(Margin)});
    height += FrameHeight(block) + units_.Length(Gap) * static_cast<int>(block.rows.size());
    for (const Row& row : block.rows)
      height += GapAbove(row) + RowHeight(row, Widths(row, box.width));
  }
  return height;
}

int WindowsFormRows::LeastWidth() const {
  int width = textWidth_;
  for (const Block& block : blocks_) {
    const int taken = -Inside(block, {}).width + 2 * units_.Length(Margin);
    for (const Row& row : block.rows) width = std::max(width, LeastRowWidth(row) + taken);
  }
  return width;
}

SIZE WindowsFormRows::WantedArea() const {
  const int width = LeastWidth();
  return {width, HeightAt(width)};
}

SIZE WindowsFormRows::LeastArea() const {
  SIZE least = WantedArea();
  for (const Block& block : blocks_) {
    for (const Row& row : block.rows) {
      // Less than half a list is hard to use.
      if (TakesHeight(row)) least.cy -= RowHeight(row, Widths(row, least.cx)) / 2;
    }
  }
  return least;
}

void WindowsFormRows::Arrange(SIZE area, POINT corner) {
  const int margin = units_.Length(Margin);
  int extra = static_cast<int>(area.cy) - HeightAt(area.cx);
  Box box{static_cast<int>(corner.x) + margin, static_cast<int>(corner.y) + margin,
          static_cast<int>(area.cx) - 2 * margin};
  for (const Block& block : blocks_) {
    const int top = box.top;
    Box inside = Inside(block, box);
    for (const Row& row : block.rows) {
      // Without a list the height that is left over stands before the buttons.
      inside.top += GapAbove(row);
      if (row.kind == FormRowKind::Buttons) inside.top += std::exchange(extra, 0);
      const int more = TakesHeight(row) ? std::exchange(extra, 0) : 0;
      inside.top += ArrangeRow(row, inside, more) + units_.Length(Gap);
    }
    box.top = inside.top;
    if (block.frame == nullptr) continue;
    const int bottom = inside.top - units_.Length(Gap) + units_.Length(FrameMargin);
    ::SetWindowPos(block.frame, nullptr, box.left, top, box.width, bottom - top,
                   SWP_NOZORDER | SWP_NOACTIVATE);
    box.top = bottom + units_.Length(Gap);
  }
  ::InvalidateRect(dialog_, nullptr, TRUE);
}

/// @param extra  what the row is higher than it needs to be
/// @return the row's height
int WindowsFormRows::ArrangeRow(const Row& row, Box box, int extra) const {
  const std::vector<int> widths = Widths(row, box.width);
  const int height = RowHeight(row, widths) + extra;
  int left = box.left;
  if (row.kind == FormRowKind::Buttons) left += box.width - LeastRowWidth(row);
  for (std::size_t i = 0; i < row.cells.size(); ++i) {
    const Cell& cell = row.cells[i];
    const int needed = static_cast<int>(cell.peer->NeededSize(widths[i]).cy);
    const int own = cell.takesHeight ? height : std::min(needed, height);
    ::SetWindowPos(cell.peer->Window(), nullptr, left, box.top + (height - own) / 2, widths[i], own,
                   SWP_NOZORDER | SWP_NOACTIVATE);
    left += widths[i] + units_.Length(Gap);
  }
  return height;
}

}  // namespace velkor
