#pragma once
// The named events a companion uses: the 54 signals of the controller and the companions' own,
// each opened once and kept (created, of the same auto-reset kind, if the controller has not
// made it yet).

#include <cstdint>
#include <map>

#include "platform/handles.h"
#include "signals/shared_state.h"
#include "vocabulary/event_names.h"
#include "vocabulary/shared_names.h"

namespace zk::companion {

class Signals {
  public:
    Signals(KernelApi& kernel, TextApi& text);

    // The event of signal index 1 to 54; nullptr when it cannot be had.
    [[nodiscard]] Handle Event(std::int16_t index);
    // One of the companions' own events (shared_names.h), of controller `controllerId`.
    [[nodiscard]] Handle OwnEvent(SharedObject object, std::uint32_t controllerId, int number = 0);
    // Sets the event of a signal; false when it cannot be had or set.
    [[nodiscard]] bool Raise(std::int16_t index);
    [[nodiscard]] bool RaiseOwn(SharedObject object, std::uint32_t controllerId, int number = 0);

  private:
    Handle Open(const Text& fullName);

    KernelApi& os_;
    TextApi& text_;
    EventNames names_;
    std::map<Text, UniqueKernelHandle> events_;
};

// Opens the preview on desktop `desk`. Its switcher shows it and takes the keyboard, with the
// right to come to the front that the caller (which took the user's click or key) passes on.
bool ShowPreview(WindowApi& windows, Signals& signals, const SharedBlock& block, int desk);

}  // namespace zk::companion
