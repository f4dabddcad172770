// hosts/windows/OutlookVelkor/ControlData.cpp: the control's picture as data, which documents show
// instead of having it drawn.
#include "hosts/windows/OutlookVelkor/YearPlanControl.h"
// After windows.h.
#include <shlobj.h>

namespace velkor {
namespace {

FORMATETC PictureFormat(CLIPFORMAT format, DWORD medium) {
  return {format, nullptr, DVASPECT_CONTENT, -1, medium};
}

/// A picture of the older kind, which scales itself to the size it is given.
HGLOBAL ToMetafilePicture(HENHMETAFILE picture, SIZEL size) {
  const HDC screen = ::GetDC(nullptr);
  std::vector<BYTE> bits(::GetWinMetaFileBits(picture, 0, nullptr, MM_ANISOTROPIC, screen));
  ::GetWinMetaFileBits(picture, static_cast<UINT>(bits.size()), bits.data(), MM_ANISOTROPIC,
                       screen);
  ::ReleaseDC(nullptr, screen);
  const HMETAFILE older =
      bits.empty() ? nullptr : ::SetMetaFileBitsEx(static_cast<UINT>(bits.size()), bits.data());
  if (older == nullptr) return nullptr;
  const HGLOBAL block = ::GlobalAlloc(GMEM_MOVEABLE, sizeof(METAFILEPICT));
  if (block == nullptr) {
    ::DeleteMetaFile(older);
    return nullptr;
  }
  *static_cast<METAFILEPICT*>(::GlobalLock(block)) = {MM_ANISOTROPIC, size.cx, size.cy, older};
  ::GlobalUnlock(block);
  return block;
}

}  // namespace

/// Null when there is no memory for it.
HENHMETAFILE YearPlanControl::MakePicture() {
  const SIZEL extent = place_.Extent();
  const RECT frame{0, 0, extent.cx, extent.cy};
  const HDC dc = ::CreateEnhMetaFileW(nullptr, nullptr, &frame, nullptr);
  if (dc == nullptr) return nullptr;
  constexpr int HimetricPerMillimetre = 100;
  const auto pixels = [dc](LONG himetric, int resolution, int millimetres) {
    const int size = ::GetDeviceCaps(dc, millimetres) * HimetricPerMillimetre;
    return size <= 0 ? 1 : ::MulDiv(himetric, ::GetDeviceCaps(dc, resolution), size);
  };
  const RECTL bounds{0, 0, pixels(extent.cx, HORZRES, HORZSIZE),
                     pixels(extent.cy, VERTRES, VERTSIZE)};
  const HRESULT result =
      Draw(DVASPECT_CONTENT, -1, nullptr, nullptr, nullptr, dc, &bounds, nullptr, nullptr, 0);
  const HENHMETAFILE picture = ::CloseEnhMetaFile(dc);
  if (SUCCEEDED(result)) return picture;
  ::DeleteEnhMetaFile(picture);
  return nullptr;
}

STDMETHODIMP YearPlanControl::QueryGetData(FORMATETC* format) {
  if (format == nullptr) return E_POINTER;
  if (format->dwAspect != DVASPECT_CONTENT) return DV_E_DVASPECT;
  if (format->cfFormat != CF_ENHMETAFILE && format->cfFormat != CF_METAFILEPICT) {
    return DV_E_FORMATETC;
  }
  const DWORD medium = format->cfFormat == CF_ENHMETAFILE ? TYMED_ENHMF : TYMED_MFPICT;
  return (format->tymed & medium) != 0 ? S_OK : DV_E_TYMED;
}

STDMETHODIMP YearPlanControl::GetData(FORMATETC* format, STGMEDIUM* medium) {
  if (medium == nullptr) return E_POINTER;
  *medium = {};
  const HRESULT result = QueryGetData(format);
  if (FAILED(result)) return result;
  const HENHMETAFILE picture = MakePicture();
  if (picture == nullptr) return E_OUTOFMEMORY;
  if (format->cfFormat == CF_ENHMETAFILE) {
    medium->tymed = TYMED_ENHMF;
    medium->hEnhMetaFile = picture;
    return S_OK;
  }
  const HGLOBAL older = ToMetafilePicture(picture, place_.Extent());
  ::DeleteEnhMetaFile(picture);
  if (older == nullptr) return E_OUTOFMEMORY;
  medium->tymed = TYMED_MFPICT;
  medium->hMetaFilePict = older;
  return S_OK;
}

STDMETHODIMP YearPlanControl::GetCanonicalFormatEtc(FORMATETC* asked, FORMATETC* canonical) {
  if (asked == nullptr || canonical == nullptr) return E_POINTER;
  *canonical = *asked;
  canonical->ptd = nullptr;
  return DATA_S_SAMEFORMATETC;
}

STDMETHODIMP YearPlanControl::EnumFormatEtc(DWORD direction, IEnumFORMATETC** formats) {
  if (formats == nullptr) return E_POINTER;
  *formats = nullptr;
  if (direction != DATADIR_GET) return E_NOTIMPL;
  const FORMATETC given[] = {PictureFormat(CF_ENHMETAFILE, TYMED_ENHMF),
                             PictureFormat(CF_METAFILEPICT, TYMED_MFPICT)};
  return ::SHCreateStdEnumFmtEtc(static_cast<UINT>(std::size(given)), given, formats);
}

}  // namespace velkor
