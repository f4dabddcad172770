// platform/windows/drawing/GdiHandles.h: owners of drawing handles.
#pragma once

#include <memory>
#include <type_traits>

#include "platform/windows/system/Win32.h"

namespace velkor {

struct DeleteGdiObject {
  void operator()(void* object) const { ::DeleteObject(object); }
};
struct DeleteDeviceContext {
  void operator()(HDC dc) const { ::DeleteDC(dc); }
};
struct DeletePicture {
  void operator()(HENHMETAFILE picture) const { ::DeleteEnhMetaFile(picture); }
};

using FontHandle = std::unique_ptr<std::remove_pointer_t<HFONT>, DeleteGdiObject>;
struct DeleteAccelerators {
  void operator()(HACCEL table) const { ::DestroyAcceleratorTable(table); }
};
using AcceleratorHandle = std::unique_ptr<std::remove_pointer_t<HACCEL>, DeleteAccelerators>;
using BrushHandle = std::unique_ptr<std::remove_pointer_t<HBRUSH>, DeleteGdiObject>;
using PenHandle = std::unique_ptr<std::remove_pointer_t<HPEN>, DeleteGdiObject>;
using BitmapHandle = std::unique_ptr<std::remove_pointer_t<HBITMAP>, DeleteGdiObject>;
using MetafileHandle = std::unique_ptr<std::remove_pointer_t<HENHMETAFILE>, DeletePicture>;
using MemoryDc = std::unique_ptr<std::remove_pointer_t<HDC>, DeleteDeviceContext>;

/// Brings a device context back to what it was.
class SavedDc {
 public:
  explicit SavedDc(HDC dc) : dc_(dc), state_(::SaveDC(dc)) {}
  ~SavedDc() { ::RestoreDC(dc_, state_); }
  SavedDc(const SavedDc&) = delete;
  SavedDc& operator=(const SavedDc&) = delete;

 private:
  HDC dc_;
  int state_;
};

}  // namespace velkor
