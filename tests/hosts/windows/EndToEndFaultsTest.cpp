// tests/hosts/windows/EndToEndFaultsTest.cpp: what the control meets where something refuses, ends
// or is missing.
#include <optional>

#include "platform/windows/system/WindowsRegistry.h"
#include "tests/hosts/windows/ScriptCase.h"

namespace velkor {
namespace {

using testing::HasSubstr;
using EndToEndFaults = ScriptCase;

TEST_F(EndToEndFaults, OutlookThatRefusesIsBusyOrEndsAndAFormThatClosesInTheMiddle) {
  const ScriptRun run = RunScript("Refusals", [this] {
    WindowsFiles files;
    if (!files.Exists(Path("closed")) || files.Exists(Path("gone"))) return;
    if (ProcessesOf(L"vkrRefresh.exe").empty()) files.OpenForWriting(Path("gone"))->Flush();
  });
  EXPECT_EQ(run.code, 0U) << run.output;
  EXPECT_THAT(run.output, HasSubstr("Done"));
}

TEST_F(EndToEndFaults, OutlookThatIsClosedAndOpenedAgainIsHeardAgain) {
  const ScriptRun run = RunScript("Closed");
  EXPECT_EQ(run.code, 0U) << run.output;
  EXPECT_THAT(run.output, HasSubstr("Done"));
}

/// A text of the user's registry taken out for a test.
class WithoutValue {
 public:
  WithoutValue(const wchar_t* key, const wchar_t* name) : key_(key), name_(name) {
    const RegistryAnswer answer =
        WindowsRegistry().QueryValue(RootKey::CurrentUser, ToUtf8(key), ToUtf8(name));
    if (answer.code != registry_codes::Success) return;
    text_ = ToWide(answer.data);
    EXPECT_EQ(::RegDeleteKeyValueW(HKEY_CURRENT_USER, key, name), ERROR_SUCCESS);
  }
  ~WithoutValue() {
    if (!text_) return;
    ::RegSetKeyValueW(HKEY_CURRENT_USER, key_, name_, REG_SZ, text_->c_str(),
                      static_cast<DWORD>((text_->size() + 1) * sizeof(wchar_t)));
  }
  WithoutValue(const WithoutValue&) = delete;
  WithoutValue& operator=(const WithoutValue&) = delete;

  bool WasThere() const { return text_.has_value(); }

 private:
  const wchar_t* key_;
  const wchar_t* name_;
  std::optional<std::wstring> text_;
};

TEST_F(EndToEndFaults, NoUtilityNoPrinterAndARegistryWithoutTheKeys) {
  EXPECT_EQ(RunProgram("vkrRefresh.exe", "/UnregServer"), 0U);
  ::RegDeleteTreeW(HKEY_CURRENT_USER, L"Software\\VB and VBA Program Settings\\Year Planner");
  const WithoutValue separator(L"Control Panel\\International", L"sList");
  const WithoutValue format(L"Control Panel\\International", L"sShortDate");
  EXPECT_TRUE(separator.WasThere());
  const ScriptRun run = RunScript("Missing");
  EXPECT_EQ(run.code, 0U) << run.output;
  EXPECT_THAT(run.output, HasSubstr("Done"));
}

}  // namespace
}  // namespace velkor
