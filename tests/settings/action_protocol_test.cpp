#include "settings/parameter_folder.h"

#include "tamarok/error.h"

namespace tamarok {
namespace {

class ActionProtocol : public test::ParameterFolder {
protected:
    std::string report(std::string_view action = "Action", const std::string& name = "protocol.txt")
    {
        act.WriteReport("Modul", "Name", action, "User", path(name));
        return content(name);
    }

    /// Expects one message that holds `text`.
    void expectShown(std::string_view text)
    {
        ASSERT_EQ(with.messages->shown.size(), 1U);
        EXPECT_EQ(with.messages->shown[0].flags, 16);
        EXPECT_EQ(with.messages->shown[0].title, "Tamarok");
        EXPECT_NE(with.messages->shown[0].text.find(text), std::string::npos) << with.messages->shown[0].text;
        with.messages->shown.clear();
    }
};

TEST_F(ActionProtocol, ALineForEachAction)
{
    EXPECT_EQ(report(), "Modul; Name; Action; 17.05.2024; 18:00:00; User  \r\n");
    EXPECT_EQ(report("Second"), "Modul; Name; Action; 17.05.2024; 18:00:00; User  \r\n"
                                "Modul; Name; Second; 17.05.2024; 18:00:00; User  \r\n");
    EXPECT_TRUE(with.messages->shown.empty());
}

TEST_F(ActionProtocol, DateAndTimeFollowTheRegionalSettings)
{
    struct Case {
        std::string_view locale;
        CivilTime now;
        std::string_view expected;
    };
    const std::array cases{
        Case{"en-US", {.year = 2024, .month = 3, .day = 5, .hour = 22, .minute = 1}, "3/5/2024; 10:01:00 PM"},
        Case{"de-DE", {.year = 2024, .month = 3, .day = 5, .hour = 7, .second = 9}, "05.03.2024; 07:00:09"},
        Case{"de-DE", {.year = 2024, .month = 3, .day = 5}, "05.03.2024; 00:00:00"},
        Case{"de-DE",
             {.year = 2024, .month = 12, .day = 31, .hour = 23, .minute = 59, .second = 59, .millisecond = 900},
             "31.12.2024; 23:59:59"},
    };
    for (const Case& each : cases) {
        const PlatformScope scope{test::platformOf(each.locale, fromCivil(each.now))};
        std::filesystem::remove(path("protocol.txt"));
        EXPECT_EQ(report(), "Modul; Name; Action; " + std::string{each.expected} + "; User  \r\n");
    }
}

TEST_F(ActionProtocol, FollowsLineEndAndEncodingOfTheFile)
{
    constexpr std::string_view rest = "; 17.05.2024; 18:00:00; User  ";
    make("first\nunended", "protocol.txt");
    EXPECT_EQ(report("ä"), "first\nunended\nModul; Name; ä" + std::string{rest} + "\n");
    make("f\xFCr\r\n", "protocol.txt");
    EXPECT_EQ(report("ä"), "f\xFCr\r\nModul; Name; \xE4" + std::string{rest} + "\r\n");
}

TEST_F(ActionProtocol, ALineThatAnotherProcessIsWritingIsNotEnded)
{
    make("half a li", "protocol.txt");
    const auto writer = Platform::fileSystem().openAppend(path("protocol.txt"));
    EXPECT_EQ(report().substr(0, 17), "half a liModul; N");
}

TEST_F(ActionProtocol, ACharacterThatCannotBeWrittenIsShownAndNothingWritten)
{
    make("f\xFCr\n", "protocol.txt");
    EXPECT_EQ(report("č"), "f\xFCr\n");
    expectShown("U+010D");
}

TEST_F(ActionProtocol, AMissingFolderIsShownAndTheCallEndsNormally)
{
    EXPECT_EQ(report("Action", "nowhere/protocol.txt"), "(none)");
    expectShown("Path not found: '" + path("nowhere/protocol.txt") + "'");
}

TEST_F(ActionProtocol, FailuresOfEachKindAreShown)
{
    std::filesystem::create_directory(folder / "folder");
    act.WriteReport("a", "b", "c", "d", path("folder"));
    expectShown("Path/File access error");
    act.WriteReport("a", "b", "c", "d", "");
    expectShown("a file name is needed");
    act.WriteReport("a", "b", "c", "d", "/dev/full");
    expectShown("Disk full: '/dev/full'");
    std::filesystem::create_symlink(path("nowhere"), path("link"));
    report("Action", "link");
    expectShown("symbolic link");
    EXPECT_FALSE(std::filesystem::exists(path("nowhere")));
}

TEST_F(ActionProtocol, WithoutFilesOrClockTheFailureIsShown)
{
    Platform::current().files = nullptr;
    EXPECT_EQ(report(), "(none)");
    expectShown("file operations");
    Platform::current().clock = nullptr;
    EXPECT_EQ(report(), "(none)");
    expectShown("clock");
}

TEST_F(ActionProtocol, AnOpenFileNumberDoesNotHinderIt)
{
    make("junk\n");
    EXPECT_EQ(test::errorNumber([&] { act.GetParam("A", "", path()); }), errors::parameterSyntax);
    EXPECT_NE(report(), "(none)");
    EXPECT_TRUE(with.messages->shown.empty());
}

TEST_F(ActionProtocol, FollowsALinkToAnExistingFile)
{
    make("first\r\n", "real.txt");
    std::filesystem::create_symlink(path("real.txt"), path("protocol.txt"));
    report();
    EXPECT_EQ(content("real.txt"), "first\r\nModul; Name; Action; 17.05.2024; 18:00:00; User  \r\n");
}

} // namespace
} // namespace tamarok
