#include "settings/parameter_folder.h"

#include "tamarok/error.h"
#include "tamarok/text.h"
#include "tamarok/windows_1252.h"

namespace tamarok {
namespace {

using test::errorNumber;
using test::expectError;

class ParameterEncoding : public test::ParameterFolder {};

TEST_F(ParameterEncoding, ValidUtf8IsUtf8)
{
    EXPECT_EQ(valueIn("A = gr\u00FCn \u20AC\n", "A"), "grün €");
    EXPECT_EQ(saved("\u00C4 = 1\n", "ä", "č"), "ä = č\n");
    EXPECT_EQ(saved("", "A", "ä"), "A = ä\r\n\r\n");
    EXPECT_EQ(saved("B = 1\n", "A", "ä"), "B = 1\nA = ä\n\n");
}

TEST_F(ParameterEncoding, AnyOtherFileIsWindows1252BothWays)
{
    EXPECT_EQ(valueIn("A = gr\xFCn \x80\n", "A"), "grün €");
    EXPECT_EQ(valueIn("GR\xD6\xDF"
                      "E = 1\n",
                      "größe"),
              "1");
    EXPECT_EQ(saved("B = \xFC\nA = 1\n", "A", "ä€"), "B = \xFC\nA = \xE4\x80\n");
    EXPECT_EQ(saved("B = \xFC\n", "A", "ä€"), "B = \xFC\nA = \xE4\x80\n\n");
    EXPECT_EQ(saved("B = \xFC\n", "Ä", "1"), "B = \xFC\n\xC4 = 1\n\n");
}

TEST_F(ParameterEncoding, OneInvalidByteAnywhereDecides)
{
    const std::string far(200'000, 'x');
    EXPECT_EQ(valueIn("A = \xC3\xBC\nB = " + far + "\xFF\n", "A"), "Ã¼");
    EXPECT_EQ(valueIn("A = \xC3\xBC\nB = " + far + "\xC3", "A"), "Ã¼");
    EXPECT_EQ(valueIn("A = \xC3\xBC\nB = " + far + "\n", "A"), "ü");
    EXPECT_EQ(valueIn("A = \xC0\x80\n", "A"), "À€"); // overlong form
}

TEST_F(ParameterEncoding, CharactersAcrossBlocksOfTheFileAreOne)
{
    for (std::size_t length = 65'530; length < 65'540; ++length) {
        const std::string value = std::string(length, 'x') + "€";
        ASSERT_EQ(valueIn("A=" + value, "A"), value) << length;
    }
}

TEST_F(ParameterEncoding, All256BytesComeBackAsTheyWere)
{
    std::string bytes;
    std::string text;
    for (int byte = 1; byte < 256; ++byte) {
        if (byte == '\n' || byte == '\r') continue;
        bytes += static_cast<char>(byte);
        text::append(text, windows1252::fromByte(static_cast<std::uint8_t>(byte)));
    }
    EXPECT_EQ(valueIn("A = " + bytes + "\n", "A"), text);
    EXPECT_EQ(saved("A = 1\nB = \xFF\n", "A", text), "A = " + bytes + "\nB = \xFF\n");
    for (int byte = 0; byte < 256; ++byte)
        EXPECT_EQ(windows1252::toByte(windows1252::fromByte(static_cast<std::uint8_t>(byte))), byte);
}

TEST_F(ParameterEncoding, UnchangedLinesKeepTheirBytes)
{
    EXPECT_EQ(saved("A = 1\n% \x81\x8D\x8F\x90\x9D\xFF\xA0\t\n", "A", "2"),
              "A = 2\n% \x81\x8D\x8F\x90\x9D\xFF\xA0\t\n");
}

TEST_F(ParameterEncoding, ACharacterThatCannotBeWrittenIsAnErrorBeforeAnythingChanges)
{
    const std::string file = "B = \xFC\nA = 1\n";
    make(file);
    make("before", "params.ini~");
    expectError(errors::invalidArgument, "'č' (U+010D) cannot be written", [&] { act.SaveParam("A", "č", path()); });
    expectError(errors::invalidArgument, "U+1F332", [&] { act.SaveParam("New", "\U0001F332", path()); });
    expectError(errors::invalidArgument, "U+0085", [&] { act.SaveParam("A", "\u0085", path()); });
    EXPECT_EQ(content(), file);
    EXPECT_EQ(content("params.ini~"), "before");
}

TEST_F(ParameterEncoding, ATextThatIsNoUtf8CannotBeWritten)
{
    make("A = 1\n");
    expectError(errors::invalidArgument, "byte 252", [&] { act.SaveParam("A", "\xFC", path()); });
    EXPECT_EQ(errorNumber([&] { act.SaveParam("A", "\xFC", path("new.ini")); }), errors::invalidArgument);
    EXPECT_EQ(content(), "A = 1\n");
    EXPECT_EQ(content("new.ini"), "(none)");
}

TEST_F(ParameterEncoding, AByteOrderMarkIsNoPartOfTheFirstKeyAndStays)
{
    EXPECT_EQ(valueIn("\xEF\xBB\xBF"
                      "A = 1\nB = 2\n",
                      "A"),
              "1");
    EXPECT_EQ(saved("\xEF\xBB\xBF  A = 1\n", "A", "2"), "\xEF\xBB\xBF"
                                                        "A = 2\n");
    EXPECT_EQ(saved("\xEF\xBB\xBF% c\n", "A", "2"), "\xEF\xBB\xBF% c\nA = 2\n\n");
    EXPECT_EQ(saved("\xEF\xBB\xBF", "A", "2"), "\xEF\xBB\xBF"
                                               "A = 2\r\n\r\n");
    EXPECT_EQ(saved("\xEF\xBB\xBF", "A", "2"), content());
    EXPECT_EQ(valueIn("\xEF\xBB\xBF"
                      "A = \xFC\n",
                      "A"),
              "ü");
    // Only at the beginning of the file it is a mark.
    EXPECT_EQ(valueIn("B = 1\n\xEF\xBB\xBF"
                      "A = 1\n",
                      "\uFEFFA"),
              "1");
}

TEST_F(ParameterEncoding, ANulByteIsAByteOfTheLine)
{
    using namespace std::string_literals;
    EXPECT_EQ(valueIn("A = x\0y\n"s, "A"), "x\0y"s);
    EXPECT_EQ(saved("A = 1\nB = x\0y\n"s, "A", "z\0"s), "A = z\0\nB = x\0y\n"s);
}

} // namespace
} // namespace tamarok
