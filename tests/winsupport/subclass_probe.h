#pragma once
// A window whose own procedure and whose receivers write what they see into one shared list.

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "platform/os.h"
#include "winsupport/i_subclass.h"

namespace zk::testing {

inline std::vector<std::string> g_seen;
inline Os* g_probeOs = nullptr;
inline constexpr Lresult kOriginalResult = 100;

inline Lresult ZK_CALLBACK OriginalProcedure(Hwnd w, std::uint32_t m, Wparam wp, Lparam lp) {
    if (m >= WmUser) {
        g_seen.push_back("original " + std::to_string(m - WmUser));
        return kOriginalResult;
    }
    return g_probeOs->DefWindowProcW(w, m, wp, lp);
}

inline Hwnd MakeProbeWindow(Os& os, Hwnd owner = nullptr) {
    g_probeOs = &os;
    (void)os.RegisterClassW(u"ZkSubclassProbe", &OriginalProcedure, os.GetModuleHandleW());
    return os.CreateWindowExW(0, u"ZkSubclassProbe", u"probe", 0, owner, os.GetModuleHandleW());
}

class Probe : public ISubclass {
  public:
    Probe(std::string name, std::int32_t response, Lresult result)
        : name_(std::move(name)), response_(response), result_(result) {}
    std::int32_t MsgResponse(std::int32_t& message) override {
        g_seen.push_back(name_ + " asked " +
                         std::to_string(message - static_cast<std::int32_t>(WmUser)));
        return response_;
    }
    Lresult WindowProc(Hwnd w, std::int32_t m, Wparam wp, Lparam lp) override {
        g_seen.push_back(name_ + " proc " + std::to_string(m - static_cast<std::int32_t>(WmUser)));
        if (during) during(w, m, wp, lp);
        return result_;
    }
    std::function<void(Hwnd, std::int32_t, Wparam, Lparam)> during;

  private:
    std::string name_;
    std::int32_t response_;
    Lresult result_;
};

inline std::shared_ptr<Probe> MakeProbe(std::string name, std::int32_t response, Lresult result) {
    return std::make_shared<Probe>(std::move(name), response, result);
}

}  // namespace zk::testing
