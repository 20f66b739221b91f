#include "settings/parameter_folder.h"

#include "tamarok/error.h"

namespace tamarok {
namespace {

using test::errorNumber;
using test::expectError;
using test::failureOf;

class ParameterReader : public test::ParameterFolder {
protected:
    std::vector<std::string> listIn(std::string_view bytes)
    {
        StringArray list;
        act.GetExistingParam("DATABASENAME", make(bytes), list);
        EXPECT_EQ(list.lower, 0);
        return list.values;
    }
};

TEST_F(ParameterReader, LinesOfEachKind)
{
    struct Case {
        std::string_view bytes;
        std::string_view key;
        std::string_view value;
    };
    constexpr std::string_view file =
        "% comment\n\n  A = 1  \nB=two words\n  % x = 1\nC = a = b\nD\t= 4\n=none\nÄ = 5\n";
    constexpr std::array cases{
        Case{file, "A", "1"},
        Case{file, "a", "1"},
        Case{file, "  a ", "1"},
        Case{file, "B", "two words"},
        Case{file, "C", "a = b"},
        Case{file, "", "none"},
        Case{file, "ä", "5"},
        Case{file, "D\t", "4"},
        Case{"A=1", "A", "1"},
        Case{"A=1\r\n", "A", "1"},
        Case{"A=1\n", "A", "1"},
        Case{"A=\n A = 2", "A", "2"},
        Case{"A=1\rB=2", "A", "1\rB=2"},
    };
    for (const Case& each : cases)
        EXPECT_EQ(valueIn(each.bytes, each.key), each.value) << each.key;
}

TEST_F(ParameterReader, ADefaultStandsForAMissingFileAndAMissingKey)
{
    EXPECT_EQ(act.GetParam("X", " d ", path("missing.ini")), "d");
    EXPECT_EQ(act.GetParam("X", " d ", make("A = 1\n")), "d");
    EXPECT_EQ(act.GetParam("A", " d ", path()), "1");
    EXPECT_EQ(act.GetParam("A", "d", make("")), "d");
    EXPECT_EQ(act.GetParam("A", "d", make("A =\n")), "d");
    EXPECT_FALSE(std::filesystem::exists(path("missing.ini")));
}

TEST_F(ParameterReader, AMissingFolderIsAnErrorOfItsOwn)
{
    expectError(errors::pathNotFound, "nowhere/params.ini",
                [&] { act.GetParam("X", "d", path("nowhere/params.ini")); });
    expectError(errors::fileNotFound, "missing.ini", [&] { act.GetExistingParam("X", path("missing.ini"), values()); });
    make("A = 1\n");
    expectError(errors::pathNotFound, "params.ini/b", [&] { act.GetParam("X", "d", path("params.ini/b")); });
}

TEST_F(ParameterReader, AKeyTwiceIsADuplicateWithTheNumberOfLines)
{
    const Error error = failureOf([&] { act.GetParam("A", "d", make("A = 1\na=2\n% end\n")); });
    EXPECT_EQ(error.number, static_cast<std::int32_t>(0x80040202U));
    EXPECT_EQ(error.description, "Key duplicity in file " + path() + " at line 3");
    // The file was read to its end and closed.
    EXPECT_EQ(act.GetParam("B", "d", path()), "d");
}

TEST_F(ParameterReader, AnEmptyValueCountsAsNone)
{
    StringArray list{{"old"}, 5};
    const Error error = failureOf([&] { act.GetExistingParam("A", make("A =\n"), list); });
    EXPECT_EQ(error.number, static_cast<std::int32_t>(0x80040203U));
    EXPECT_EQ(error.description, "Key A not found in file " + path());
    EXPECT_EQ(list, (StringArray{{""}, 0}));
}

TEST_F(ParameterReader, TheArrayBeginsAtZeroWithOneElement)
{
    StringArray list{{"old", "older"}, 7};
    EXPECT_EQ(act.GetExistingParam("A", make("A = 1\n"), list), "1");
    EXPECT_EQ(list, (StringArray{{"1"}, 0}));
}

TEST_F(ParameterReader, DatabasesFormAList)
{
    EXPECT_EQ(listIn("DATABASENAME = one\nA = 1\ndatabasename=two\n"), (std::vector<std::string>{"one", "two"}));
    EXPECT_EQ(valueIn("DATABASENAME = one\ndatabasename=two\n", "DATABASENAME"), "");
    EXPECT_EQ(valueIn("DATABASENAME = one\n", "DATABASENAME"), "one");
    EXPECT_EQ(valueIn("DATABASENAME = one\n", "databasename"), "one");
    // An empty first value is overwritten; a later one counts.
    EXPECT_EQ(listIn("DATABASENAME =\nDATABASENAME = one\nDATABASENAME =\n"), (std::vector<std::string>{"one", ""}));
}

TEST_F(ParameterReader, TheKeyOfTheListMustBeGivenInUpperCase)
{
    const std::string file = make("DATABASENAME = one\nDATABASENAME = two\n");
    expectError(errors::parameterDuplicate, "at line 2", [&] { act.GetExistingParam("databasename", file, values()); });
    expectError(errors::parameterDuplicate, "at line 2",
                [&] { act.GetExistingParam(" DATABASENAME", file, values()); });
}

TEST_F(ParameterReader, ASyntaxErrorNamesFileAndLineWhicheverKeyIsWanted)
{
    for (const std::string_view key : {"A", "B", "missing"}) {
        const PlatformScope scope{test::platformOf("de-AT")};
        const Error error = failureOf([&] { act.GetParam(key, "d", make("A = 1\n\n junk \nB = 2\n")); });
        EXPECT_EQ(error.number, static_cast<std::int32_t>(0x80040201U));
        EXPECT_EQ(error.description, "Syntax error in file " + path() + " at line 3");
        EXPECT_EQ(error.source, "");
    }
}

TEST_F(ParameterReader, ASyntaxErrorLeavesNumberOneOpen)
{
    const std::string bad = make("junk\n", "bad.ini");
    const std::string good = make("A = 1\n");
    EXPECT_EQ(errorNumber([&] { act.GetParam("A", "d", bad); }), errors::parameterSyntax);
    auto& numbers = Platform::current().fileNumbers;
    EXPECT_TRUE(numbers.isOpen(1));
    for (int again = 0; again < 3; ++again) {
        const Error error = failureOf([&] { act.GetParam("A", "d", good); });
        EXPECT_EQ(error.number, errors::fileAlreadyOpen);
        EXPECT_EQ(error.description, "File already open: file number 1 is in use for '" + bad + "'");
    }
    EXPECT_EQ(errorNumber([&] { act.GetParam("A", "d", path("missing.ini")); }), errors::fileAlreadyOpen);
    EXPECT_EQ(errorNumber([&] { act.SaveParam("A", "2", good); }), errors::fileAlreadyOpen);
    EXPECT_EQ(content(), "A = 1\n");
    numbers.closeAll();
    EXPECT_EQ(act.GetParam("A", "d", good), "1");
}

TEST_F(ParameterReader, FileNumbersBelongToThePlatformOfTheThread)
{
    const std::string good = make("A = 1\n");
    {
        const PlatformScope scope{test::platformOf("de-AT")};
        EXPECT_EQ(errorNumber([&] { act.GetParam("A", "d", make("junk", "bad.ini")); }), errors::parameterSyntax);
        EXPECT_EQ(errorNumber([&] { act.GetParam("A", "d", good); }), errors::fileAlreadyOpen);
    }
    EXPECT_EQ(act.GetParam("A", "d", good), "1");
}

TEST_F(ParameterReader, OtherErrorsCloseTheFile)
{
    EXPECT_EQ(errorNumber([&] { valueIn("A = 1\nA = 2\n", "A"); }), errors::parameterDuplicate);
    EXPECT_EQ(errorNumber([&] { valueIn("A = 1\n", "B"); }), errors::parameterNotFound);
    EXPECT_FALSE(Platform::current().fileNumbers.isOpen(1));
}

TEST_F(ParameterReader, PictureFormatsBeginAtOne)
{
    StringArray formats{{"x"}, 0};
    act.GetPhotoesFormats(formats, folder.path().string(), "missing.ini");
    EXPECT_EQ(formats, (StringArray{{"jpg", "gif", "bmp"}, 1}));
    make("PHOTOESFORMAT = png\n");
    act.GetPhotoesFormats(formats, folder.path().string(), "params.ini");
    EXPECT_EQ(formats, (StringArray{{"jpg", "gif", "bmp", "png"}, 1}));
    make("photoesformat = GIF\n");
    act.GetPhotoesFormats(formats, folder.path().string(), "params.ini");
    EXPECT_EQ(formats, (StringArray{{"jpg", "gif", "bmp"}, 1}));
}

TEST_F(ParameterReader, PictureFormatsReportFaultsOfTheFile)
{
    make("PHOTOESFORMAT = png\nPHOTOESFORMAT = tif\n");
    StringArray formats;
    EXPECT_EQ(errorNumber([&] { act.GetPhotoesFormats(formats, folder.path().string(), "params.ini"); }),
              errors::parameterDuplicate);
    EXPECT_EQ(formats.values.size(), 3U);
}

TEST_F(ParameterReader, ABackslashSeparatesFolders)
{
    std::filesystem::create_directory(folder / "sub");
    make("A = 1\n", "sub/p.ini");
    EXPECT_EQ(act.GetParam("A", "d", folder.path().string() + "\\sub\\p.ini"), "1");
    act.SaveParam("A", "2", folder.path().string() + "\\sub/p.ini");
    EXPECT_EQ(content("sub/p.ini"), "A = 2\n");
}

} // namespace
} // namespace tamarok
