// tests/hosts/windows/ContainerHabitsTest.cpp: the control follows what containers are used to.
#include <gmock/gmock.h>

#include "control/ControlLook.h"
#include "platform/windows/drawing/DibSection.h"
#include "platform/windows/elements/WindowText.h"
#include "tests/hosts/windows/ContainerCase.h"

namespace velkor {
namespace {

/// Shift is down for as long as it lives.
class ShiftScope {
 public:
  explicit ShiftScope(bool down) { Press(down); }
  ~ShiftScope() { Press(false); }
  ShiftScope(const ShiftScope&) = delete;
  ShiftScope& operator=(const ShiftScope&) = delete;

 private:
  static void Press(bool down) {
    BYTE state[256]{};
    state[VK_SHIFT] = down ? 0x80 : 0;
    ::SetKeyboardState(state);
  }
};

class ContainerHabits : public ContainerCase {
 protected:
  DialogOwner owner_;
  AutomationProgram program_{"YearPlan", owner_};
  AutomationClass class_{"YearPlan"};

  /// What a screen reader says of the window with the keyboard.
  static std::string Focused() { return ToUtf8(TextOfWindow(::GetFocus())); }
  AutomationObject Planner() { return {program_, class_, Control<IDispatch>()}; }
  void Change(DISPID member, std::function<Variant()> value, DISPID told) {
    container_->ambients[member] = std::move(value);
    EXPECT_EQ(Control<IOleControl>()->OnAmbientPropertyChange(told), S_OK);
  }
  /// Its pixels as the container draws it.
  std::vector<std::uint32_t> Pixels() {
    const DibSection picture(600, 300);
    const RECTL bounds{0, 0, 600, 300};
    EXPECT_EQ(Control<IViewObject2>()->Draw(DVASPECT_CONTENT, -1, nullptr, nullptr, nullptr,
                                            picture.Dc(), &bounds, nullptr, nullptr, 0),
              S_OK);
    ::GdiFlush();
    return {picture.Row(0), picture.Row(300)};
  }
  Colour Ground() {
    const std::uint32_t pixel = Pixels()[601];
    return Colour::FromRgb(pixel >> 16 & 0xFF, pixel >> 8 & 0xFF, pixel & 0xFF);
  }
  /// Face of the font that the captions are written in.
  std::string Face() {
    const HWND button = ::FindWindowExW(container_->Child(), nullptr, L"Button", nullptr);
    LOGFONTW font{};
    ::GetObjectW(reinterpret_cast<HFONT>(::SendMessageW(button, WM_GETFONT, 0, 0)), sizeof font,
                 &font);
    return ToUtf8(std::wstring_view(font.lfFaceName));
  }
  static ComPtr<IFontDisp> MakeFont(std::wstring face) {
    FONTDESC wanted{};
    wanted.cbSizeofstruct = sizeof wanted;
    wanted.lpstrName = face.data();
    wanted.cySize.int64 = 120'000;
    ComPtr<IFontDisp> font;
    ::OleCreateFontIndirect(&wanted, __uuidof(IFontDisp),
                            reinterpret_cast<void**>(font.GetAddressOf()));
    return font;
  }
  MSG Tab() const { return {::GetFocus(), WM_KEYDOWN, VK_TAB, 1, 0, {}}; }
};

TEST_F(ContainerHabits, TabGoesThroughTheElementsAndThenBackToTheContainer) {
  BareContainer& container = Container();
  ASSERT_EQ(container.Do(OLEIVERB_SHOW), S_OK);
  const auto active = Control<IOleInPlaceActiveObject>();
  for (const bool backward : {false, true}) {
    const ShiftScope shift(backward);
    ::SetFocus(container.Window());
    MSG entry = Tab();
    ASSERT_EQ(container.control->DoVerb(OLEIVERB_UIACTIVATE, &entry, &container, 0,
                                        container.Window(), &container.place),
              S_OK);
    std::vector<std::string> stops{Focused()};
    for (MSG key = Tab(); active->TranslateAccelerator(&key) == S_OK; key = Tab()) {
      stops.push_back(Focused());
      ASSERT_LT(stops.size(), 10U);
    }
    if (backward) std::reverse(stops.begin(), stops.end());
    EXPECT_THAT(stops, testing::ElementsAre("Commands", testing::HasSubstr("Year"), "Categories"));
  }
}

TEST_F(ContainerHabits, TabGoesThroughAControlInADialogThatHandlesItself) {
  BareContainer& container = Container();
  ASSERT_EQ(container.Do(OLEIVERB_SHOW), S_OK);
  const HWND button = ::CreateWindowExW(0, L"BUTTON", L"Other", WS_CHILD | WS_VISIBLE | WS_TABSTOP,
                                        0, 0, 9, 9, container.Window(), nullptr, nullptr, nullptr);
  for (const bool backward : {false, true}) {
    const ShiftScope shift(backward);
    ::SetFocus(button);
    std::vector<std::string> stops;
    do {
      MSG key = Tab();
      ASSERT_TRUE(::IsDialogMessageW(container.Window(), &key));
      stops.push_back(Focused());
    } while (stops.back() != "Other" && stops.size() < 10);
    stops.pop_back();
    if (backward) std::reverse(stops.begin(), stops.end());
    EXPECT_THAT(stops, testing::ElementsAre("Commands", testing::HasSubstr("Year"), "Categories"));
  }
}

TEST_F(ContainerHabits, LooksAndListensAsItsSurroundingsDoAndFollowsTheirChanges) {
  constexpr Colour Red = Colour::FromRgb(200, 30, 30);
  constexpr Colour Green = Colour::FromRgb(30, 200, 30);
  const auto colour = [](Colour value) { return [value] { return Variant(value.value); }; };
  BareContainer& container = Container();
  EXPECT_EQ(Ground(), ControlLook().back);
  Change(DISPID_AMBIENT_BACKCOLOR, colour(Red), DISPID_AMBIENT_BACKCOLOR);
  EXPECT_EQ(Ground(), Red);
  Change(DISPID_AMBIENT_BACKCOLOR, colour(Green), DISPID_AMBIENT_FORECOLOR);
  EXPECT_EQ(Ground(), Red) << "not told of";
  ASSERT_EQ(container.Do(OLEIVERB_SHOW), S_OK);
  Change(DISPID_AMBIENT_BACKCOLOR, colour(Green), DISPID_UNKNOWN);
  EXPECT_EQ(Ground(), Green);
  EXPECT_EQ(Planner().Get("BackColor").ToInt(), Green.value);
  Change(
      DISPID_AMBIENT_BACKCOLOR, [] { return Variant("no colour"); }, DISPID_AMBIENT_BACKCOLOR);
  EXPECT_EQ(Ground(), ControlLook().back);

  const auto pixelsIn = [&](std::int32_t locale) {
    Change(
        DISPID_AMBIENT_LOCALEID, [=] { return Variant(locale); }, DISPID_AMBIENT_LOCALEID);
    return Pixels();
  };
  const std::vector<std::uint32_t> english = pixelsIn(0x0409);
  EXPECT_TRUE(english != pixelsIn(0x0407)) << "names of months";
  EXPECT_TRUE(english == pixelsIn(0x0409));

  const auto font = MakeFont(L"Liberation Mono");
  Change(
      DISPID_AMBIENT_FONT, [&] { return Variant(static_cast<IDispatch*>(font.Get())); },
      DISPID_AMBIENT_FONT);
  EXPECT_EQ(Face(), "Liberation Mono");
  Change(
      DISPID_AMBIENT_FONT, [] { return Variant(true); }, DISPID_AMBIENT_FONT);
  EXPECT_NE(Face(), "Liberation Mono");

  Change(
      DISPID_AMBIENT_DISPLAYNAME, [] { return Variant("Urlaub"); }, DISPID_UNKNOWN);
  ASSERT_EQ(container.Do(OLEIVERB_UIACTIVATE), S_OK);
  EXPECT_EQ(container.activeName, L"Urlaub");

  Change(
      DISPID_AMBIENT_UIDEAD, [] { return Variant(true); }, DISPID_AMBIENT_UIDEAD);
  EXPECT_FALSE(::IsWindowEnabled(container.Child()));
  EXPECT_EQ(container.Count("OnFocus(FALSE)"), 1);
  Change(
      DISPID_AMBIENT_UIDEAD, [] { return Variant(false); }, DISPID_AMBIENT_UIDEAD);
  EXPECT_TRUE(::IsWindowEnabled(container.Child()));
  EXPECT_EQ(Control<IPersistStreamInit>()->IsDirty(), S_FALSE);
}

TEST_F(ContainerHabits, TheControlMayBeLetGoWhereverItAsksForItsSurroundings) {
  for (const DISPID member : {DISPID_AMBIENT_BACKCOLOR, DISPID_AMBIENT_FONT,
                              DISPID_AMBIENT_LOCALEID, DISPID_AMBIENT_SHOWGRABHANDLES}) {
    BareContainer& container = Container();
    ASSERT_EQ(container.Do(OLEIVERB_UIACTIVATE), S_OK);
    const auto control = Control<IOleControl>();
    container.ambients[member] = [&] {
      container.Drop();
      return Variant(std::int32_t{5});
    };
    control->OnAmbientPropertyChange(DISPID_UNKNOWN);
    EXPECT_EQ(container.Child(), nullptr) << member;
    container.Close();
    container_.Reset();
  }
}

TEST_F(ContainerHabits, StockPropertiesAreTheControlsOwnOnceTheyAreSetAndComeBack) {
  BareContainer& container = Container();
  ASSERT_EQ(container.Do(OLEIVERB_SHOW), S_OK);
  const AutomationObject planner = Planner();
  EXPECT_EQ(planner.Get("hWnd").ToInt(),
            static_cast<std::int32_t>(reinterpret_cast<LONG_PTR>(container.Child())));
  constexpr auto WindowColour = static_cast<std::int32_t>(0x80000005);
  const ComPtr<TextBag> unset(new TextBag);
  ASSERT_EQ(Control<IPersistPropertyBag>()->Save(unset.Get(), TRUE, TRUE), S_OK);
  EXPECT_EQ(unset->values.size(), 7U);

  ComPtr<IFont> font;
  ASSERT_EQ(planner.Get("Font").ToObject().As(&font), S_OK);
  EXPECT_EQ(Control<IPersistStreamInit>()->IsDirty(), S_FALSE);
  ASSERT_EQ(font->put_Name(Bstr("Liberation Mono").Get()), S_OK);
  EXPECT_EQ(Face(), "Liberation Mono") << "changed by who was given it";
  EXPECT_EQ(Control<IPersistStreamInit>()->IsDirty(), S_OK);
  const auto other = MakeFont(L"Liberation Serif");
  planner.Put("Font", Variant(static_cast<IDispatch*>(other.Get())));
  EXPECT_EQ(Face(), "Liberation Serif");
  planner.Put("BackColor", Variant(WindowColour));
  planner.Put("ForeColor", Variant(std::int32_t{0x112233}));
  EXPECT_ANY_THROW(planner.Put("BackColor", Variant(static_cast<std::int32_t>(0x8000FFFF))));
  planner.Put("Enabled", Variant(false));
  EXPECT_FALSE(::IsWindowEnabled(container.Child()));
  planner.Call("Refresh");

  const ComPtr<TextBag> bag(new TextBag);
  ASSERT_EQ(Control<IPersistPropertyBag>()->Save(bag.Get(), TRUE, FALSE), S_OK);
  EXPECT_EQ(bag->values.size(), 4U);
  EXPECT_THAT(bag->values[L"Font"].ToText(), testing::StartsWith("Liberation Serif, 1"));
  ComPtr<IStream> stream;
  ASSERT_EQ(::CreateStreamOnHGlobal(nullptr, TRUE, &stream), S_OK);
  ASSERT_EQ(Control<IPersistStreamInit>()->Save(stream.Get(), TRUE), S_OK);
  stream->Seek({}, STREAM_SEEK_SET, nullptr);
  container.Close();

  bag->values[L"OfALaterVersion"] = Variant("kept by nobody");
  for (const bool byBag : {true, false}) {
    Container();
    ASSERT_EQ(byBag ? Control<IPersistPropertyBag>()->Load(bag.Get(), nullptr)
                    : Control<IPersistStreamInit>()->Load(stream.Get()),
              S_OK);
    EXPECT_EQ(Planner().Get("BackColor").ToInt(), WindowColour);
    EXPECT_EQ(Planner().Get("ForeColor").ToInt(), 0x112233);
    EXPECT_FALSE(Planner().Get("Enabled").ToBool());
    ASSERT_EQ(Planner().Get("Font").ToObject().As(&font), S_OK);
    BSTR face = nullptr;
    font->get_Name(&face);
    EXPECT_EQ(ToUtf8(face), "Liberation Serif");
    ::SysFreeString(face);
    container_->Close();
  }
  for (const auto& [key, value] :
       std::vector<std::pair<const wchar_t*, const char*>>{{L"Font", "Arial"},
                                                           {L"Font", "Arial, large"},
                                                           {L"BackColor", "blue"},
                                                           {L"ForeColor", "1e9"}}) {
    const ComPtr<TextBag> foreign(new TextBag);
    foreign->values[key] = Variant(value);
    Container();
    EXPECT_EQ(Control<IPersistPropertyBag>()->Load(foreign.Get(), nullptr), S_OK) << value;
    EXPECT_EQ(Ground(), ControlLook().back) << "another one's value is none of ours";
    container_->Close();
  }
}

TEST_F(ContainerHabits, IsActivatedInOneCallAndByAClickThatAlsoCounts) {
  BareContainer& container = Container();
  QACONTAINER given{};
  given.cbSize = sizeof given;
  given.pClientSite = &container;
  QACONTROL told{};
  told.cbSize = sizeof told;
  const auto quick = Control<IQuickActivate>();
  ASSERT_EQ(quick->QuickActivate(&given, &told), S_OK);
  DWORD status = 0;
  container.control->GetMiscStatus(DVASPECT_CONTENT, &status);
  EXPECT_EQ(told.dwMiscStatus, status);
  EXPECT_EQ(told.dwPointerActivationPolicy, DWORD{POINTERINACTIVE_ACTIVATEONENTRY});
  SIZEL size{9000, 5000};
  EXPECT_EQ(quick->SetContentExtent(&size), S_OK);
  SIZEL now{};
  EXPECT_EQ(quick->GetContentExtent(&now), S_OK);
  EXPECT_EQ(now.cx, size.cx);

  // On the legend, in the container's coordinates.
  MSG press{container.Window(), WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(560, 250), 0, {}};
  ASSERT_EQ(container.control->DoVerb(OLEIVERB_UIACTIVATE, &press, &container, 0,
                                      container.Window(), &container.place),
            S_OK);
  EXPECT_THAT(Focused(), testing::HasSubstr("Year"));
  EXPECT_TRUE(PumpUntil([] { return Focused() == "Categories" && ::GetCapture() == nullptr; }));
}

TEST_F(ContainerHabits, TellsItsKeysAndHearsThem) {
  Container();
  const auto control = Control<IOleControl>();
  CONTROLINFO info{};
  ASSERT_EQ(control->GetControlInfo(&info), S_OK);
  ASSERT_EQ(info.cAccel, 1);
  ACCEL key{};
  ASSERT_EQ(::CopyAcceleratorTableW(info.hAccel, &key, 1), 1);
  MSG message{nullptr, WM_SYSKEYDOWN, key.key, 0, 0, {}};
  EXPECT_TRUE(::IsAccelerator(info.hAccel, info.cAccel, &message, nullptr) ||
              (key.fVirt & FALT) != 0);
  EXPECT_EQ(control->OnMnemonic(&message), S_OK);
  EXPECT_EQ(control->OnMnemonic(nullptr), E_POINTER);
}

}  // namespace
}  // namespace velkor
