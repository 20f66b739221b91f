#include <chrono>
#include <cmath>
#include <ctime>
#include <thread>

#include "runtime/support.h"

#include "tamarok/loc_service.h"

namespace tamarok {
namespace {

TEST(Platform, ScopesNestAndGiveThePreviousOneBack)
{
    Platform* const outside = &Platform::current();
    {
        PlatformScope german{test::platformFor("de-DE")};
        EXPECT_EQ(&Platform::current(), &german.platform());
        {
            PlatformScope swedish{test::platformFor("sv-SE")};
            EXPECT_EQ(Platform::current().regional.name, "sv-SE");
        }
        EXPECT_EQ(Platform::current().regional.name, "de-DE");
    }
    EXPECT_EQ(&Platform::current(), outside);
}

TEST(Platform, EveryThreadHasItsOwn)
{
    PlatformScope german{test::platformFor("de-DE")};
    const Platform* other = nullptr;
    std::thread{[&] { other = &Platform::current(); }}.join();
    EXPECT_NE(other, &german.platform());
}

TEST(Platform, TodayHasNoTime)
{
    PlatformScope scope{test::platformFor("de-DE")};
    EXPECT_EQ(Platform::today(), makeDate(2024, 6, 15));
}

TEST(Platform, SystemClockGivesLocalTime)
{
    const std::time_t before = std::time(nullptr);
    const CivilTime now = toCivil(Platform{}.clock->now());
    std::tm parts{};
    parts.tm_year = now.year - 1900;
    parts.tm_mon = now.month - 1;
    parts.tm_mday = now.day;
    parts.tm_hour = now.hour;
    parts.tm_min = now.minute;
    parts.tm_sec = now.second;
    parts.tm_isdst = -1;
    EXPECT_NEAR(std::difftime(std::mktime(&parts), before), 0.0, 5.0);
}

TEST(Platform, LanguageServiceMustBeInstalled)
{
    PlatformScope scope{test::platformFor("de-DE")};
    EXPECT_EQ(test::errorNumber([] { Platform::locService(); }), errors::objectNotSet);
    scope.platform().makeLocService = [] { return std::unique_ptr<LocService>{}; };
    EXPECT_EQ(test::errorNumber([] { Platform::locService(); }), errors::objectNotSet);
}

TEST(Platform, DefaultMessageBoxWritesToStandardErrorAndAnswersOk)
{
    testing::internal::CaptureStderr();
    const std::int16_t answer = Platform{}.messageBox->show("Nothing there.", 48, "Tamarok");
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "Tamarok: Nothing there.\n");
    EXPECT_EQ(answer, 1);
}

TEST(Platform, DefaultKeyboardTakesEnter)
{
    EXPECT_NO_THROW(Platform{}.keyboard->pressEnter());
}

TEST(FixedClock, StandsStillUntilItIsSet)
{
    FixedClock clock{{10.5}};
    EXPECT_EQ(clock.now(), Date{10.5});
    clock.set({11.0});
    EXPECT_EQ(clock.now(), Date{11.0});
}

} // namespace
} // namespace tamarok
