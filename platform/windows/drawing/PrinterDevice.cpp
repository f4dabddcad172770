// platform/windows/drawing/PrinterDevice.cpp: the spooler and the printer's driver, asked and
// merged.
#include "platform/windows/drawing/PrinterDevice.h"

#include <algorithm>
#include <cstdint>
#include <limits>
#include <utility>

#include "platform/windows/system/AnsiText.h"
#include "platform/windows/system/Wide.h"
// After windows.h.
#include <winspool.h>

/// Of winspool.drv; the cross compiler's headers leave it out.
extern "C" LPWSTR WINAPI StartDocDlgW(HANDLE printer, DOCINFOW* document);

namespace velkor {
namespace {

/// An answer of the spooler whose size it tells by itself; empty where there is none.
template <typename Ask>
std::vector<std::byte> AskWithRoom(Ask ask) {
  std::vector<std::byte> room;
  // What is listed may grow between asking for its size and reading it.
  for (int attempt = 0; attempt < 10; ++attempt) {
    DWORD needed = 0;
    if (ask(reinterpret_cast<BYTE*>(room.data()), static_cast<DWORD>(room.size()), &needed)) {
      return room;
    }
    if (::GetLastError() != ERROR_INSUFFICIENT_BUFFER || needed == 0) break;
    room.resize(needed);
  }
  return {};
}

std::string TextOf(const char* ansi) {
  return ansi != nullptr ? FromAnsi(ansi) : std::string();
}

bool IsOneOf(int value, int first, int last) {
  return value >= first && value <= last;
}

}  // namespace

Error PrinterError(long number, const std::string& what, DWORD code) {
  return {number, code == 0 ? what : what + ": " + SystemMessage(code), "Printer"};
}

void ClosePrinterHandle::operator()(HANDLE printer) const {
  ::ClosePrinter(printer);
}

std::vector<std::string> PrinterNames() {
  DWORD count = 0;
  const auto printers = AskWithRoom([&](BYTE* room, DWORD size, DWORD* needed) {
    return ::EnumPrintersA(PRINTER_ENUM_LOCAL | PRINTER_ENUM_CONNECTIONS, nullptr, 4, room, size,
                           needed, &count) != FALSE;
  });
  std::vector<std::string> names;
  const auto* const first = reinterpret_cast<const PRINTER_INFO_4A*>(printers.data());
  for (DWORD i = 0; !printers.empty() && i < count; ++i) {
    names.push_back(TextOf(first[i].pPrinterName));
  }
  return names;
}

std::string DefaultPrinterName() {
  DWORD size = 0;
  ::GetDefaultPrinterA(nullptr, &size);
  std::string name(size, '\0');
  if (size > 0 && ::GetDefaultPrinterA(name.data(), &size)) return FromAnsi(name.c_str());
  const std::vector<std::string> names = PrinterNames();
  return names.empty() ? std::string() : names.front();
}

PrinterDevice::PrinterDevice(std::string name) : name_(std::move(name)), ansi_(ToAnsi(name_)) {
  mode_ = AskDriver(Open().get(), nullptr);
}

PrinterHandle PrinterDevice::Open() const {
  HANDLE printer = nullptr;
  std::string name = ansi_;
  // Without a name the print server itself would be opened.
  if (name.empty() || !::OpenPrinterA(name.data(), &printer, nullptr)) {
    throw PrinterError(errors::DeviceUnavailable, "The printer " + name_ + " cannot be used",
                       ::GetLastError());
  }
  return PrinterHandle(printer);
}

PrinterDevice::ModeBytes PrinterDevice::AskDriver(HANDLE printer, ModeBytes* wanted) const {
  std::string name = ansi_;
  const LONG size = ::DocumentPropertiesA(nullptr, printer, name.data(), nullptr, nullptr, 0);
  ModeBytes mode(static_cast<std::size_t>(std::max<LONG>(size, sizeof(DEVMODEA))));
  const auto modeOf = [](ModeBytes& bytes) { return reinterpret_cast<DEVMODEA*>(bytes.data()); };
  const LONG answer =
      size < 0 ? size
               : ::DocumentPropertiesA(nullptr, printer, name.data(), modeOf(mode),
                                       wanted ? modeOf(*wanted) : nullptr,
                                       wanted ? DM_IN_BUFFER | DM_OUT_BUFFER : DM_OUT_BUFFER);
  if (answer < 0) {
    throw PrinterError(errors::DeviceUnavailable,
                       "The driver of the printer " + name_ + " does not answer", ::GetLastError());
  }
  return mode;
}

PrinterSettings PrinterDevice::Settings() const {
  const PrinterHandle printer = Open();
  const auto bytes = AskWithRoom([&](BYTE* room, DWORD size, DWORD* needed) {
    return ::GetPrinterA(printer.get(), 2, room, size, needed) != FALSE;
  });
  if (bytes.empty()) {
    throw PrinterError(errors::DeviceUnavailable, "The printer " + name_ + " cannot be used",
                       ::GetLastError());
  }
  const auto& info = *reinterpret_cast<const PRINTER_INFO_2A*>(bytes.data());
  PrinterSettings settings{
      .device = name_, .driver = TextOf(info.pDriverName), .port = TextOf(info.pPortName)};
  const DEVMODEA& mode = Mode();
  const auto read = [&](DWORD field, short value, int& into) {
    if ((mode.dmFields & field) != 0) into = value;
  };
  read(DM_ORIENTATION, mode.dmOrientation, settings.orientation);
  read(DM_COPIES, mode.dmCopies, settings.copies);
  read(DM_PAPERSIZE, mode.dmPaperSize, settings.paperSize);
  read(DM_DUPLEX, mode.dmDuplex, settings.duplex);
  return settings;
}

bool PrinterDevice::HasPaper(int paper) const {
  const int count = ::DeviceCapabilitiesA(ansi_.c_str(), nullptr, DC_PAPERS, nullptr, nullptr);
  // A driver that lists nothing is asked by trying.
  if (count <= 0) return IsOneOf(paper, 1, std::numeric_limits<short>::max());
  std::vector<WORD> papers(static_cast<std::size_t>(count));
  ::DeviceCapabilitiesA(ansi_.c_str(), nullptr, DC_PAPERS, reinterpret_cast<char*>(papers.data()),
                        nullptr);
  return std::find(papers.begin(), papers.end(), paper) != papers.end();
}

bool PrinterDevice::HasDuplex() const {
  return ::DeviceCapabilitiesA(ansi_.c_str(), nullptr, DC_DUPLEX, nullptr, nullptr) == 1;
}

void PrinterDevice::Apply(const PrinterSettings& settings) {
  const PrinterHandle printer = Open();
  ModeBytes wanted = mode_;
  auto& mode = *reinterpret_cast<DEVMODEA*>(wanted.data());
  if (IsOneOf(settings.orientation, device_mode::Portrait, device_mode::Landscape)) {
    mode.dmOrientation = static_cast<short>(settings.orientation);
    mode.dmFields |= DM_ORIENTATION;
  }
  if (IsOneOf(settings.copies, 1, std::numeric_limits<short>::max())) {
    mode.dmCopies = static_cast<short>(settings.copies);
    mode.dmFields |= DM_COPIES;
  }
  if (HasPaper(settings.paperSize)) {
    mode.dmPaperSize = static_cast<short>(settings.paperSize);
    mode.dmFields |= DM_PAPERSIZE;
    // These would win over the code (wingdi.h, DEVMODEA).
    mode.dmFields &= ~static_cast<DWORD>(DM_PAPERLENGTH | DM_PAPERWIDTH | DM_FORMNAME);
  }
  if (IsOneOf(settings.duplex, device_mode::DuplexSimplex, device_mode::DuplexHorizontal) &&
      HasDuplex()) {
    mode.dmDuplex = static_cast<short>(settings.duplex);
    mode.dmFields |= DM_DUPLEX;
  }
  mode_ = AskDriver(printer.get(), &wanted);
}

std::optional<std::string> PrinterDevice::AskForFile(const std::string& documentName) const {
  const std::wstring name = ToWide(documentName);
  DOCINFOW document{};
  document.cbSize = sizeof document;
  document.lpszDocName = name.c_str();
  const PrinterHandle printer = Open();
  ::SetLastError(ERROR_SUCCESS);
  wchar_t* const path = ::StartDocDlgW(printer.get(), &document);
  const DWORD failure = ::GetLastError();
  if (path == nullptr) {
    // Some systems answer a user who cancels like a port that needs no file.
    return Settings().port == "FILE:" ? std::nullopt : std::optional(std::string());
  }
  const auto answer = reinterpret_cast<std::intptr_t>(path);
  if (answer == SP_APPABORT || answer == SP_USERABORT) return std::nullopt;
  if (answer == SP_ERROR) {
    if (failure == ERROR_CANCELLED || failure == ERROR_PRINT_CANCELLED) return std::nullopt;
    throw PrinterError(errors::DeviceInputOutput,
                       "The printer " + name_ + " cannot ask for the file to print to", failure);
  }
  std::string utf8 = ToUtf8(path);
  ::LocalFree(path);
  return utf8;
}

MemoryDc PrinterDevice::Checked(HDC dc) const {
  if (dc == nullptr) {
    throw PrinterError(errors::DeviceUnavailable, "The printer " + name_ + " cannot be used",
                       ::GetLastError());
  }
  return MemoryDc(dc);
}

MemoryDc PrinterDevice::PrintingContext() const {
  Open();
  return Checked(::CreateDCA("WINSPOOL", ansi_.c_str(), nullptr, &Mode()));
}

MemoryDc PrinterDevice::InformationContext() const {
  Open();
  return Checked(::CreateICA("WINSPOOL", ansi_.c_str(), nullptr, &Mode()));
}

PixelSize PixelOf(HDC printer) {
  constexpr float TwipsPerInch = 1440;
  const auto side = [&](int dotsPerInch) {
    return TwipsPerInch / static_cast<float>(std::max(1, ::GetDeviceCaps(printer, dotsPerInch)));
  };
  return {side(LOGPIXELSX), side(LOGPIXELSY)};
}

}  // namespace velkor
