#include <gmock/gmock.h>

#include "map_form.h"
#include "recording_window.h"
#include "support/errors.h"
#include "support/surroundings.h"

#include "tamarok/comm_forms.h"

namespace tamarok::dialogs {
namespace {

using tamarok::test::expectError;
using ::testing::ElementsAre;

const MapEndpoints endpoints{.home = "home.example", .service = "https://maps.example"};

struct AddressCase {
    std::string_view name;
    std::string_view address;
    bool last;
    std::string_view x = "x";
    std::string_view y = "y";
};

constexpr AddressCase addressCases[]{
    {"back page", "https://maps.example/447/back.php?id=1&parPosX=12.5&parPosY=47", true, "12.5", "47"},
    {"Y before X", "https://maps.example/447/back.php?id=1&parPosY=47&parPosX=12.5", true, "12.5", "47"},
    {"key directly behind ?", "https://maps.example/447/back.php?parPosX=12.5&parPosY=47", true, "x", "47"},
    {"both directly behind ? and in one part", "https://maps.example/447/back.php?parPosX=1;parPosY=2", true},
    {"last of two values", "https://maps.example/447/back.php?&parPosX=1&parPosX=2&parPosY=3", true, "2", "3"},
    {"empty values", "https://maps.example/447/back.php?&parPosX=&parPosY=", true, "", ""},
    {"values are any texts", "https://maps.example/447/back.php?&parPosX=a=b&parPosY=%20", true, "a=b", "%20"},
    {"keys count with their case", "https://maps.example/447/back.php?&parposx=1&parPosX2=5&parPosY=2", true, "x", "2"},
    {"back page with parURL", "https://maps.example/447/back.php?parURL=a&parPosX=1&parPosY=2", true, "1", "2"},
    {"back page without X", "https://maps.example/447/back.php?id=1&parPosY=47", false},
    {"back page without Y", "https://maps.example/447/back.php?id=1&parPosX=47", false},
    {"back page of another host", "https://other.example/447/back.php?&parPosX=1&parPosY=2", false},
    {"another page of the service", "https://maps.example/446/back.php?&parPosX=1&parPosY=2", false},
    {"home page", "https://home.example/", true},
    {"home page with coordinates", "https://home.example/?a&parPosX=1", true, "1"},
    {"home page with parURL", "https://home.example/?parURL=https://maps.example", false},
    {"home page as parameter", "https://maps.example/?from=home.example", true},
    {"empty address", "", false},
};

TEST(MapAddressTest, IsLastAndReadForEachCase)
{
    for (const AddressCase& each : addressCases) {
        const MapAddress address{each.address, endpoints};
        EXPECT_EQ(address.isLast(), each.last) << each.name;
        if (!each.last) continue;
        StringArray point{{"x", "y", "z"}};
        address.read(point);
        EXPECT_THAT(point.values, ElementsAre(each.x, each.y, "z")) << each.name;
    }
}

TEST(MapAddressTest, ASlashAtTheEndOfTheServiceDoesNotCount)
{
    const MapEndpoints withSlash{.home = "home.example", .service = "https://maps.example/"};
    EXPECT_TRUE((MapAddress{"https://maps.example/447/back.php?&parPosX=1&parPosY=2", withSlash}.isLast()));
}

TEST(MapAddressTest, AnArrayWithoutTheElementIsError9)
{
    const MapAddress address{"https://maps.example/447/back.php?&parPosX=1&parPosY=2", endpoints};
    StringArray one{{"x"}};
    expectError(errors::subscriptOutOfRange, "element 1", [&] { address.read(one); });
    StringArray fromOne{{"x", "y"}, 1};
    expectError(errors::subscriptOutOfRange, "element 0", [&] { address.read(fromOne); });
    EXPECT_THAT(fromOne.values, ElementsAre("x", "y"));
}

class RecordingMap final : public test::Recording<MapWindow> {
public:
    void navigate(std::string_view address) override
    {
        log.push_back("navigate " + std::string{address});
        shown = address;
    }
    std::string address() const override { return shown; }

    void finish(MapEvents& events, std::string_view address)
    {
        shown = address;
        events.pageFinished();
    }

    std::string shown;
};

class MapFormTest : public ::testing::Test {
protected:
    void run() { MapForm{with.session, endpoints, window}.run("https://maps.example/start?parURL=x", point); }

    tamarok::test::Surroundings with;
    RecordingMap window;
    StringArray point{{"x", "y"}};
};

TEST_F(MapFormTest, BrowsesUntilTheBackPageAndTakesThePoint)
{
    window.user = [&](MapEvents& events) {
        events.pageFinished();
        window.finish(events, "https://maps.example/zoom?a=1");
        EXPECT_FALSE(window.closed);
        window.finish(events, "https://maps.example/447/back.php?a=1&parPosX=12.5&parPosY=47.1");
        EXPECT_TRUE(window.closed);
        EXPECT_THAT(point.values, ElementsAre("x", "y")); // the caller's array changes at the end
    };
    run();
    EXPECT_THAT(point.values, ElementsAre("12.5", "47.1"));
    EXPECT_THAT(window.log, ElementsAre("navigate https://maps.example/start?parURL=x", "show", "close"));
}

TEST_F(MapFormTest, TheButtonLeavesTheArrayAsItWas)
{
    window.user = [](MapEvents& events) { events.clicked("btnClose"); };
    run();
    EXPECT_TRUE(window.closed);
    EXPECT_THAT(point.values, ElementsAre("x", "y"));
}

TEST_F(MapFormTest, TheWindowsOwnCloseLeavesTheArrayAsItWas)
{
    window.user = [](MapEvents& events) { events.closeAsked(); };
    run();
    EXPECT_TRUE(window.closed);
    EXPECT_THAT(point.values, ElementsAre("x", "y"));
}

TEST_F(MapFormTest, TheHomePageEndsTheDialogWithoutAPoint)
{
    window.user = [&](MapEvents& events) { window.finish(events, "https://www.home.example/"); };
    run();
    EXPECT_TRUE(window.closed);
    EXPECT_THAT(point.values, ElementsAre("x", "y"));
}

TEST_F(MapFormTest, TheLanguageServiceTranslatesTheForm)
{
    class Translator final : public LocService {
    public:
        void TranslateForm(const TmkVar& session, Object& form) override { form.put("Caption", session.strLanguage); }
        std::string GetText(std::int16_t, const TmkVar&) override { return {}; }
        std::string GetText2(std::int16_t, const TmkVar&) override { return {}; }
        void RunProcedure(const TmkVar&, std::string_view, ado::Command&) override {}
    };
    Platform::current().makeLocService = [] { return std::make_unique<Translator>(); };
    run();
    EXPECT_EQ(window.translated->Caption, "GERMAN");
}

TEST_F(MapFormTest, TheBrowserFillsTheWindowAboveTheButton)
{
    window.present = {10000, 8000}; // 9900 by 7600 inside
    window.boxes["btnClose"] = {0, 0, 1200, 375};
    run();
    EXPECT_EQ(window.boxes["WebBrowser1"], (Box{0, 0, 9870, 7120}));
    EXPECT_EQ(window.boxes["btnClose"], (Box{8505, 7180, 1200, 375}));
}

TEST_F(MapFormTest, AWindowSmallerThanItsMarginsHasNoBrowser)
{
    window.present = {110, 500};
    run();
    EXPECT_EQ(window.boxes["WebBrowser1"], (Box{0, 0, 0, 0}));
}

TEST_F(MapFormTest, UnsetEndpointsAreAnErrorThatNamesThem)
{
    Platform::current().mapEndpoints = {};
    expectError(errors::invalidArgument, "\"home\" is not set",
                [&] { Comm_Forms{}.WebBrowser_Run(with.session, "u", point); });
    Platform::current().mapEndpoints.home = "home.example";
    expectError(errors::invalidArgument, "\"service\" is not set",
                [&] { Comm_Forms{}.WebBrowser_Run(with.session, "u", point); });
}

} // namespace
} // namespace tamarok::dialogs
