#include "settings/registry.h"

#include <algorithm>
#include <array>
#include <cstring>

#include "diagnostics/win_api_error.h"
#include "platform/handles.h"
#include "support/text.h"

namespace zk {
namespace {

// Any value as text: numbers in decimal, bytes taken as UTF-16 characters.
Text AsText(const RegData& value) {
    if (const auto* text = std::get_if<Text>(&value)) return *text;
    if (const auto* n = std::get_if<std::int16_t>(&value)) return DecimalText(*n);
    if (const auto* n = std::get_if<std::int32_t>(&value)) return DecimalText(*n);
    const auto& bytes = std::get<std::vector<std::byte>>(value);
    Text text((bytes.size() + 1) / 2, u'\0');
    std::memcpy(text.data(), bytes.data(), bytes.size());
    return text;
}

// Type 2 when a "%" is followed, from two places after it on, by another "%".
std::uint32_t TextTypeFor(const Text& text) {
    const auto first = text.find(u'%');
    if (first == Text::npos) return RegSz;
    return text.find(u'%', first + 2) != Text::npos ? RegExpandSz : RegSz;
}

}  // namespace

bool Registry::Fail(Text text) {
    lastErrorText_ = std::move(text);
    return false;
}

bool Registry::FailWithCode(std::int32_t code) {
    return Fail(ApiErrorText(text_, static_cast<std::uint32_t>(code)));
}

bool Registry::KeyExists(Hkey root, const Text& keyPath) {
    UniqueRegKey key(os_, nullptr);
    const std::int32_t result = os_.RegOpenKeyExW(root, keyPath, 0, KeyQueryValue, key.out());
    return result == 0 ? true : FailWithCode(result);
}

bool Registry::CreateKey(Hkey root, const Text& keyPath) {
    UniqueRegKey key(os_, nullptr);
    const std::int32_t result = os_.RegCreateKeyW(root, keyPath, key.out());
    return result == 0 ? true : FailWithCode(result);
}

bool Registry::ReadValue(Hkey root, const Text& keyPath, const Text& valueName,
                         std::uint32_t requestedType, RegData& destination) {
    UniqueRegKey key(os_, nullptr);
    std::int32_t result = os_.RegOpenKeyExW(root, keyPath, 0, KeyQueryValue, key.out());
    if (result != 0) return FailWithCode(result);

    std::uint32_t storedType = 0;
    std::uint32_t size = 0;
    result = os_.RegQueryValueExW(key.get(), valueName, &storedType, nullptr, &size);
    if (result != 0 && result != static_cast<std::int32_t>(ErrorMoreData)) {
        return FailWithCode(result);
    }
    if (storedType != requestedType) {
        return Fail(u"Registry data type was " + DecimalText(storedType) +
                    u"instead of the requested " + DecimalText(requestedType));
    }
    RegData value;
    if (!ReadData(key.get(), valueName, storedType, size, value)) return false;
    destination = std::move(value);
    return true;
}

bool Registry::ReadData(Hkey key, const Text& valueName, std::uint32_t type, std::uint32_t size,
                        RegData& result) {
    std::uint32_t storedType = 0;
    switch (type) {
        case RegSz:
        case RegExpandSz:
        case RegMultiSz: {
            // A buffer of `size` characters, of which the system is told `size` bytes.
            Text text(size, u'\0');
            const std::int32_t code = os_.RegQueryValueExW(
                key, valueName, &storedType, reinterpret_cast<std::byte*>(text.data()), &size);
            if (code != 0) return FailWithCode(code);
            if (size % 2 != 0) --size;
            text.resize(size / 2);
            result = std::move(text);
            return true;
        }
        case RegDword:
        case RegDwordBigEndian: {
            // The buffer holds 4 bytes; other sizes are refused rather than read past it.
            if (size != 4) {
                return Fail(u"Registry data size was " + DecimalText(size) +
                            u" instead of the required 4");
            }
            std::array<std::byte, 4> bytes{};
            const std::int32_t code =
                os_.RegQueryValueExW(key, valueName, &storedType, bytes.data(), &size);
            if (code != 0) return FailWithCode(code);
            if (type == RegDwordBigEndian) std::reverse(bytes.begin(), bytes.end());
            std::int32_t number = 0;
            std::memcpy(&number, bytes.data(), sizeof number);
            result = number;
            return true;
        }
        default: {
            // Indices 0 to size: one element more than the data, which stays 0.
            std::vector<std::byte> bytes(static_cast<std::size_t>(size) + 1);
            const std::int32_t code =
                os_.RegQueryValueExW(key, valueName, &storedType, bytes.data(), &size);
            if (code != 0) return FailWithCode(code);
            result = std::move(bytes);
            return true;
        }
    }
}

bool Registry::WriteValue(Hkey root, const Text& keyPath, const Text& valueName,
                          std::uint32_t& valueType, const RegData& value) {
    UniqueRegKey key(os_, nullptr);
    const std::int32_t opened = os_.RegOpenKeyExW(root, keyPath, 0, KeySetValue, key.out());
    if (opened != 0) return FailWithCode(opened);
    if (valueType < RegSz || valueType > RegDwordBigEndian) {
        return Fail(u"The value type is not compatible with the available registry types.");
    }

    std::vector<std::byte> data;
    std::size_t dataSize = 0;
    if (valueType == RegSz || valueType == RegExpandSz) {
        const Text text = AsText(value);
        valueType = TextTypeFor(text);
        // The characters and one zero byte: the stored data end in a single NUL byte. The
        // buffer holds a whole terminator, for systems that read on to one.
        data.resize(text.size() * 2 + 2);
        std::memcpy(data.data(), text.data(), text.size() * 2);
        dataSize = data.size() - 1;
    } else if (valueType == RegBinary) {
        const auto* bytes = std::get_if<std::vector<std::byte>>(&value);
        if (bytes == nullptr) return Fail(u"The value type is not consistent.");
        data = *bytes;
        dataSize = data.size();
    } else {
        std::int32_t number = 0;
        if (const auto* n16 = std::get_if<std::int16_t>(&value)) {
            number = *n16;
        } else if (const auto* n32 = std::get_if<std::int32_t>(&value)) {
            number = *n32;
        } else {
            return Fail(u"The value type is not consistent.");
        }
        valueType = RegDword;
        data.resize(4);
        std::memcpy(data.data(), &number, 4);
        dataSize = 4;
    }
    const std::int32_t written =
        os_.RegSetValueExW(key.get(), valueName, valueType, std::span(data.data(), dataSize));
    return written == 0 ? true : FailWithCode(written);
}

}  // namespace zk
