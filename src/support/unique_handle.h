#pragma once
// One small template makes every owning handle wrapper: it closes its handle with its closer
// when it goes out of scope or is reset. A closer keeps the caller's last error, so that a
// wrapper released on a failure path does not hide why the path failed.

#include <cstdint>
#include <utility>

namespace zk {

template <class H, class Closer, std::intptr_t Invalid = 0>
class UniqueHandle {
  public:
    UniqueHandle() = default;
    explicit UniqueHandle(H handle, Closer closer = {}) : closer_(closer), handle_(handle) {}
    UniqueHandle(const UniqueHandle&) = delete;
    UniqueHandle& operator=(const UniqueHandle&) = delete;
    UniqueHandle(UniqueHandle&& other) noexcept
        : closer_(other.closer_), handle_(std::exchange(other.handle_, None())) {}
    UniqueHandle& operator=(UniqueHandle&& other) noexcept {
        if (this != &other) {
            reset();
            closer_ = other.closer_;
            handle_ = std::exchange(other.handle_, None());
        }
        return *this;
    }
    ~UniqueHandle() { reset(); }

    [[nodiscard]] H get() const { return handle_; }
    [[nodiscard]] bool valid() const { return handle_ != None(); }
    explicit operator bool() const { return valid(); }
    void reset(H handle = None()) {
        if (valid()) closer_(handle_);
        handle_ = handle;
    }
    [[nodiscard]] H release() { return std::exchange(handle_, None()); }
    // The slot to fill for calls that return the handle through an argument.
    H& out() {
        reset();
        return handle_;
    }

  private:
    static H None() { return reinterpret_cast<H>(Invalid); }
    [[no_unique_address]] Closer closer_{};
    H handle_ = None();
};

}  // namespace zk
