#include "platform/win32/win32_text.h"

#include "platform/win32/last_error.h"

namespace zk::win32 {

static_assert(sizeof(SystemTime) == sizeof(SYSTEMTIME));

std::uint32_t Win32Text::FormatMessageW(std::uint32_t flags, std::uint32_t messageId,
                                        std::uint32_t languageId, std::span<char16_t> buffer) {
    return Keep(::FormatMessageW(flags, nullptr, messageId, languageId, W(buffer.data()),
                                 static_cast<DWORD>(buffer.size()), nullptr));
}
Text Win32Text::MultiByteToWideChar(std::string_view ansi) {
    const int n =
        ::MultiByteToWideChar(CP_ACP, 0, ansi.data(), static_cast<int>(ansi.size()), nullptr, 0);
    Text text(static_cast<std::size_t>(n), u'\0');
    Keep(::MultiByteToWideChar(CP_ACP, 0, ansi.data(), static_cast<int>(ansi.size()),
                               W(text.data()), n));
    return text;
}
Ansi Win32Text::WideCharToMultiByte(std::u16string_view text) {
    const auto* w = reinterpret_cast<const wchar_t*>(text.data());
    const int size = static_cast<int>(text.size());
    const int n = ::WideCharToMultiByte(CP_ACP, 0, w, size, nullptr, 0, nullptr, nullptr);
    Ansi ansi(static_cast<std::size_t>(n), '\0');
    Keep(::WideCharToMultiByte(CP_ACP, 0, w, size, ansi.data(), n, nullptr, nullptr));
    return ansi;
}
Text Win32Text::ExpandEnvironmentStringsW(const Text& text) {
    const DWORD n = ::ExpandEnvironmentStringsW(W(text), nullptr, 0);
    Text expanded(n > 0 ? n : 1, u'\0');
    Keep(::ExpandEnvironmentStringsW(W(text), W(expanded.data()), n));
    return Text(expanded.c_str());
}
SystemTime Win32Text::GetLocalTime() {
    SYSTEMTIME st{};
    ::GetLocalTime(&st);
    TakeLastError();
    return SystemTime{st.wYear, st.wMonth,  st.wDayOfWeek, st.wDay,
                      st.wHour, st.wMinute, st.wSecond,    st.wMilliseconds};
}
Text Win32Text::GetDateFormatW(const SystemTime& time) {
    const auto* st = reinterpret_cast<const SYSTEMTIME*>(&time);
    const int n = ::GetDateFormatW(LOCALE_USER_DEFAULT, DATE_SHORTDATE, st, nullptr, nullptr, 0);
    Text text(static_cast<std::size_t>(n > 0 ? n : 1), u'\0');
    Keep(::GetDateFormatW(LOCALE_USER_DEFAULT, DATE_SHORTDATE, st, nullptr, W(text.data()), n));
    return Text(text.c_str());
}
Text Win32Text::GetTimeFormatW(const SystemTime& time) {
    const auto* st = reinterpret_cast<const SYSTEMTIME*>(&time);
    const int n = ::GetTimeFormatW(LOCALE_USER_DEFAULT, 0, st, nullptr, nullptr, 0);
    Text text(static_cast<std::size_t>(n > 0 ? n : 1), u'\0');
    Keep(::GetTimeFormatW(LOCALE_USER_DEFAULT, 0, st, nullptr, W(text.data()), n));
    return Text(text.c_str());
}
Hkl Win32Text::GetKeyboardLayout(std::uint32_t threadId) {
    return Keep(::GetKeyboardLayout(threadId));
}
std::uint32_t Win32Text::MapVirtualKeyExA(std::uint32_t code, std::uint32_t mapType, Hkl layout) {
    return Keep(::MapVirtualKeyExA(code, mapType, layout));
}
int Win32Text::GetKeyNameTextA(std::int32_t lParam, std::span<char> buffer) {
    return Keep(::GetKeyNameTextA(lParam, buffer.data(), static_cast<int>(buffer.size())));
}

}  // namespace zk::win32
