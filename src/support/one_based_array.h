#pragma once
// A fixed array indexed from 1, as the controller's record and the hotkey table are. An index
// outside 1..N raises the subscript-out-of-range error instead of touching memory.

#include <array>
#include <cstddef>

#include "support/zk_error.h"

namespace zk {

template <class T, std::size_t N>
class OneBasedArray {
  public:
    T& operator[](long index) { return items_[Slot(index)]; }
    const T& operator[](long index) const { return items_[Slot(index)]; }
    static constexpr long size() { return static_cast<long>(N); }
    auto begin() { return items_.begin(); }
    auto end() { return items_.end(); }
    [[nodiscard]] auto begin() const { return items_.begin(); }
    [[nodiscard]] auto end() const { return items_.end(); }

  private:
    static std::size_t Slot(long index) {
        if (index < 1 || index > static_cast<long>(N)) RaiseSubscriptOutOfRange();
        return static_cast<std::size_t>(index - 1);
    }
    std::array<T, N> items_{};
};

}  // namespace zk
