#pragma once
// Small pictures of the four desktops, shared between the switchers through named memory: each
// DeskPilot writes its own desktop's while that desktop is shown, and the preview reads all.

#include <windows.h>

#include <cstdint>

namespace zk::companion {

inline constexpr int kThumbnailWidth = 192;
inline constexpr int kThumbnailHeight = 120;

struct Thumbnail {
    std::uint32_t valid;
    std::uint32_t pixels[kThumbnailWidth * kThumbnailHeight];  // top-down, 32-bit BGRX
};

// The shared picture of desktop 1 to 4, mapped for as long as the object lives.
class SharedThumbnail {
  public:
    explicit SharedThumbnail(int desktop);
    ~SharedThumbnail();
    SharedThumbnail(const SharedThumbnail&) = delete;
    SharedThumbnail& operator=(const SharedThumbnail&) = delete;

    // Shrinks what the calling thread's desktop shows into the picture.
    void Capture();
    // Draws the picture into a rectangle; false when there is none yet.
    bool Draw(HDC dc, const RECT& where) const;

  private:
    HANDLE mapping_ = nullptr;
    Thumbnail* view_ = nullptr;
};

}  // namespace zk::companion
