#pragma once
// ISubclass: an object that takes part in the handling of chosen messages of a window.

#include <cstdint>
#include <memory>

#include "platform/os.h"

namespace zk {

// What MsgResponse answers: whether, and when, the window's previous procedure runs too.
enum SubclassResponse : std::int32_t {
    ConsumeMessage = 0,      // the previous procedure does not see the message
    CallOriginalAfter = 1,   // it runs after the receivers, and its result is returned
    CallOriginalBefore = 2,  // it runs before the receivers, and its result is dropped
};

// Receivers are owned by shared pointers so that the dispatcher can keep one alive while it
// still uses it, also when the receiver detaches itself during its own message.
class ISubclass : public std::enable_shared_from_this<ISubclass> {
  public:
    virtual ~ISubclass() = default;
    virtual std::int32_t MsgResponse(std::int32_t& CurrentMessage) {
        (void)CurrentMessage;
        return 0;
    }
    virtual Lresult WindowProc(Hwnd hWnd, std::int32_t iMsg, Wparam wParam, Lparam lParam) {
        (void)hWnd, (void)iMsg, (void)wParam, (void)lParam;
        return 0;
    }
};

}  // namespace zk
