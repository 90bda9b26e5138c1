// zelkovactl.exe: the console tool (ctl.h). The arguments come in as UTF-16 and are handed on
// as UTF-8; the output is UTF-8 text, written to a console as UTF-16.
#include <windows.h>

#include "launch/entry_points.h"
#include "platform/win32/win32_os.h"
#include "zelkovactl/ctl.h"

namespace {

// The tool's text is UTF-8. A console is given it as UTF-16, whatever its code page (which is
// left as it is); a file or a pipe gets the UTF-8 bytes.
class HandleOutput final : public zk::ctl::Output {
  public:
    explicit HandleOutput(DWORD which) : handle_(::GetStdHandle(which)) {
        DWORD mode = 0;
        console_ = ::GetConsoleMode(handle_, &mode) != FALSE;
    }
    void Write(std::string_view text) override {
        // A line ends in CR LF on Windows.
        for (std::size_t start = 0; start < text.size();) {
            const auto end = text.find('\n', start);
            Put(text.substr(start,
                            end == std::string_view::npos ? std::string_view::npos : end - start));
            if (end == std::string_view::npos) break;
            Put("\r\n");
            start = end + 1;
        }
    }

  private:
    void Put(std::string_view bytes) {
        DWORD written = 0;
        if (!console_) {
            ::WriteFile(handle_, bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr);
            return;
        }
        const int size = static_cast<int>(bytes.size());
        std::wstring wide(static_cast<std::size_t>(
                              ::MultiByteToWideChar(CP_UTF8, 0, bytes.data(), size, nullptr, 0)),
                          L'\0');
        ::MultiByteToWideChar(CP_UTF8, 0, bytes.data(), size, wide.data(),
                              static_cast<int>(wide.size()));
        ::WriteConsoleW(handle_, wide.data(), static_cast<DWORD>(wide.size()), &written, nullptr);
    }

    HANDLE handle_;
    bool console_ = false;
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
    zk::Win32Os os;
    HandleOutput out(STD_OUTPUT_HANDLE), err(STD_ERROR_HANDLE);
    return zk::ctl::Ctl(os, out, err).Run(args);
}
