// Typed registry access against every backend: the sim's hive and, under Wine, the real one.

#include <gtest/gtest.h>

#include "contract/backends.h"
#include "diagnostics/win_api_error.h"
#include "settings/registry.h"

namespace zk::contract {
namespace {

const Text kKey = u"Software\\Zelkova2RegistryTest";
using Bytes = std::vector<std::byte>;

Bytes B(std::initializer_list<int> values) {
    Bytes out;
    for (const int v : values)
        out.push_back(static_cast<std::byte>(v));
    return out;
}

class RegistryTest : public ::testing::TestWithParam<Backend> {
  protected:
    RegistryTest() : os_(GetParam().make()), registry_(*os_) {
        (void)os_->RegDeleteTreeW(HkeyCurrentUser(), kKey);
        EXPECT_TRUE(registry_.CreateKey(HkeyCurrentUser(), kKey));
    }
    ~RegistryTest() override { (void)os_->RegDeleteTreeW(HkeyCurrentUser(), kKey); }

    // Stores raw data the way another program might have.
    void Store(const Text& name, std::uint32_t type, const Bytes& data) {
        Hkey key = nullptr;
        ASSERT_EQ(os_->RegOpenKeyExW(HkeyCurrentUser(), kKey, 0, KeySetValue, key), 0);
        ASSERT_EQ(os_->RegSetValueExW(key, name, type, data), 0);
        (void)os_->RegCloseKey(key);
    }
    Bytes Stored(const Text& name, std::uint32_t& type) {
        Hkey key = nullptr;
        Bytes data(64);
        std::uint32_t size = 64;
        EXPECT_EQ(os_->RegOpenKeyExW(HkeyCurrentUser(), kKey, 0, KeyQueryValue, key), 0);
        EXPECT_EQ(os_->RegQueryValueExW(key, name, &type, data.data(), &size), 0);
        (void)os_->RegCloseKey(key);
        data.resize(size);
        return data;
    }
    // Text written with its single zero byte reads back as written; Wine terminates it.
    RegData WithWineTerminator(const RegData& expected) {
        const auto* text = std::get_if<Text>(&expected);
        if (text == nullptr || !GetParam().registryTerminatesText) return expected;
        return *text + u'\0';
    }
    bool Read(const Text& name, std::uint32_t type, RegData& out) {
        return registry_.ReadValue(HkeyCurrentUser(), kKey, name, type, out);
    }
    bool Write(const Text& name, std::uint32_t& type, const RegData& value) {
        return registry_.WriteValue(HkeyCurrentUser(), kKey, name, type, value);
    }

    std::unique_ptr<Os> os_;
    Registry registry_;
};

TEST_P(RegistryTest, EachTypeIsWrittenAndReadBack) {
    struct Case {
        std::uint32_t type;
        RegData value;
        std::uint32_t storedType;
        RegData readBack;
    };
    const Case cases[] = {
        {RegSz, Text(u"Num 2"), RegSz, Text(u"Num 2")},
        {RegExpandSz, Text(u"%TEMP%\\x"), RegExpandSz, Text(u"%TEMP%\\x")},
        {RegSz, std::int32_t{42}, RegSz, Text(u"42")},
        {RegBinary, B({1, 2, 3}), RegBinary, B({1, 2, 3, 0})},
        {RegDword, std::int16_t{-2}, RegDword, std::int32_t{-2}},
        {RegDwordBigEndian, std::int32_t{1}, RegDword, std::int32_t{1}},
    };
    for (const auto& c : cases) {
        std::uint32_t type = c.type;
        ASSERT_TRUE(Write(u"V", type, c.value)) << c.type;
        EXPECT_EQ(type, c.storedType) << c.type;
        RegData read;
        ASSERT_TRUE(Read(u"V", c.storedType, read)) << c.type;
        EXPECT_EQ(read, WithWineTerminator(c.readBack)) << c.type;
    }
    std::uint32_t storedType = 0;
    EXPECT_EQ(Stored(u"V", storedType), B({1, 0, 0, 0})) << "big-endian input stored as is";
}

TEST_P(RegistryTest, TextSizesAndOtherTypesAreReadAsStored) {
    RegData read;
    Store(u"Terminated", RegSz, B({'a', 0, 'b', 0, 0, 0}));
    ASSERT_TRUE(Read(u"Terminated", RegSz, read));
    EXPECT_EQ(read, RegData(Text(u"ab\0", 3))) << "the terminator counts as a character";
    Store(u"Empty", RegSz, {});
    ASSERT_TRUE(Read(u"Empty", RegSz, read));
    EXPECT_EQ(read, RegData(Text()));
    Store(u"Multi", RegMultiSz, B({'a', 0, 0, 0, 'b', 0, 0, 0, 0, 0}));
    ASSERT_TRUE(Read(u"Multi", RegMultiSz, read));
    EXPECT_EQ(read, RegData(Text(u"a\0b\0\0", 5)));
    Store(u"Big", RegDwordBigEndian, B({0, 0, 1, 2}));
    ASSERT_TRUE(Read(u"Big", RegDwordBigEndian, read));
    EXPECT_EQ(read, RegData(std::int32_t{258}));
    Store(u"NoBytes", RegBinary, {});
    ASSERT_TRUE(Read(u"NoBytes", RegBinary, read));
    EXPECT_EQ(read, RegData(B({0})));

    std::uint32_t type = RegSz;
    ASSERT_TRUE(Write(u"Written", type, Text(u"xyz")));
    std::uint32_t storedType = 0;
    EXPECT_EQ(Stored(u"Written", storedType).size(), GetParam().registryTerminatesText ? 9u : 7u)
        << "2n + 1 bytes";
    ASSERT_TRUE(Read(u"Written", RegSz, read));
    EXPECT_EQ(read, WithWineTerminator(Text(u"xyz")));
}

TEST_P(RegistryTest, ADwordOfAnotherSizeIsRefusedWithoutTouchingTheDestination) {
    RegData read = Text(u"untouched");
    for (const Bytes& data : {B({1, 2}), B({1, 2, 3, 4, 5, 6, 7, 8}), Bytes{}}) {
        Store(u"Odd", RegDword, data);
        EXPECT_FALSE(Read(u"Odd", RegDword, read));
        EXPECT_EQ(read, RegData(Text(u"untouched")));
        EXPECT_TRUE(registry_.LastErrorText().starts_with(u"Registry data size was "));
    }
}

TEST_P(RegistryTest, MissingKeyOrValueAndAWrongTypeFailWithTheirTexts) {
    const Text notFound = ApiErrorText(*os_, ErrorFileNotFound);
    ASSERT_FALSE(notFound.empty());
    RegData read = std::int32_t{7};
    EXPECT_FALSE(Read(u"Missing", RegDword, read));
    EXPECT_EQ(registry_.LastErrorText(), notFound);
    EXPECT_FALSE(registry_.ReadValue(HkeyCurrentUser(), kKey + u"\\Absent", u"V", RegDword, read));
    EXPECT_EQ(registry_.LastErrorText(), notFound);
    EXPECT_FALSE(registry_.KeyExists(HkeyCurrentUser(), kKey + u"\\Absent"));
    EXPECT_EQ(read, RegData(std::int32_t{7}));

    Store(u"Text", RegSz, B({'1', 0}));
    EXPECT_FALSE(Read(u"Text", RegDword, read));
    EXPECT_EQ(registry_.LastErrorText(), u"Registry data type was 1instead of the requested 4");
    EXPECT_TRUE(registry_.KeyExists(HkeyCurrentUser(), kKey));
    EXPECT_EQ(registry_.LastErrorText(), u"Registry data type was 1instead of the requested 4")
        << "a success keeps the last failure's text";
}

TEST_P(RegistryTest, WriteChoosesTheTextTypeByItsPercentSigns) {
    struct Case {
        Text text;
        std::uint32_t type;
    };
    for (const auto& c : {Case{u"50%", RegSz}, Case{u"%a%", RegExpandSz}, Case{u"%%", RegSz},
                          Case{u"%x%%", RegExpandSz}, Case{u"a%%b%", RegExpandSz}}) {
        std::uint32_t type = RegSz;
        ASSERT_TRUE(Write(u"P", type, c.text));
        EXPECT_EQ(type, c.type) << std::string(c.text.begin(), c.text.end());
        std::uint32_t stored = 0;
        (void)Stored(u"P", stored);
        EXPECT_EQ(stored, c.type);
    }
}

TEST_P(RegistryTest, WriteRefusesInconsistentValuesUnknownTypesAndMissingKeys) {
    struct Case {
        std::uint32_t type;
        RegData value;
        Text error;
    };
    const Text inconsistent = u"The value type is not consistent.";
    const Text incompatible =
        u"The value type is not compatible with the available registry types.";
    const Case cases[] = {
        {RegDword, Text(u"12"), inconsistent},     {RegBinary, std::int32_t{1}, inconsistent},
        {RegDwordBigEndian, B({1}), inconsistent}, {0, std::int32_t{1}, incompatible},
        {RegLink, B({1}), incompatible},           {RegMultiSz, Text(u"a"), incompatible},
    };
    for (const auto& c : cases) {
        std::uint32_t type = c.type;
        EXPECT_FALSE(Write(u"W", type, c.value)) << c.type;
        EXPECT_EQ(registry_.LastErrorText(), c.error) << c.type;
    }
    std::uint32_t type = RegDword;
    const Text sub = kKey + u"\\Later";
    EXPECT_FALSE(registry_.WriteValue(HkeyCurrentUser(), sub, u"W", type, std::int32_t{1}));
    EXPECT_EQ(registry_.LastErrorText(), ApiErrorText(*os_, ErrorFileNotFound));
    ASSERT_TRUE(registry_.CreateKey(HkeyCurrentUser(), sub));
    EXPECT_TRUE(registry_.WriteValue(HkeyCurrentUser(), sub, u"W", type, std::int32_t{1}));
}

INSTANTIATE_TEST_SUITE_P(Backends, RegistryTest, ::testing::ValuesIn(Backends()),
                         [](const auto& info) { return info.param.name; });

}  // namespace
}  // namespace zk::contract
