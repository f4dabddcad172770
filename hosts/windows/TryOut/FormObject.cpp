// hosts/windows/TryOut/FormObject.cpp: the members of the object Form.
#include "hosts/windows/TryOut/FormObject.h"

#include <algorithm>
#include <cstdio>
#include <span>

#include "hosts/windows/TryOut/Console.h"
#include "hosts/windows/TryOut/PictureFile.h"
#include "hosts/windows/TryOut/WindowInput.h"
#include "values/ColourText.h"
#include "values/Text.h"

namespace velkor {
namespace {

constexpr int DialogPatience = 10000;

/// One under the other; an empty text is an empty line.
std::string Lines(std::span<const std::string> texts) {
  std::string lines;
  for (const std::string& text : texts) lines += text + "\r\n";
  return lines;
}

POINT PointOf(const Call& call) {
  return {call[0].ToInt(), call[1].ToInt()};
}

Variant Number(std::int32_t number) {
  return Variant(number);
}

Colour ColourIn(const Variant& argument) {
  const std::string text = argument.ToText();
  if (const auto colour = ColourOfHex(text)) return *colour;
  throw Error(errors::InvalidProcedureCall, "\"" + text + "\" is no colour: RRGGBB is wanted.");
}

}  // namespace

struct FormObject::Table {
  using Self = FormObject;
  static constexpr Member Members[] = {
      {"YearPlan", Bound<&Self::YearPlan>},
      {"Open", Bound<&Self::Open>},
      {"Close", Bound<&Self::Close>},
      {"Place", Bound<&Self::Place>},
      {"Save", Bound<&Self::Save>},
      {"Restore", Bound<&Self::Restore>},
      {"Resize", Bound<&Self::Resize>},
      {"Width", Bound<&Self::Width>},
      {"Height", Bound<&Self::Height>},
      {"HasKeyboard", Bound<&Self::HasKeyboard>},
      {"Status", Bound<&Self::Status>},
      {"Statuses", Bound<&Self::Statuses>},
      {"Errors", Bound<&Self::Errors>},
      {"PropertiesChanged", Bound<&Self::PropertiesChanged>},
      {"Dialogs", Bound<&Self::Dialogs>},
      {"Wait", Bound<&Self::Wait>},
      {"WaitFor", Bound<&Self::WaitFor>},
      {"Expect", Bound<&Self::Expect>},
      {"Allow", Bound<&Self::Allow>},
      {"WaitForDialogs", Bound<&Self::WaitForDialogs>},
      {"Click", Bound<&Self::Click>},
      {"RightClick", Bound<&Self::RightClick>},
      {"Move", Bound<&Self::Move>},
      {"Press", Bound<&Self::Press>},
      {"Type", Bound<&Self::Type>},
      {"Button", Bound<&Self::Button>},
      {"Draw", Bound<&Self::Draw>},
      {"Pixel", Bound<&Self::Pixel>},
      {"CountPixels", Bound<&Self::CountPixels>},
      {"FindColour", Bound<&Self::FindColour>},
      {"Print", Bound<&Self::Print>},
      {"Check", Bound<&Self::Check>},
      {"Argument", Bound<&Self::Argument>},
      {"ProcessId", Bound<&Self::ProcessId>},
      {"IsLoaded", Bound<&Self::IsLoaded>},
  };
  static constexpr ObjectClass Form = {"Form", 1, Members};
};

FormObject::FormObject(TryOutForm& form, std::vector<std::string> arguments, CallScript callScript)
    : NamedObject(Table::Form),
      form_(form),
      arguments_(std::move(arguments)),
      callScript_(std::move(callScript)) {
  form_.listener.onStatus = [this](const std::string& text) {
    statuses_.push_back(text);
    callScript_("Form_StatusChange", {Variant(text)});
  };
  form_.listener.onError = [this](int number, const std::string& description) {
    errors_.push_back(std::to_string(number) + " " + description);
    callScript_("Form_Error", {Variant(std::int32_t{number}), Variant(description)});
  };
  form_.listener.onPropertyChanged = [this](const std::string& name) {
    changed_.push_back(name);
    callScript_("Form_PropertyChanged", {Variant(name)});
  };
}

FormObject::~FormObject() {
  form_.listener = {};
}

void FormObject::Fail(const std::string& what) {
  ++failures_;
  WriteErrorLine("failed: " + what);
}

void FormObject::TakeFailures() {
  for (const std::string& failure : answers_.TakeFailures()) Fail(failure);
}

int FormObject::Finish() {
  form_.Pump(INT_MAX, [this] { return answers_.IsDone(); });
  TakeFailures();
  return failures_;
}

Variant FormObject::YearPlan(const Call&) {
  return Variant(&form_.Container().Control());
}

Variant FormObject::Open(const Call&) {
  form_.Open();
  return {};
}

Variant FormObject::Close(const Call&) {
  form_.Close();
  ::CoFreeUnusedLibrariesEx(0, 0);
  return {};
}

Variant FormObject::Place(const Call&) {
  form_.Open();
  form_.Place(std::nullopt);
  return {};
}

Variant FormObject::Save(const Call& call) {
  form_.Save(call[0].ToText());
  return {};
}

/// Answers what the control said against the properties.
Variant FormObject::Restore(const Call& call) {
  form_.Open();
  return Variant(form_.Restore(call[0].ToText()));
}

Variant FormObject::Resize(const Call& call) {
  form_.Container();
  form_.Resize({call[0].ToInt(), call[1].ToInt()});
  return {};
}

Variant FormObject::Width(const Call&) {
  return Number(form_.Container().Size().cx);
}

Variant FormObject::Height(const Call&) {
  return Number(form_.Container().Size().cy);
}

/// Whether one of the control's windows has the keyboard.
Variant FormObject::HasKeyboard(const Call&) {
  return Variant(::IsChild(form_.Container().ControlWindow(), ::GetFocus()) != FALSE);
}

Variant FormObject::Status(const Call&) {
  return Variant(statuses_.empty() ? std::string() : statuses_.back());
}

Variant FormObject::Statuses(const Call&) {
  return Variant(Lines(statuses_));
}

Variant FormObject::Errors(const Call&) {
  return Variant(Lines(errors_));
}

Variant FormObject::PropertiesChanged(const Call&) {
  return Variant(Lines(changed_));
}

Variant FormObject::Dialogs(const Call&) {
  return Variant(Lines(answers_.Met()));
}

Variant FormObject::Wait(const Call& call) {
  form_.Pump(std::max(call[0].ToInt(), 0));
  TakeFailures();
  return {};
}

/// For a status that begins so; an empty text waits for the one that clears the last. A status that
/// was told before the call does not count.
Variant FormObject::WaitFor(const Call& call) {
  const std::string text = call[0].ToText();
  const std::size_t before = statuses_.size();
  const bool came = form_.Pump(std::max(call[1].ToInt(), 0), [&] {
    return std::any_of(statuses_.begin() + static_cast<std::ptrdiff_t>(before), statuses_.end(),
                       [&](const std::string& status) {
                         return text.empty() ? status.empty() : status.starts_with(text);
                       });
  });
  TakeFailures();
  return Variant(came);
}

void FormObject::AddDialog(const Call& call, bool required) {
  answers_.Expect(call[0].ToText(), call[1].ToText(),
                  call.Has(2) ? call[2].ToInt() : DialogPatience, required);
}

Variant FormObject::Expect(const Call& call) {
  AddDialog(call, true);
  return {};
}

/// A dialog that may come.
Variant FormObject::Allow(const Call& call) {
  AddDialog(call, false);
  return {};
}

Variant FormObject::WaitForDialogs(const Call&) {
  form_.Pump(INT_MAX, [this] { return answers_.IsDone(); });
  TakeFailures();
  return {};
}

Variant FormObject::Click(const Call& call) {
  PostClick(form_.Container().ControlWindow(), PointOf(call), MouseButton::Left);
  return {};
}

Variant FormObject::RightClick(const Call& call) {
  PostClick(form_.Container().ControlWindow(), PointOf(call), MouseButton::Right);
  return {};
}

Variant FormObject::Move(const Call& call) {
  PostMove(form_.Container().ControlWindow(), PointOf(call));
  return {};
}

Variant FormObject::Press(const Call& call) {
  PostKey(form_.Container().ControlWindow(), static_cast<WPARAM>(call[0].ToInt()));
  return {};
}

/// Writes into the edit with the keyboard, over what is selected there.
Variant FormObject::Type(const Call& call) {
  PostText(call[0].ToText());
  return {};
}

Variant FormObject::Button(const Call& call) {
  PostToolbarButton(form_.Container().ControlWindow(), call[0].ToInt());
  return {};
}

/// Draws the control anew; with a path also into a file.
Variant FormObject::Draw(const Call& call) {
  const SIZE size = form_.Container().Size();
  picture_ = form_.Container().Draw();
  pictureSize_ = size;
  if (call.Has(0)) SaveBitmap(*picture_, size, call[0].ToText());
  return {};
}

const DibSection& FormObject::Picture() {
  if (!picture_) throw Error(errors::InvalidProcedureCall, "Call Draw first.");
  return *picture_;
}

Variant FormObject::Pixel(const Call& call) {
  const DibSection& picture = Picture();
  const POINT point = PointOf(call);
  const RECT area{0, 0, pictureSize_.cx, pictureSize_.cy};
  if (!::PtInRect(&area, point)) {
    throw Error(errors::SubscriptOutOfRange, "The point is outside the picture.");
  }
  return Variant(ToHex(picture.At(point.x, point.y)));
}

Variant FormObject::CountPixels(const Call& call) {
  const DibSection& picture = Picture();
  const Colour wanted = ColourIn(call[0]);
  std::int32_t count = 0;
  for (int y = 0; y < pictureSize_.cy; ++y) {
    for (int x = 0; x < pictureSize_.cx; ++x) count += picture.At(x, y) == wanted ? 1 : 0;
  }
  return Number(count);
}

/// "left top right bottom" of what has the colour in an area, so given, of the picture drawn last;
/// right and bottom lie outside. Empty for nothing.
Variant FormObject::FindColour(const Call& call) {
  const DibSection& picture = Picture();
  const Colour wanted = ColourIn(call[0]);
  const RECT whole{0, 0, pictureSize_.cx, pictureSize_.cy};
  const RECT given{call[1].ToInt(), call[2].ToInt(), call[3].ToInt(), call[4].ToInt()};
  RECT area{};
  ::IntersectRect(&area, &whole, &given);
  RECT found{};
  for (int y = area.top; y < area.bottom; ++y) {
    for (int x = area.left; x < area.right; ++x) {
      if (picture.At(x, y) != wanted) continue;
      const RECT before = found;
      const RECT pixel{x, y, x + 1, y + 1};
      ::UnionRect(&found, &before, &pixel);
    }
  }
  if (::IsRectEmpty(&found)) return Variant("");
  std::string text = std::to_string(found.left);
  for (const LONG edge : {found.top, found.right, found.bottom}) text += " " + std::to_string(edge);
  return Variant(text);
}

Variant FormObject::Print(const Call& call) {
  const Variant text = call[0];
  const bool truth = text.Get().vt == VT_BOOL;
  WriteLine(!truth ? text.ToText() : text.ToBool() ? "True" : "False");
  return {};
}

Variant FormObject::Check(const Call& call) {
  if (!call[0].ToBool()) Fail(call[1].ToText());
  return {};
}

/// Counted from 0; empty for one that was not given.
Variant FormObject::Argument(const Call& call) {
  const auto place = static_cast<std::size_t>(call[0].ToInt());
  return Variant(place < arguments_.size() ? arguments_[place] : std::string());
}

Variant FormObject::ProcessId(const Call&) {
  return Number(static_cast<std::int32_t>(::GetCurrentProcessId()));
}

/// Whether the control's library is in this process.
Variant FormObject::IsLoaded(const Call&) {
  return Variant(::GetModuleHandleW(L"OutlookVelkor.ocx") != nullptr);
}

}  // namespace velkor
