// zelkovactl.exe: the console tool. The arguments come in as UTF-16 and are handed on as UTF-8.
#include <windows.h>

#include <iostream>

#include "platform/win32/win32_os.h"
#include "zelkovactl/ctl.h"

int wmain(int argc, wchar_t** argv) {
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
    return zk::ctl::Ctl(os, std::cout, std::cerr).Run(args);
}
