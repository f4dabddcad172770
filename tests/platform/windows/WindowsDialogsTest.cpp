// tests/platform/windows/WindowsDialogsTest.cpp: each dialog opened for real, and answered.
#include "platform/windows/dialogs/WindowsDialogs.h"

#include <gmock/gmock.h>

#include <filesystem>
#include <fstream>

#include "platform/windows/dialogs/WindowsInputBox.h"
#include "platform/windows/dialogs/WindowsMessageBoxes.h"
#include "platform/windows/dialogs/WindowsProgress.h"
#include "tests/platform/windows/DriveDialog.h"
#include "tests/platform/windows/OwnerWindow.h"
#include "tests/support/ErrorOf.h"
// After windows.h.
#include <commctrl.h>
#include <dlgs.h>

namespace velkor {
namespace {

namespace fs = std::filesystem;

class WindowsDialogs : public testing::Test {
 protected:
  OwnerWindow container_;
  const DWORD thread_ = ::GetCurrentThreadId();

  void ExpectClosed() {
    EXPECT_TRUE(::IsWindowEnabled(container_.window));
    EXPECT_FALSE(container_.owner.IsBusy());
    EXPECT_EQ(FindOpenWindow({}), nullptr);
  }
};

class MessageBoxTest : public WindowsDialogs {};

TEST_F(MessageBoxTest, EachButtonOfEachSetIsItsOwnAnswer) {
  const struct {
    MessageButtons buttons;
    std::vector<std::pair<int, MessageAnswer>> answers;
  } sets[] = {
      {MessageButtons::Ok, {{IDOK, MessageAnswer::Ok}}},
      {MessageButtons::OkCancel, {{IDOK, MessageAnswer::Ok}, {IDCANCEL, MessageAnswer::Cancel}}},
      {MessageButtons::RetryCancel,
       {{IDRETRY, MessageAnswer::Retry}, {IDCANCEL, MessageAnswer::Cancel}}},
      {MessageButtons::YesNo, {{IDYES, MessageAnswer::Yes}, {IDNO, MessageAnswer::No}}},
      {MessageButtons::YesNoCancel,
       {{IDYES, MessageAnswer::Yes}, {IDNO, MessageAnswer::No}, {IDCANCEL, MessageAnswer::Cancel}}},
  };
  WindowsMessageBoxes boxes(container_.owner);
  for (const auto& [buttons, answers] : sets) {
    const int count = static_cast<int>(answers.size());
    for (int i = 0; i < count; ++i) {
      const DriveDialog drive([&, i] {
        const HWND box = WaitForDialog(L"Tïtle 日");
        EXPECT_EQ(::GetWindow(box, GW_OWNER), container_.window);
        EXPECT_FALSE(::IsWindowEnabled(container_.window));
        for (const auto& [id, answer] : answers) EXPECT_NE(::GetDlgItem(box, id), nullptr);
        const HWND chosen = ::GetDlgItem(box, answers[std::size_t(i)].first);
        EXPECT_EQ(::GetWindowLongW(chosen, GWL_STYLE) & BS_TYPEMASK, BS_DEFPUSHBUTTON);
        Answer(box, answers[std::size_t(i)].first);
      });
      EXPECT_EQ(boxes.Show({"Text", "Tïtle 日", buttons, MessageIcon::Question, i + 1}),
                answers[std::size_t(i)].second);
    }
  }
  ExpectClosed();
}

TEST_F(MessageBoxTest, TheProductsNameStandsForNoTitleAndQuittingGoesOn) {
  const DriveDialog drive([&] {
    WaitForDialog(L"OutlookVelkor");
    ::PostThreadMessageW(thread_, WM_QUIT, 3, 0);
  });
  WindowsMessageBoxes(container_.owner).Show({.text = "Text", .title = {}});
  EXPECT_TRUE(TakeQuit());
  ExpectClosed();
}

class InputBoxTest : public WindowsDialogs {
 protected:
  std::string Ask(const std::function<void(HWND)>& steps) {
    const DriveDialog drive([&] { steps(WaitForDialog(L"New Category")); });
    return WindowsInputBoxes(container_.owner)
        .Ask("Enter name & more, " + std::string(300, 'x') + " of a category", "New Category");
  }
};

TEST_F(InputBoxTest, HandsOnTheLineAsTypedAndNothingWhenCancelled) {
  const auto key = [](HWND box, WPARAM code) {
    ::PostMessageW(::GetDlgItem(box, WindowsInputBoxes::LineId), WM_KEYDOWN, code, 0);
  };
  const auto type = [](HWND box) {
    for (const wchar_t c : std::wstring(L"  a|é日 ")) {
      ::PostMessageW(::GetDlgItem(box, WindowsInputBoxes::LineId), WM_CHAR, c, 0);
    }
  };
  EXPECT_EQ(Ask([&](HWND box) { type(box), key(box, VK_RETURN); }), "  a|é日 ");
  EXPECT_EQ(Ask([&](HWND box) { type(box), key(box, VK_ESCAPE); }), "");
  EXPECT_EQ(Ask([&](HWND box) { type(box), Press(box, IDOK); }), "  a|é日 ");
  EXPECT_EQ(Ask([&](HWND box) { type(box), Press(box, IDCANCEL); }), "");
  EXPECT_EQ(Ask([&](HWND box) { type(box), ::PostMessageW(box, WM_CLOSE, 0, 0); }), "");
  EXPECT_THAT(container_.modal, testing::SizeIs(10));
  ExpectClosed();
}

TEST_F(InputBoxTest, EndsEmptyWithTheProgramOrItsOwner) {
  EXPECT_EQ(Ask([&](HWND) { ::PostThreadMessageW(thread_, WM_QUIT, 0, 0); }), "");
  EXPECT_TRUE(TakeQuit());
  ExpectClosed();
  EXPECT_EQ(Ask([&](HWND) { ::PostMessageW(container_.window, WM_CLOSE, 0, 0); }), "");
  EXPECT_FALSE(::IsWindow(container_.window));
  EXPECT_FALSE(container_.owner.IsBusy());
}

class FileDialogTest : public WindowsDialogs {
 protected:
  FileDialogTest() { fs::create_directories(folder_ / L"Ālt"); }
  ~FileDialogTest() override {
    std::error_code ignored;
    fs::remove_all(folder_, ignored);
  }

  void Write(const wchar_t* name) { std::ofstream(folder_ / name) << "old"; }
  std::string Path(const char* name) const { return ToUtf8(folder_.wstring()) + "\\" + name; }

  /// Types a name and presses the button that takes it.
  static void Name(HWND window, const std::wstring& name) {
    WaitUntil("line for the name", [&] {
      return ::GetDlgItem(window, edt1) != nullptr || ::GetDlgItem(window, cmb13) != nullptr;
    });
    SetText(window, ::GetDlgItem(window, edt1) != nullptr ? edt1 : cmb13, name);
    Press(window, IDOK);
  }
  std::string Save(const std::function<void(HWND)>& steps) {
    const DriveDialog drive([&] { steps(WaitForDialog(L"Save Velkor Data")); });
    return WindowsCommonDialogs(container_.owner).ShowSave(dialog_);
  }
  std::string Save(const std::wstring& name) {
    return Save([&](HWND window) { Name(window, name); });
  }

  const fs::path folder_ =
      fs::temp_directory_path() / (L"vélkor-dialogs-" + std::to_wstring(::GetCurrentProcessId()));
  FileDialog dialog_{.filter = "Velkor Dätä(*.xml)|*.xml|All Files(*.*)|*.*",
                     .title = "Save Velkor Data",
                     .flags = file_dialog_flags::OverwritePrompt | file_dialog_flags::HideReadOnly,
                     .defaultExtension = "xml"};
};

TEST_F(FileDialogTest, SavesUnderANameWithASuffixAndLeavesTheCurrentFolder) {
  const fs::path current = fs::current_path();
  EXPECT_EQ(Save([&](HWND window) {
              const HWND filters = ::GetDlgItem(window, cmb1);
              EXPECT_EQ(::SendMessageW(filters, CB_GETCOUNT, 0, 0), 2);
              wchar_t text[64]{};
              ::SendMessageW(filters, CB_GETLBTEXT, 0, reinterpret_cast<LPARAM>(text));
              EXPECT_EQ(std::wstring(text).substr(0, 11), L"Velkor Dätä");
              Name(window, folder_ / L"yéar");
            }),
            Path("yéar.xml"));
  EXPECT_EQ(Save(folder_ / L"year.data"), Path("year.data"));
  EXPECT_EQ(Save([](HWND window) { Press(window, IDCANCEL); }), "");
  EXPECT_EQ(fs::current_path(), current);
  ExpectClosed();
}

TEST_F(FileDialogTest, AsksBeforeAFileIsReplacedWhenItShould) {
  Write(L"year.xml");
  for (const bool replace : {false, true}) {
    const std::string name = Save([&](HWND window) {
      Name(window, folder_ / L"year");
      WaitUntil("question", [&] { return !::IsWindowEnabled(window); });
      Answer(WaitForWindow({}), replace ? IDYES : IDNO);
      if (!replace) Press(WaitForDialog(L"Save Velkor Data"), IDCANCEL);
    });
    EXPECT_EQ(name, replace ? Path("year.xml") : "");
  }
  dialog_.flags = 0;
  EXPECT_EQ(Save(folder_ / L"year"), Path("year.xml"));
}

TEST_F(FileDialogTest, ANameMayHaveCharactersThatTheCodePageLacks) {
  ASSERT_EQ(::GetACP(), 1252U);
  Write(L"A.xml");
  EXPECT_EQ(Save(folder_ / L"日.xml"), Path("日.xml"));
  EXPECT_EQ(Save(folder_ / L"Ā😀"), Path("Ā😀.xml"));
  const std::string inFolder = Save([&](HWND window) {
    Name(window, folder_ / L"Ālt");
    WaitUntil("folder", [&] {
      wchar_t path[MAX_PATH]{};
      ::SendMessageW(window, CDM_GETFOLDERPATH, MAX_PATH, reinterpret_cast<LPARAM>(path));
      return std::wstring_view(path).ends_with(L"Ālt");
    });
    Name(window, L"ω.xml");
  });
  EXPECT_EQ(inFolder, Path("Ālt\\ω.xml"));
  ExpectClosed();
}

TEST_F(FileDialogTest, OpensAFileUntilTheProgramQuits) {
  Write(L"câts.txt");
  WindowsCommonDialogs dialogs(container_.owner);
  const FileDialog dialog{.filter = "All Files|*.*|no pattern",
                          .title = "Open Categories File",
                          .flags = 0,
                          .defaultExtension = {}};
  for (const bool quit : {false, true}) {
    const DriveDialog drive([&] {
      const HWND window = WaitForDialog(L"Open Categories File");
      EXPECT_EQ(::SendDlgItemMessageW(window, cmb1, CB_GETCOUNT, 0, 0), 1);
      quit ? void(::PostThreadMessageW(thread_, WM_QUIT, 0, 0))
           : Name(window, folder_ / L"câts.txt");
    });
    EXPECT_EQ(dialogs.ShowOpen(dialog), quit ? "" : Path("câts.txt"));
    EXPECT_EQ(TakeQuit(), quit);
  }
  ExpectClosed();
}

TEST_F(WindowsDialogs, APickerBeginsWithTheColourAndKeepsMadeUpOnes) {
  // Of the system's dialog template.
  constexpr int Red = 706;
  constexpr int Green = 707;
  constexpr int Blue = 708;
  constexpr int Add = 712;
  constexpr int MadeUpColours = 721;
  const auto shown = [&](HWND window) {
    return TextOf(window, Red) + L"," + TextOf(window, Green) + L"," + TextOf(window, Blue);
  };
  const Colour odd{static_cast<std::int32_t>(0xFF123456)};
  WindowsCommonDialogs dialogs(container_.owner);
  {
    const DriveDialog drive([&] {
      const HWND window = WaitForWindow({});
      EXPECT_EQ(shown(window), L"86,52,18");
      SetText(window, Red, L"1");
      SetText(window, Green, L"2");
      SetText(window, Blue, L"3");
      Press(window, Add);
      Press(window, IDOK);
    });
    EXPECT_EQ(dialogs.ShowColour(odd), Colour::FromRgb(1, 2, 3));
  }
  const DriveDialog drive([&] {
    const HWND window = WaitForWindow({});
    EXPECT_EQ(shown(window), L"86,52,18");
    POINT first{8, 8};
    ::MapWindowPoints(::GetDlgItem(window, MadeUpColours), window, &first, 1);
    ::SendMessageW(window, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(first.x, first.y));
    EXPECT_EQ(shown(window), L"1,2,3");
    Press(window, IDCANCEL);
  });
  EXPECT_EQ(dialogs.ShowColour(odd), std::nullopt);
  ExpectClosed();
}

class ProgressTest : public WindowsDialogs {
 protected:
  WindowsProgress progress_{container_.owner};

  /// Steps until the user wants the end.
  void Run(const std::function<void(HWND)>& steps) {
    const auto report = progress_.Begin("Expört");
    EXPECT_TRUE(report->Step(1, 1000, "begun"));
    EXPECT_EQ(FindOpenWindow({}), nullptr) << "at once";
    const DriveDialog drive([&] { steps(WaitForDialog(L"Expört")); });
    long long done = 0;
    // Bounded, should nobody end it: by more steps than fit into the time that a test has.
    while (report->Step(1 + static_cast<int>(done % 999), 1000, "Year\n2026") &&
           done < 100'000'000'000) {
      ++done;
    }
    EXPECT_FALSE(report->Step(1, 1000, "once more"));
    EXPECT_EQ(FindOpenWindow({}), nullptr);
  }
};

TEST_F(ProgressTest, OpensAfterAMomentAndEndsByEscapeButtonOrClosing) {
  const std::vector<std::function<void(HWND)>> ways{
      [](HWND window) { ::PostMessageW(window, WM_KEYDOWN, VK_ESCAPE, 0); },
      [](HWND window) { Press(window, IDCANCEL); },
      [](HWND window) { ::PostMessageW(window, WM_SYSCOMMAND, SC_CLOSE, 0); },
  };
  for (const auto& way : ways) {
    Run([&](HWND window) {
      EXPECT_FALSE(::IsWindowEnabled(container_.window));
      const HWND bar = ::FindWindowExW(window, nullptr, PROGRESS_CLASSW, nullptr);
      WaitUntil("progress", [&] { return ::SendMessageW(bar, PBM_GETPOS, 0, 0) > 0; });
      EXPECT_EQ(::SendMessageW(bar, PBM_GETRANGE, FALSE, 0), 1000);
      EXPECT_EQ(TextOf(window, 100), L"Year 2026");
      way(window);
    });
    EXPECT_EQ(::GetActiveWindow(), container_.window);
    ExpectClosed();
  }
  EXPECT_THAT(container_.modal, testing::ElementsAre(true, false, true, false, true, false));
}

TEST_F(ProgressTest, EndsWithTheProgramOrItsOwner) {
  Run([&](HWND) { ::PostThreadMessageW(thread_, WM_QUIT, 0, 0); });
  EXPECT_TRUE(TakeQuit());
  ExpectClosed();
  Run([&](HWND) { ::PostMessageW(container_.window, WM_CLOSE, 0, 0); });
  EXPECT_FALSE(::IsWindow(container_.window));
  EXPECT_FALSE(container_.owner.IsBusy());
}

TEST_F(ProgressTest, ShortWorkShowsNothingAndLetsNoInputBy) {
  const auto report = progress_.Begin("Short");
  INPUT key{};
  key.type = INPUT_KEYBOARD;
  key.ki.wVk = 'A';
  ::SetForegroundWindow(container_.window);
  ASSERT_EQ(::SendInput(1, &key, sizeof key), 1U);
  ::PostMessageW(container_.window, WM_APP, 0, 0);
  const auto isThere = [&](UINT message) {
    MSG found;
    return ::PeekMessageW(&found, container_.window, message, message, PM_NOREMOVE) != 0;
  };
  WaitUntil("the message", [&] {
    EXPECT_TRUE(report->Step(1, 2, "x"));
    return !isThere(WM_APP);
  });
  EXPECT_TRUE(isThere(WM_KEYDOWN));
  EXPECT_EQ(FindOpenWindow({}), nullptr);
  EXPECT_TRUE(container_.modal.empty());
}

}  // namespace
}  // namespace velkor
