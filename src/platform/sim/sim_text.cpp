#include "platform/sim/sim_text.h"

#include <algorithm>

#include "platform/sim/code_page_1252.h"
#include "platform/sim/keyboard_layout.h"
#include "platform/sim/system_texts.h"

namespace zk::sim {
namespace {

constexpr std::uint32_t kFormatMessageIgnoreInserts = 0x0200;
constexpr std::uint32_t kFormatMessageFromSystem = 0x1000;
constexpr std::uint32_t kErrorMrMidNotFound = 317;

Text Upper(Text text) {
    for (auto& c : text) {
        if (c >= u'a' && c <= u'z') c = static_cast<char16_t>(c - u'a' + u'A');
    }
    return text;
}

Text Digits2(int value) {
    Text t;
    if (value < 10) t += u'0';
    t += Utf16(std::to_string(value));
    return t;
}

// "%1" and the like: an insert that the system fills from the arguments unless told not to.
bool HasInsert(const Text& text) {
    for (std::size_t i = 0; i + 1 < text.size(); ++i) {
        if (text[i] == u'%' && text[i + 1] >= u'1' && text[i + 1] <= u'9') return true;
    }
    return false;
}

}  // namespace

SimText::SimText(Session& session) : session_(session), systemTexts_(EnglishSystemTexts()) {
    SetEnvironmentVariable(u"SystemRoot", u"C:\\Windows");
    SetEnvironmentVariable(u"USERPROFILE", u"C:\\Users\\user1");
    SetEnvironmentVariable(u"LOCALAPPDATA", u"C:\\Users\\user1\\AppData\\Local");
}

void SimText::SetEnvironmentVariable(const Text& name, const Text& value) {
    environment_[Upper(name)] = value;
}

std::uint32_t SimText::FormatMessageW(std::uint32_t flags, std::uint32_t messageId,
                                      std::uint32_t languageId, std::span<char16_t> buffer) {
    if (session_.Enter("FormatMessageW", std::to_string(messageId) + " flags " + Hex(flags) +
                                             " lang " + std::to_string(languageId) + " size " +
                                             std::to_string(buffer.size()))) {
        return 0;
    }
    const auto it = systemTexts_.find(messageId);
    if ((flags & kFormatMessageFromSystem) == 0 || it == systemTexts_.end()) {
        session_.last = kErrorMrMidNotFound;
        return 0;
    }
    // Without arguments to fill them, the inserts of a text cannot be formatted.
    if ((flags & kFormatMessageIgnoreInserts) == 0 && HasInsert(it->second)) {
        session_.last = ErrorInvalidParameter;
        return 0;
    }
    if (it->second.size() >= buffer.size()) {
        session_.last = ErrorInsufficientBuffer;
        return 0;
    }
    std::copy(it->second.begin(), it->second.end(), buffer.begin());
    buffer[it->second.size()] = u'\0';
    return static_cast<std::uint32_t>(it->second.size());
}

Text SimText::MultiByteToWideChar(std::string_view ansi) {
    if (session_.Enter("MultiByteToWideChar", std::to_string(ansi.size()) + " bytes")) return {};
    return DecodeCp1252(ansi);
}

Ansi SimText::WideCharToMultiByte(std::u16string_view text) {
    if (session_.Enter("WideCharToMultiByte", std::to_string(text.size()) + " chars")) return {};
    return EncodeCp1252(text);
}

// %NAME% of a known variable is replaced; anything else stays as it is.
Text SimText::ExpandEnvironmentStringsW(const Text& text) {
    if (session_.Enter("ExpandEnvironmentStringsW", Utf8(text))) return {};
    Text out;
    for (std::size_t i = 0; i < text.size();) {
        const auto end = text[i] == u'%' ? text.find(u'%', i + 1) : Text::npos;
        const auto value = end == Text::npos
                               ? environment_.end()
                               : environment_.find(Upper(text.substr(i + 1, end - i - 1)));
        if (value != environment_.end()) {
            out += value->second;
            i = end + 1;
        } else {
            out += text[i++];
        }
    }
    return out;
}

SystemTime SimText::GetLocalTime() {
    (void)session_.Enter("GetLocalTime");
    return localTime_;
}

Text SimText::GetDateFormatW(const SystemTime& t) {
    if (session_.Enter("GetDateFormatW")) return {};
    return Utf16(std::to_string(t.wMonth) + "/" + std::to_string(t.wDay) + "/" +
                 std::to_string(t.wYear));
}

Text SimText::GetTimeFormatW(const SystemTime& t) {
    if (session_.Enter("GetTimeFormatW")) return {};
    const int hour12 = t.wHour % 12 == 0 ? 12 : t.wHour % 12;
    return Utf16(std::to_string(hour12)) + u":" + Digits2(t.wMinute) + u":" + Digits2(t.wSecond) +
           (t.wHour < 12 ? u" AM" : u" PM");
}

Hkl SimText::GetKeyboardLayout(std::uint32_t threadId) {
    (void)session_.Enter("GetKeyboardLayout", std::to_string(threadId));
    return HandleFrom<Hkl>(0x04090409);
}

std::uint32_t SimText::MapVirtualKeyExA(std::uint32_t code, std::uint32_t mapType, Hkl layout) {
    if (session_.Enter("MapVirtualKeyExA", std::to_string(code) + " type " +
                                               std::to_string(mapType) + " " + Hex(layout))) {
        return 0;
    }
    return mapType == 0 ? UsScanCodeOf(code) : 0;
}

int SimText::GetKeyNameTextA(std::int32_t lParam, std::span<char> buffer) {
    if (session_.Enter("GetKeyNameTextA", Hex(lParam)) || buffer.empty()) return 0;
    const auto scan = static_cast<std::uint32_t>(lParam >> 16) & 0xFF;
    const bool extended = ((lParam >> 24) & 1) != 0;
    const std::string name = UsKeyNameOf(scan, extended);
    const std::size_t n = std::min(name.size(), buffer.size() - 1);
    std::copy_n(name.begin(), n, buffer.begin());
    buffer[n] = '\0';
    return static_cast<int>(n);
}

}  // namespace zk::sim
