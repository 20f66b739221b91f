#include <gtest/gtest.h>

#include "tamarok/windows_1252.h"

namespace tamarok::windows1252 {
namespace {

TEST(Windows1252, EveryByteComesBack)
{
    for (int byte = 0; byte < 256; ++byte)
        EXPECT_EQ(toByte(fromByte(static_cast<std::uint8_t>(byte))), byte);
}

TEST(Windows1252, BytesStandForTheirCharacters)
{
    EXPECT_EQ(fromByte(0x41), U'A');
    EXPECT_EQ(fromByte(0x80), U'€');
    EXPECT_EQ(fromByte(0x81), char32_t{0x81}); // unassigned
    EXPECT_EQ(fromByte(0x9F), U'Ÿ');
    EXPECT_EQ(fromByte(0xA0), char32_t{0xA0});
    EXPECT_EQ(fromByte(0xFC), U'ü');
}

TEST(Windows1252, OtherCharactersHaveNoByte)
{
    for (const char32_t character : {U'č', U'Ω', char32_t{0x80}, char32_t{0x85}, char32_t{0x9F}, char32_t{0x100}})
        EXPECT_EQ(toByte(character), std::nullopt) << static_cast<unsigned>(character);
    EXPECT_EQ(toByte(0x1F332), std::nullopt);
}

} // namespace
} // namespace tamarok::windows1252
