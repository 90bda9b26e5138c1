// zelkovactl.exe: the console tool (ctl.h). The arguments come in as UTF-16 and are handed on
// as UTF-8; the output goes to the console, or to a file or pipe as it is.
#include <windows.h>

#include "launch/entry_points.h"
#include "platform/win32/win32_os.h"
#include "zelkovactl/ctl.h"

namespace {

class HandleOutput final : public zk::ctl::Output {
  public:
    explicit HandleOutput(DWORD which) : handle_(::GetStdHandle(which)) {}
    void Write(std::string_view text) override {
        DWORD written = 0;
        // A line ends in CR LF on Windows.
        for (std::size_t start = 0; start < text.size();) {
            const auto end = text.find('\n', start);
            const std::string_view line = text.substr(
                start, end == std::string_view::npos ? std::string_view::npos : end - start);
            ::WriteFile(handle_, line.data(), static_cast<DWORD>(line.size()), &written, nullptr);
            if (end == std::string_view::npos) break;
            ::WriteFile(handle_, "\r\n", 2, &written, nullptr);
            start = end + 1;
        }
    }

  private:
    HANDLE handle_;
};

}  // namespace

ZK_ENTRY int ZkZelkovactl(int argc, wchar_t** argv) {
    std::vector<std::string> args;
    for (int i = 1; i < argc; ++i) {
        const int n = ::WideCharToMultiByte(CP_UTF8, 0, argv[i], -1, nullptr, 0, nullptr, nullptr);
        std::string arg(static_cast<std::size_t>(n > 0 ? n - 1 : 0), '\0');
        ::WideCharToMultiByte(CP_UTF8, 0, argv[i], -1, arg.data(), n, nullptr, nullptr);
        args.push_back(arg);
    }
    // The log is in the ANSI code page; the console shows it in that one too.
    ::SetConsoleOutputCP(::GetACP());
    zk::Win32Os os;
    HandleOutput out(STD_OUTPUT_HANDLE), err(STD_ERROR_HANDLE);
    return zk::ctl::Ctl(os, out, err).Run(args);
}
