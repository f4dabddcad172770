// tests/platform/windows/RegistrationTest.cpp: what a registration adds and takes away again,
// beside that of the other word size and that of others.
#include "platform/windows/com/Registration.h"

#include <gmock/gmock.h>

#include "platform/windows/system/WindowsRegistry.h"
#include "tests/hosts/windows/ControlCase.h"

namespace velkor {
namespace {

constexpr GUID ClassId = {0x5d1a6ffb, 0x7ee2, 0x4c5c, {0x8f, 2, 0x5e, 0x2a, 0x6c, 0x1b, 0x7a, 9}};
constexpr const char* TypesOfControl = "{BE7AF7A3-578F-4163-A45A-1CD9A8600979}";
constexpr REGSAM OtherView = sizeof(void*) == 8 ? KEY_WOW64_32KEY : KEY_WOW64_64KEY;

/// Every key and value name below a key of the user's classes, one a line.
std::string Listing(const std::wstring& path) {
  HKEY opened = nullptr;
  ::RegOpenKeyExW(HKEY_CURRENT_USER, path.c_str(), 0, KEY_READ, &opened);
  const RegistryKey key(opened);
  std::string listing = ToUtf8(path) + "\n";
  wchar_t name[256];
  for (DWORD index = 0, size = 256;
       ::RegEnumValueW(opened, index, name, &size, nullptr, nullptr, nullptr, nullptr) == 0;
       ++index, size = 256) {
    listing += ToUtf8(path) + ": " + ToUtf8(std::wstring_view(name)) + "\n";
  }
  for (DWORD index = 0; ::RegEnumKeyW(opened, index, name, 256) == 0; ++index) {
    listing += Listing(path + L"\\" + name);
  }
  return listing;
}

class RegistrationTest : public testing::Test {
 protected:
  static std::string Classes() { return Listing(L"Software\\Classes"); }

  static void Write(Registration registration, const ClassesValue& value) {
    WriteClasses(registration, std::span(&value, 1));
  }

  ClassRegistration known_ =
      DescribeClass(ClassId, "Of tests", "Velkor.OfTests", ClassId, ControlLibrary::Path());
};

TEST_F(RegistrationTest, NothingIsLeftWhicheverOfTwoClassesGoesLast) {
  ClassRegistration second = known_;
  second.id[1] = 'A';
  second.values.push_back({second.Key(), "", "Second"});
  const std::string before = Classes();
  for (const bool firstGoesLast : {true, false}) {
    Register(Registration::User, known_);
    Register(Registration::User, known_);
    Register(Registration::User, second);
    EXPECT_THAT(Classes(), testing::HasSubstr("Interface\\"));
    Unregister(Registration::User, firstGoesLast ? second : known_);
    Unregister(Registration::User, firstGoesLast ? known_ : second);
    EXPECT_EQ(Classes(), before);
    Unregister(Registration::User, known_);
  }
}

TEST_F(RegistrationTest, KeysOfOthersStayEvenWhereTheyAreEmpty) {
  Write(Registration::User, {"CLSID\\{Other}", "", "x"});
  Write(Registration::User, {"Interface", "", ""});
  Register(Registration::User, known_);
  Write(Registration::User, {"TypeLib\\{Other}", "", "x"});
  Unregister(Registration::User, known_);
  const std::string after = Classes();
  for (const char* key : {"CLSID", "Interface", "TypeLib"}) {
    EXPECT_THAT(after, testing::HasSubstr(std::string("Classes\\") + key + "\n"));
    RemoveClasses(Registration::User, key);
  }
  EXPECT_THAT(after, testing::Not(testing::HasSubstr("made for")));
}

TEST_F(RegistrationTest, TheOtherWordSizeKeepsItsNameAndItsTypes) {
  HKEY other = nullptr;
  const std::wstring key = ToWide("Software\\Classes\\" + known_.Key());
  ASSERT_EQ(::RegCreateKeyExW(HKEY_LOCAL_MACHINE, key.c_str(), 0, nullptr, 0, KEY_WRITE | OtherView,
                              nullptr, &other, nullptr),
            ERROR_SUCCESS);
  ::RegCloseKey(other);
  Register(Registration::Machine, known_);
  // The library of the other word size lies beside that of this one.
  const std::string types = std::string("TypeLib\\") + TypesOfControl;
  const std::string library = types + "\\1.0\\0\\winOther";
  Write(Registration::Machine, {library, "", "x"});
  Unregister(Registration::Machine, known_);
  EXPECT_TRUE(HasClasses(Registration::Machine, "Velkor.OfTests\\CLSID"));
  EXPECT_TRUE(HasClasses(Registration::Machine, library));
  EXPECT_TRUE(HasClasses(Registration::Machine, types + "\\1.0\\FLAGS"));
  EXPECT_FALSE(HasClasses(Registration::Machine, known_.Key()));
  EXPECT_EQ(::RegDeleteKeyExW(HKEY_LOCAL_MACHINE, key.c_str(), OtherView, 0), ERROR_SUCCESS);
  RemoveClasses(Registration::Machine, library);
  Unregister(Registration::Machine, known_);
  EXPECT_FALSE(HasClasses(Registration::Machine, "Velkor.OfTests"));
  EXPECT_FALSE(HasClasses(Registration::Machine, types));
}

}  // namespace
}  // namespace velkor
