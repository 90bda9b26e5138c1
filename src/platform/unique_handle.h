#pragma once
// One small template makes every owning handle wrapper: it closes its handle through the seam
// when it goes out of scope.

#include <utility>

#include "platform/os.h"

namespace zk {

template <class H, auto Close, std::intptr_t Invalid = 0>
class UniqueHandle {
  public:
    UniqueHandle() = default;
    UniqueHandle(Os& os, H handle) : os_(&os), handle_(handle) {}
    UniqueHandle(const UniqueHandle&) = delete;
    UniqueHandle& operator=(const UniqueHandle&) = delete;
    UniqueHandle(UniqueHandle&& other) noexcept
        : os_(other.os_), handle_(std::exchange(other.handle_, None())) {}
    UniqueHandle& operator=(UniqueHandle&& other) noexcept {
        if (this != &other) {
            reset();
            os_ = other.os_;
            handle_ = std::exchange(other.handle_, None());
        }
        return *this;
    }
    ~UniqueHandle() { reset(); }

    [[nodiscard]] H get() const { return handle_; }
    [[nodiscard]] bool valid() const { return handle_ != None(); }
    explicit operator bool() const { return valid(); }
    void reset() {
        if (valid()) (void)(os_->*Close)(std::exchange(handle_, None()));
    }
    // The pointer to fill for calls that return the handle through an argument.
    H& out() {
        reset();
        return handle_;
    }

  private:
    static H None() { return HandleFrom<H>(Invalid); }
    Os* os_ = nullptr;
    H handle_ = None();
};

using UniqueKernelHandle = UniqueHandle<Handle, &Os::CloseHandle>;  // events, processes, threads
using UniqueFileHandle = UniqueHandle<Handle, &Os::CloseHandle, -1>;
using UniqueDesktop = UniqueHandle<Hdesk, &Os::CloseDesktop>;
using UniqueRegKey = UniqueHandle<Hkey, &Os::RegCloseKey>;

}  // namespace zk
