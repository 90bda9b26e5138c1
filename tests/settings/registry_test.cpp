// Typed registry access on the simulated hive (the hive's own behaviour is compared with the real
// registry by the contract suite).

#include "settings/registry.h"

#include <gtest/gtest.h>

#include "diagnostics/win_api_error.h"
#include "platform/sim/sim_os.h"

namespace zk {
namespace {

const Text kKey = u"Software\\Zelkova2RegistryTest";
using Bytes = std::vector<std::byte>;

Bytes B(std::initializer_list<int> values) {
    Bytes out;
    for (const int v : values)
        out.push_back(static_cast<std::byte>(v));
    return out;
}

class RegistryTest : public ::testing::Test {
  protected:
    RegistryTest() { EXPECT_TRUE(registry_.CreateKey(HkeyCurrentUser(), kKey)); }
    // Stores raw data the way another program might have.
    void Store(const Text& name, std::uint32_t type, const Bytes& data) {
        os_.registry().SetValue(kKey, name, type, data);
    }
    const sim::RegValue& Stored(const Text& name) { return *os_.registry().FindValue(kKey, name); }
    bool Read(const Text& name, std::uint32_t type, RegData& out) {
        return registry_.ReadValue(HkeyCurrentUser(), kKey, name, type, out);
    }
    bool Write(const Text& name, std::uint32_t& type, const RegData& value) {
        return registry_.WriteValue(HkeyCurrentUser(), kKey, name, type, value);
    }

    sim::SimOs os_;
    Registry registry_{os_};
};

TEST_F(RegistryTest, EachTypeIsWrittenAndReadBack) {
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
        EXPECT_EQ(read, c.readBack) << c.type;
    }
    EXPECT_EQ(Stored(u"V").data, B({1, 0, 0, 0})) << "big-endian input stored as is";
    std::uint32_t type = RegSz;
    ASSERT_TRUE(Write(u"Written", type, Text(u"xyz")));
    EXPECT_EQ(Stored(u"Written").data.size(), 7u) << "2n + 1 bytes";
}

TEST_F(RegistryTest, TextSizesAndOtherTypesAreReadAsStored) {
    struct Case {
        std::uint32_t type;
        Bytes stored;
        RegData read;
    };
    const Case cases[] = {
        {RegSz, B({'a', 0, 'b', 0, 0, 0}), Text(u"ab\0", 3)},  // the terminator counts
        {RegSz, {}, Text()},
        {RegMultiSz, B({'a', 0, 0, 0, 'b', 0, 0, 0, 0, 0}), Text(u"a\0b\0\0", 5)},
        {RegDwordBigEndian, B({0, 0, 1, 2}), std::int32_t{258}},
        {RegBinary, {}, B({0})},
    };
    for (const auto& c : cases) {
        Store(u"V", c.type, c.stored);
        RegData read;
        ASSERT_TRUE(Read(u"V", c.type, read)) << c.type;
        EXPECT_EQ(read, c.read) << c.type;
    }
}

TEST_F(RegistryTest, FailuresLeaveTheDestinationAndSayWhy) {
    const Text notFound = ApiErrorText(os_, ErrorFileNotFound);
    RegData read = std::int32_t{7};
    EXPECT_FALSE(Read(u"Missing", RegDword, read));
    EXPECT_EQ(registry_.LastErrorText(), notFound);
    EXPECT_FALSE(registry_.ReadValue(HkeyCurrentUser(), kKey + u"\\Absent", u"V", RegDword, read));
    EXPECT_EQ(registry_.LastErrorText(), notFound);
    EXPECT_FALSE(registry_.KeyExists(HkeyCurrentUser(), kKey + u"\\Absent"));
    for (const Bytes& data : {B({1, 2}), B({1, 2, 3, 4, 5, 6, 7, 8}), Bytes{}}) {
        Store(u"Odd", RegDword, data);
        EXPECT_FALSE(Read(u"Odd", RegDword, read));
        EXPECT_TRUE(registry_.LastErrorText().starts_with(u"Registry data size was "));
    }
    Store(u"Text", RegSz, B({'1', 0}));
    EXPECT_FALSE(Read(u"Text", RegDword, read));
    EXPECT_EQ(read, RegData(std::int32_t{7}));
    EXPECT_EQ(registry_.LastErrorText(), u"Registry data type was 1instead of the requested 4");
    EXPECT_TRUE(registry_.KeyExists(HkeyCurrentUser(), kKey));
    EXPECT_EQ(registry_.LastErrorText(), u"Registry data type was 1instead of the requested 4")
        << "a success keeps the last failure's text";
    EXPECT_EQ(os_.OpenKeyCount(), 0u);
}

TEST_F(RegistryTest, WriteChoosesTheTextTypeByItsPercentSigns) {
    struct Case {
        Text text;
        std::uint32_t type;
    };
    for (const auto& c : {Case{u"50%", RegSz}, Case{u"%a%", RegExpandSz}, Case{u"%%", RegSz},
                          Case{u"%x%%", RegExpandSz}, Case{u"a%%b%", RegExpandSz}}) {
        std::uint32_t type = RegSz;
        ASSERT_TRUE(Write(u"P", type, c.text));
        EXPECT_EQ(type, c.type) << std::string(c.text.begin(), c.text.end());
        EXPECT_EQ(Stored(u"P").type, c.type);
    }
}

TEST_F(RegistryTest, WriteRefusesInconsistentValuesUnknownTypesAndMissingKeys) {
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
    EXPECT_EQ(registry_.LastErrorText(), ApiErrorText(os_, ErrorFileNotFound));
    ASSERT_TRUE(registry_.CreateKey(HkeyCurrentUser(), sub));
    EXPECT_TRUE(registry_.WriteValue(HkeyCurrentUser(), sub, u"W", type, std::int32_t{1}));
}

}  // namespace
}  // namespace zk
