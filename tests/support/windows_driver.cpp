#include "support/windows_driver.h"

#include <shlobj.h>
#include <tlhelp32.h>

#include <fstream>
#include <iterator>

namespace zk::support {

void Press(std::initializer_list<WORD> keys) {
    std::vector<INPUT> inputs;
    auto add = [&](WORD key, DWORD flags) {
        INPUT input{};
        input.type = INPUT_KEYBOARD;
        input.ki.wVk = key;
        input.ki.dwFlags = flags;
        inputs.push_back(input);
    };
    for (const WORD key : keys)
        add(key, 0);
    for (auto it = keys.end(); it != keys.begin();)
        add(*--it, KEYEVENTF_KEYUP);
    ::SendInput(static_cast<UINT>(inputs.size()), inputs.data(), sizeof(INPUT));
}

std::wstring LogPath() {
    wchar_t folder[MAX_PATH] = {};
    ::SHGetFolderPathW(nullptr, CSIDL_LOCAL_APPDATA, nullptr, 0, folder);
    return std::wstring(folder) + L"\\ZelkovaErrors.txt";
}

std::string LogText() {
    const std::wstring path = LogPath();
    std::ifstream in(path.c_str(), std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(in), {});
}

std::string SystemText(DWORD code) {
    char text[256] = {};
    const DWORD n = ::FormatMessageA(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS,
                                     nullptr, code, 0, text, 256, nullptr);
    return std::string(text, n);
}

void SetDword(const std::wstring& key, const wchar_t* name, DWORD value) {
    HKEY handle = nullptr;
    ::RegCreateKeyW(HKEY_CURRENT_USER, key.c_str(), &handle);
    ::RegSetValueExW(handle, name, 0, REG_DWORD, reinterpret_cast<const BYTE*>(&value), 4);
    ::RegCloseKey(handle);
}

std::vector<DWORD> ProcessesNamed(std::initializer_list<const wchar_t*> names) {
    std::vector<DWORD> ids;
    const HANDLE snapshot = ::CreateToolhelp32Snapshot(TH32CS_SNAPPROCESS, 0);
    PROCESSENTRY32W entry{};
    entry.dwSize = sizeof entry;
    for (BOOL more = ::Process32FirstW(snapshot, &entry); more;
         more = ::Process32NextW(snapshot, &entry)) {
        for (const wchar_t* name : names) {
            if (_wcsicmp(entry.szExeFile, name) == 0) ids.push_back(entry.th32ProcessID);
        }
    }
    ::CloseHandle(snapshot);
    return ids;
}

}  // namespace zk::support
