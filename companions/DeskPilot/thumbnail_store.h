#pragma once
// Small pictures of the four desktops, shared between the switchers through named memory: each
// switcher writes its own desktop's while that desktop is shown, and the preview reads all four.

#include <array>
#include <cstdint>

#include "platform/handles.h"
#include "vocabulary/desktops.h"

namespace zk::companion {

inline constexpr int kThumbnailWidth = 192;
inline constexpr int kThumbnailHeight = 120;

struct Thumbnail {
    std::uint32_t valid;
    std::uint32_t pixels[kThumbnailWidth * kThumbnailHeight];  // top-down, 32-bit BGRX
};

class ThumbnailStore {
  public:
    ThumbnailStore(KernelApi& os, std::uint32_t controllerId);
    // Desktop 1 to 4's picture; nullptr when the memory could not be had.
    [[nodiscard]] Thumbnail* Of(int desk) { return views_[desk - 1]; }

  private:
    std::array<UniqueKernelHandle, kDesktopCount> mappings_;
    std::array<UniqueView, kDesktopCount> owned_;
    std::array<Thumbnail*, kDesktopCount> views_{};
};

}  // namespace zk::companion
