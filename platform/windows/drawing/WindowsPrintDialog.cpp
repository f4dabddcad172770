// platform/windows/drawing/WindowsPrintDialog.cpp: the blocks of device mode and device names
// around PrintDlg.
#include "platform/windows/drawing/WindowsPrintDialog.h"

#include <algorithm>
#include <cstring>
#include <string>

#include "platform/windows/drawing/PrinterDevice.h"
#include "platform/windows/system/AnsiText.h"
#include "platform/windows/system/GlobalBlock.h"
// After windows.h.
#include <commdlg.h>

namespace velkor {
namespace {

[[noreturn]] void FailWithoutMemory() {
  throw PrinterError(errors::InvalidProcedureCall, "There is no memory for the print dialog");
}

void FillMode(const GlobalBlock& block, const PrinterSettings& settings) {
  const LockedBlock<DEVMODEA> locked(block);
  if (locked.Get() == nullptr) FailWithoutMemory();
  DEVMODEA& mode = *locked.Get();
  const std::string device = ToAnsi(settings.device);
  device.copy(reinterpret_cast<char*>(mode.dmDeviceName), CCHDEVICENAME - 1);
  mode.dmSpecVersion = DM_SPECVERSION;
  mode.dmSize = sizeof(DEVMODEA);
  mode.dmFields = DM_ORIENTATION | DM_COPIES | DM_PAPERSIZE | DM_DUPLEX;
  mode.dmOrientation = static_cast<short>(settings.orientation);
  mode.dmCopies = static_cast<short>(settings.copies);
  mode.dmPaperSize = static_cast<short>(settings.paperSize);
  mode.dmDuplex = static_cast<short>(settings.duplex);
}

/// Offsets of driver, device and port, then these names, each with its zero byte.
class Names {
 public:
  explicit Names(const PrinterSettings& settings)
      : driver_(ToAnsi(settings.driver)),
        device_(ToAnsi(settings.device)),
        port_(ToAnsi(settings.port)) {}

  std::size_t Size() const {
    return sizeof(DEVNAMES) + driver_.size() + device_.size() + port_.size() + 3;
  }
  void Fill(const GlobalBlock& block) const {
    const LockedBlock<char> locked(block);
    if (locked.Get() == nullptr) FailWithoutMemory();
    std::size_t next = sizeof(DEVNAMES);
    const auto put = [&](const std::string& name) {
      const auto at = static_cast<WORD>(next);
      std::memcpy(locked.Get() + next, name.c_str(), name.size() + 1);
      next += name.size() + 1;
      return at;
    };
    DEVNAMES offsets{};
    offsets.wDriverOffset = put(driver_);
    offsets.wDeviceOffset = put(device_);
    offsets.wOutputOffset = put(port_);
    std::memcpy(locked.Get(), &offsets, sizeof offsets);
  }

 private:
  std::string driver_;
  std::string device_;
  std::string port_;
};

void ReadNames(const GlobalBlock& block, PrinterSettings& settings) {
  const LockedBlock<const char> locked(block);
  const std::size_t size = block.Size();
  if (locked.Get() == nullptr || size < sizeof(DEVNAMES)) return;
  DEVNAMES offsets{};
  std::memcpy(&offsets, locked.Get(), sizeof offsets);
  const auto nameAt = [&](WORD offset) {
    const char* const begin = locked.Get() + std::min<std::size_t>(offset, size);
    return FromAnsi({begin, std::find(begin, locked.Get() + size, '\0')});
  };
  settings.driver = nameAt(offsets.wDriverOffset);
  settings.device = nameAt(offsets.wDeviceOffset);
  settings.port = nameAt(offsets.wOutputOffset);
}

void ReadMode(const GlobalBlock& block, PrinterSettings& settings) {
  const LockedBlock<const DEVMODEA> locked(block);
  if (locked.Get() == nullptr) return;
  const DEVMODEA& mode = *locked.Get();
  const auto read = [&](DWORD field, short value, int& into) {
    if ((mode.dmFields & field) != 0) into = value;
  };
  read(DM_ORIENTATION, mode.dmOrientation, settings.orientation);
  read(DM_COPIES, mode.dmCopies, settings.copies);
  read(DM_PAPERSIZE, mode.dmPaperSize, settings.paperSize);
  read(DM_DUPLEX, mode.dmDuplex, settings.duplex);
}

[[noreturn]] void Fail(DWORD code) {
  if (code == PDERR_NODEFAULTPRN || code == PDERR_NODEVICES || code == PDERR_PRINTERNOTFOUND) {
    throw PrinterError(errors::DeviceUnavailable, "There is no printer");
  }
  throw PrinterError(errors::InvalidProcedureCall,
                     "The print dialog cannot be shown: code " + std::to_string(code));
}

}  // namespace

bool ShowPrintDialog(HWND over, PrinterSettings& settings) {
  GlobalBlock mode(sizeof(DEVMODEA));
  FillMode(mode, settings);
  const Names names(settings);
  GlobalBlock nameBlock(names.Size());
  names.Fill(nameBlock);

  PRINTDLGA dialog{};
  dialog.lStructSize = sizeof dialog;
  dialog.hwndOwner = over;
  dialog.hDevMode = mode.Get();
  dialog.hDevNames = nameBlock.Get();
  // All pages are printed, and whoever called this tells what failed.
  dialog.Flags = PD_ALLPAGES | PD_NOPAGENUMS | PD_NOSELECTION | PD_HIDEPRINTTOFILE |
                 PD_USEDEVMODECOPIESANDCOLLATE | PD_NOWARNING;
  const bool confirmed = ::PrintDlgA(&dialog) != FALSE;
  const DWORD failure = confirmed ? 0 : ::CommDlgExtendedError();
  mode.Follow(dialog.hDevMode);
  nameBlock.Follow(dialog.hDevNames);
  if (failure != 0) Fail(failure);
  if (!confirmed) return false;
  ReadNames(nameBlock, settings);
  ReadMode(mode, settings);
  return true;
}

}  // namespace velkor
