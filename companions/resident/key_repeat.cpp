#include "resident/key_repeat.h"

#include <algorithm>

namespace zk::companion {
namespace {

// The way from the keyboard to the switcher: the controller, its signal and the switcher's wake.
constexpr std::uint64_t kWay = 100;
// How much later than the keyboard's interval a repeat may arrive.
constexpr std::uint64_t kJitter = 50;

}  // namespace

KeyRepeat::KeyRepeat(HotKeyApi& keyboard, KernelApi& clock, SharedState& state)
    : keyboard_(keyboard), clock_(clock), state_(state) {
    // SPI_GETKEYBOARDDELAY: 0 to 3, a quarter of a second each and one more; SPI_GETKEYBOARDSPEED:
    // 0 to 31, about 2.5 to about 30 repeats a second.
    std::uint32_t delay = 0, speed = 0;
    if (keyboard.SystemParametersInfoW(SpiGetKeyboardDelay, delay) && delay <= 3) {
        delay_ = 250 * (delay + 1);
    }
    if (keyboard.SystemParametersInfoW(SpiGetKeyboardSpeed, speed) && speed <= 31) {
        interval_ = 62000 / (155 + 55 * std::uint64_t{speed});  // 1000 / (2.5 + 27.5 * speed / 31)
    }
}

bool KeyRepeat::IsRepeat(std::span<const std::int16_t> keys) {
    SharedBlock& last = state_.Block();
    const std::uint64_t now = clock_.GetTickCount64();
    const std::uint64_t since = now - last.hotKeyTick;
    // Too late to repeat the last one; or too soon, for a key repeats only the keyboard's delay
    // after its press (less the way): then it was pressed again, as fast hands do. But within the
    // repeats' interval it is a repeat: the arrival before may have been one whose press went
    // elsewhere (under Wine 10, to the switcher of a desktop just left), and a held "previous"
    // would go back and forth.
    const bool tooLate = since > (last.hotKeyRepeats == 0 ? delay_ : interval_) + kWay;
    const bool tooSoon =
        last.hotKeyRepeats == 0 && since > interval_ + kJitter && since + kWay < delay_;
    // A new press: the keyboard is not asked which key it was, which costs a trip to the system on
    // the way of a switch (under Wine 10 as long as the switch itself); the keys that may have
    // sent it are kept instead, and the arrival after it asks. Afterwards it could not: a desktop
    // no longer shown sees no key state.
    if (keys.size() <= std::size(last.hotKeyKeys) && (tooLate || tooSoon)) {
        last.hotKeyTick = now;
        last.hotKeyKeys[0] = keys.empty() ? std::int16_t{0} : keys[0];
        last.hotKeyKeys[1] = keys.size() > 1 ? keys[1] : std::int16_t{0};
        last.hotKeyRepeats = 0;
        return false;
    }
    std::int16_t held = 0;
    for (const std::int16_t key : keys) {
        if (key != 0 && keyboard_.GetAsyncKeyState(key) < 0) {
            held = key;
            break;
        }
    }
    const auto wasLast = [&](std::int16_t key) {
        return key != 0 && (key == last.hotKeyKeys[0] || key == last.hotKeyKeys[1]);
    };
    // The last repeat of a held key can arrive just after the key went up.
    if (held == 0 && last.hotKeyRepeats > 0) {
        const auto it = std::find_if(keys.begin(), keys.end(), wasLast);
        if (it != keys.end()) held = *it;
    }
    const bool repeat = wasLast(held) && !tooLate && !tooSoon;
    last.hotKeyTick = now;
    last.hotKeyKeys[0] = held;
    last.hotKeyKeys[1] = 0;
    last.hotKeyRepeats = repeat ? static_cast<std::int16_t>(last.hotKeyRepeats + 1) : 0;
    return repeat;
}

}  // namespace zk::companion
