// tests/platform/windows/TestPrinter.h: a printer made in the system for a test, and removed, and
// what it printed.
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <utility>

#include "platform/windows/system/Win32.h"
// After windows.h.
#include <winspool.h>

namespace velkor {

/// Words of a PostScript page: the names of its glyphs, of which letters name themselves.
inline std::string WordsOf(std::string_view postScript) {
  std::string words;
  constexpr std::string_view Show = " glyphshow";
  for (std::size_t at = 0; (at = postScript.find(Show, at)) != std::string_view::npos; ++at) {
    const std::size_t name = postScript.rfind('/', at) + 1;
    words.append(postScript.substr(name, at - name));
  }
  return words;
}

/// A PostScript printer on the port "FILE:". It is gone at the end of the test at the latest; the
/// system is left with no default printer then.
class TestPrinter {
 public:
  explicit TestPrinter(std::string name) : name_(std::move(name)) {
    static constexpr char Driver[] = "Velkor Plain Printer";
    // The spooler takes backslashes alone.
    char description[MAX_PATH];
    ::GetFullPathNameA(TEST_DATA "plain-printer.ppd", MAX_PATH, description, nullptr);
    std::string program = "wineps.drv";
    std::string driver = Driver;
    std::string raw = "RAW";
    DRIVER_INFO_3A made{};
    made.cVersion = 3;
    made.pName = driver.data();
    made.pDriverPath = program.data();
    made.pDataFile = description;
    made.pConfigFile = program.data();
    made.pDefaultDataType = raw.data();
    EXPECT_TRUE(::AddPrinterDriverExA(nullptr, 3, reinterpret_cast<BYTE*>(&made),
                                      APD_COPY_NEW_FILES | APD_COPY_FROM_DIRECTORY))
        << ::GetLastError();
    // A run that was ended may have left one.
    if (::OpenPrinterA(name_.data(), &printer_, nullptr)) {
      ::DeletePrinter(printer_);
      ::ClosePrinter(printer_);
    }
    std::string port = "FILE:";
    std::string processor = "WinPrint";
    PRINTER_INFO_2A info{};
    info.pPrinterName = name_.data();
    info.pDriverName = driver.data();
    info.pPortName = port.data();
    info.pPrintProcessor = processor.data();
    info.pDatatype = raw.data();
    printer_ = ::AddPrinterA(nullptr, 2, reinterpret_cast<BYTE*>(&info));
    EXPECT_NE(printer_, nullptr) << ::GetLastError();
    EXPECT_TRUE(::SetDefaultPrinterA(name_.c_str())) << ::GetLastError();
  }
  ~TestPrinter() { Remove(); }
  TestPrinter(const TestPrinter&) = delete;
  TestPrinter& operator=(const TestPrinter&) = delete;

  const std::string& Name() const { return name_; }
  void Remove() {
    const HANDLE printer = std::exchange(printer_, nullptr);
    if (printer == nullptr) return;
    EXPECT_TRUE(::DeletePrinter(printer)) << ::GetLastError();
    ::ClosePrinter(printer);
  }

 private:
  std::string name_;
  HANDLE printer_ = nullptr;
};

}  // namespace velkor
