#include "common/thumbnails.h"

#include <cstring>
#include <string>

namespace zk::companion {
namespace {

// 32 bits per pixel, top-down.
BITMAPINFO PictureFormat() {
    BITMAPINFO info{};
    info.bmiHeader.biSize = sizeof(BITMAPINFOHEADER);
    info.bmiHeader.biWidth = kThumbnailWidth;
    info.bmiHeader.biHeight = -kThumbnailHeight;
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = 32;
    info.bmiHeader.biCompression = BI_RGB;
    return info;
}

}  // namespace

SharedThumbnail::SharedThumbnail(int desktop) {
    const std::wstring name = L"Local\\zelkova2_thumbnail" + std::to_wstring(desktop);
    mapping_ = ::CreateFileMappingW(INVALID_HANDLE_VALUE, nullptr, PAGE_READWRITE, 0,
                                    sizeof(Thumbnail), name.c_str());
    if (mapping_ != nullptr) {
        view_ = static_cast<Thumbnail*>(
            ::MapViewOfFile(mapping_, FILE_MAP_ALL_ACCESS, 0, 0, sizeof(Thumbnail)));
    }
}

SharedThumbnail::~SharedThumbnail() {
    if (view_ != nullptr) ::UnmapViewOfFile(view_);
    if (mapping_ != nullptr) ::CloseHandle(mapping_);
}

void SharedThumbnail::Capture() {
    if (view_ == nullptr) return;
    const HDC screen = ::GetDC(nullptr);
    const HDC memory = ::CreateCompatibleDC(screen);
    const BITMAPINFO info = PictureFormat();
    void* bits = nullptr;
    const HBITMAP bitmap = ::CreateDIBSection(screen, &info, DIB_RGB_COLORS, &bits, nullptr, 0);
    if (bitmap != nullptr) {
        const HGDIOBJ old = ::SelectObject(memory, bitmap);
        ::SetStretchBltMode(memory, HALFTONE);
        const BOOL drawn =
            ::StretchBlt(memory, 0, 0, kThumbnailWidth, kThumbnailHeight, screen, 0, 0,
                         ::GetSystemMetrics(SM_CXSCREEN), ::GetSystemMetrics(SM_CYSCREEN), SRCCOPY);
        ::GdiFlush();
        if (drawn) {
            std::memcpy(view_->pixels, bits, sizeof view_->pixels);
            view_->valid = 1;
        }
        ::SelectObject(memory, old);
        ::DeleteObject(bitmap);
    }
    ::DeleteDC(memory);
    ::ReleaseDC(nullptr, screen);
}

bool SharedThumbnail::Draw(HDC dc, const RECT& where) const {
    if (view_ == nullptr || view_->valid == 0) return false;
    const BITMAPINFO info = PictureFormat();
    ::SetStretchBltMode(dc, HALFTONE);
    return ::StretchDIBits(dc, where.left, where.top, where.right - where.left,
                           where.bottom - where.top, 0, 0, kThumbnailWidth, kThumbnailHeight,
                           view_->pixels, &info, DIB_RGB_COLORS, SRCCOPY) != 0;
}

}  // namespace zk::companion
