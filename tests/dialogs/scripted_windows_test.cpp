#include <gmock/gmock.h>

#include "script_player.h"
#include "support/errors.h"
#include "support/surroundings.h"

#include "tamarok/comm_forms.h"
#include "tamarok/grid_help.h"
#include "tamarok/scripted_windows.h"

namespace tamarok::dialogs {
namespace {

using tamarok::test::expectError;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

DialogStep step(StepKind kind, std::string text = {}, std::vector<std::int32_t> numbers = {})
{
    return {.kind = kind, .text = text, .numbers = std::move(numbers), .value = {}, .written = "<" + text + ">"};
}

DialogStep set(std::string name, Variant value)
{
    DialogStep made = step(StepKind::Set, std::move(name));
    made.value = std::move(value);
    return made;
}

/// A dialog with a box, two buttons, and a close that can be refused.
class ProbeWindow final : public Scripted<QuestionWindow> {
public:
    explicit ProbeWindow(std::shared_ptr<DialogScripts> scripts) : Scripted{"F_Probe", std::move(scripts)}
    {
        controls().resize({4000, 3000});
        controls().add(std::make_shared<controls::TextBox>(), "Text1", {10, 20, 300, 40});
        controls().addButton("cmdOk", {0, 0, 10, 10});
        controls().addButton("cmdClose", {0, 0, 10, 10});
    }
};

class Presenter final : public DialogEvents {
public:
    explicit Presenter(ProbeWindow& window) : window_{window} {}
    void clicked(std::string_view button) override
    {
        log.push_back("clicked " + std::string{button});
        if (button == "cmdClose") window_.close();
        if (button == "cmdOk" && failure) throw *failure;
    }
    void resized() override { log.emplace_back("resized"); }
    void closeAsked() override
    {
        log.emplace_back("close asked");
        if (!refuses) window_.close();
    }

    std::vector<std::string> log;
    bool refuses = false;
    std::optional<Error> failure;

private:
    ProbeWindow& window_;
};

class ScriptedWindowsTest : public ::testing::Test {
protected:
    void play(DialogScript script)
    {
        scripts->add(std::move(script));
        window.showModal(presenter);
    }

    std::shared_ptr<DialogScripts> scripts = std::make_shared<DialogScripts>();
    ProbeWindow window{scripts};
    Presenter presenter{window};
};

TEST_F(ScriptedWindowsTest, WithoutAScriptADialogIsClosedAtOnce)
{
    window.showModal(presenter);
    EXPECT_THAT(presenter.log, ElementsAre("resized", "close asked"));
    const DialogScripts::Report report = scripts->takeReport();
    EXPECT_TRUE(report.shown);
    EXPECT_THAT(report.read, IsEmpty());
    EXPECT_EQ(report.left, 0U);
    EXPECT_FALSE(scripts->takeReport().shown);
}

TEST_F(ScriptedWindowsTest, EachDialogTakesTheOldestScript)
{
    scripts->add({step(StepKind::Read, "Width"), step(StepKind::Close)});
    scripts->add({step(StepKind::Read, "Height"), step(StepKind::Close)});
    window.showModal(presenter);
    EXPECT_EQ(scripts->takeReport().read.at(0).asDouble(), 4000);
    ProbeWindow second{scripts};
    Presenter other{second};
    second.showModal(other);
    EXPECT_EQ(scripts->takeReport().read.at(0).asDouble(), 3000);
}

TEST_F(ScriptedWindowsTest, AScriptThatEndsClosesItsDialog)
{
    play({step(StepKind::Ok)});
    EXPECT_THAT(presenter.log, ElementsAre("resized", "clicked cmdOk", "close asked"));
}

TEST_F(ScriptedWindowsTest, ADialogThatRefusesToCloseIsError5AtTheEndOfItsScript)
{
    presenter.refuses = true;
    expectError(errors::invalidArgument, "refuses to close", [&] { play({step(StepKind::Close)}); });
    // The step itself is no error: the user sees that the window stays, and can go on.
    EXPECT_THAT(presenter.log, ElementsAre("resized", "close asked", "close asked"));
}

TEST_F(ScriptedWindowsTest, StepsThatAreLeftOverAreCounted)
{
    play({step(StepKind::Cancel), step(StepKind::Ok), step(StepKind::Read, "Caption")});
    const DialogScripts::Report report = scripts->takeReport();
    EXPECT_EQ(report.left, 2U);
    EXPECT_THAT(report.read, IsEmpty());
}

TEST_F(ScriptedWindowsTest, AFailureOfThePresenterPassesUnchangedAndLeavesStepsOver)
{
    presenter.failure = Error{errors::timeout, "Timeout expired", "database"};
    const Error error = tamarok::test::failureOf([&] { play({step(StepKind::Ok), step(StepKind::Close)}); });
    EXPECT_EQ(error.number, errors::timeout);
    EXPECT_EQ(error.description, "Timeout expired");
    EXPECT_EQ(scripts->takeReport().left, 1U);
}

TEST_F(ScriptedWindowsTest, ADisabledOrHiddenButtonDoesNothing)
{
    window.enabled("cmdOk", false);
    window.visible("cmdClose", false);
    play({step(StepKind::Ok), step(StepKind::Cancel), step(StepKind::Click, "CMDOK")});
    EXPECT_THAT(presenter.log, ElementsAre("resized", "close asked"));
}

TEST_F(ScriptedWindowsTest, ReadsPropertiesByDottedName)
{
    window.caption("Probe");
    window.text("cmdOk", "OK");
    play({step(StepKind::Read, "Caption"), step(StepKind::Read, "cmdOk.Caption"), step(StepKind::Read, "Text1.Left"),
          step(StepKind::Read, "text1.Visible"), set("Text1", Variant{"abc"}), step(StepKind::Read, "Text1")});
    const std::vector<Variant> read = scripts->takeReport().read;
    ASSERT_EQ(read.size(), 5U);
    EXPECT_EQ(read[0].asString(), "Probe");
    EXPECT_EQ(read[1].asString(), "OK");
    EXPECT_EQ(read[2].asDouble(), 10);
    EXPECT_TRUE(read[3].asBoolean());
    EXPECT_EQ(read[4].asString(), "abc");
    EXPECT_EQ(window.text("Text1"), "abc");
}

TEST_F(ScriptedWindowsTest, TypesIntoTheFocusedBox)
{
    window.focus("Text1");
    play({step(StepKind::Type, "Fichte"), step(StepKind::Key, {}, {8})});
    EXPECT_EQ(window.text("Text1"), "Ficht");
}

TEST_F(ScriptedWindowsTest, ResizeGivesTheWindowThatSizeInTwips)
{
    play({step(StepKind::Resize, {}, {5000, 6000})});
    EXPECT_EQ(window.size(), (Size{5000, 6000}));
    EXPECT_THAT(presenter.log, ElementsAre("resized", "resized", "close asked"));
}

TEST_F(ScriptedWindowsTest, AStepThatMakesNoSenseIsError5AndNamesItself)
{
    const std::pair<DialogStep, std::string_view> cases[]{
        {step(StepKind::Click, "cmdNothing"), "no button \"cmdNothing\""},
        {step(StepKind::Click, "Text1"), "no button \"Text1\""},
        {step(StepKind::Read, "cmdNothing.Visible"), "<cmdNothing.Visible>"},
        {step(StepKind::Read, "cmdOk.Nothing"), "Nothing"},
        {step(StepKind::Read, "cmdOk..Caption"), "<cmdOk..Caption>"},
        {set("Nothing", Variant{"x"}), "<Nothing>"},
        {set("Text1.Left", Variant{"x"}), "<Text1.Left>"},
        {step(StepKind::Head, "head", {0}), "<head>"},
        {step(StepKind::SelectRow, "row", {1}), "<row>"},
        {step(StepKind::SelectRows, "rows", {1, 2}), "<rows>"},
        {step(StepKind::SelectNode, "|1"), "<|1>"},
        {step(StepKind::Navigate, "http://a"), "<http://a>"},
        {step(StepKind::Type, "abc"), "focus"},
        {step(StepKind::Key, "key", {13}), "focus"},
    };
    for (const auto& [wrong, named] : cases) {
        ProbeWindow probe{scripts};
        Presenter other{probe};
        scripts->add({wrong, step(StepKind::Close)});
        expectError(errors::invalidArgument, named, [&] { probe.showModal(other); });
        EXPECT_EQ(scripts->takeReport().left, 1U) << named;
    }
}

TEST(ScriptedDialogs, WithoutDialogWindowsAnOperationFails)
{
    const tamarok::test::Surroundings with;
    StringArray point{{"x", "y"}};
    Platform::current().mapEndpoints = {.home = "a", .service = "b"};
    Comm_Forms forms;
    expectError(errors::objectNotSet, "dialog windows", [&] { forms.Info_Init(1, nullptr); });
    expectError(errors::objectNotSet, "dialog windows",
                [&] { forms.MessageBox_All(with.session, "?", 0, 0, 0, 0, 0, 0); });
    expectError(errors::objectNotSet, "dialog windows", [&] { forms.WebBrowser_Run(with.session, "u", point); });
    expectError(errors::objectNotSet, "dialog windows", [&] { Grid_Help{}.TreeviewHelp(with.session, "", "", ""); });
    EXPECT_NO_THROW(forms.Info_Release(nullptr));
}

TEST(ScriptedDialogs, AQuestionIsAnsweredByItsScript)
{
    tamarok::test::Surroundings with;
    with.loc.texts = {{1, "Yes"}, {2, "No"}};
    const auto windows = std::make_shared<ScriptedWindows>();
    Platform::current().dialogWindows = windows;
    EXPECT_EQ(Comm_Forms{}.MessageBox_All(with.session, "Delete?", 0, 1, 0, 2, 0, 0), 0);
    windows->scripts().add({step(StepKind::Read, "lblText.Caption"), step(StepKind::Read, "cmdYes.Caption"),
                            step(StepKind::Read, "cmdYesAll.Visible"), step(StepKind::Click, "cmdNo")});
    EXPECT_EQ(Comm_Forms{}.MessageBox_All(with.session, "Delete?", 0, 1, 0, 2, 0, 0), 3);
    const std::vector<Variant> read = windows->scripts().takeReport().read;
    ASSERT_EQ(read.size(), 3U);
    EXPECT_EQ(read[0].asString(), "Delete?");
    EXPECT_EQ(read[1].asString(), "Yes");
    EXPECT_FALSE(read[2].asBoolean());
}

TEST(ScriptedDialogs, TheProgressWindowTakesNoScript)
{
    const tamarok::test::Surroundings with;
    const auto windows = std::make_shared<ScriptedWindows>();
    Platform::current().dialogWindows = windows;
    windows->scripts().add({step(StepKind::Click, "cmdYes")});
    Comm_Forms forms;
    forms.Info_Init(5, nullptr);
    forms.Info_ProgressValue(5);
    forms.Info_Release(nullptr);
    EXPECT_FALSE(windows->scripts().takeReport().shown);
}

TEST(ScriptedDialogs, AMapIsLedToItsBackPage)
{
    const tamarok::test::Surroundings with;
    const auto windows = std::make_shared<ScriptedWindows>();
    Platform::current().dialogWindows = windows;
    Platform::current().mapEndpoints = {.home = "home.example", .service = "https://maps.example"};
    windows->scripts().add({step(StepKind::Read, "WebBrowser1.LocationURL"), step(StepKind::Resize, {}, {8000, 6000}),
                            step(StepKind::Read, "btnClose.Left"),
                            step(StepKind::Navigate, "https://maps.example/447/back.php?a&parPosX=1&parPosY=2")});
    StringArray point{{"x", "y"}};
    Comm_Forms{}.WebBrowser_Run(with.session, "https://maps.example/?parURL=a", point);
    EXPECT_THAT(point.values, ElementsAre("1", "2"));
    const std::vector<Variant> read = windows->scripts().takeReport().read;
    ASSERT_EQ(read.size(), 2U);
    EXPECT_EQ(read[0].asString(), "https://maps.example/?parURL=a");
    EXPECT_EQ(read[1].asDouble(), 8000 - 1395);
}

} // namespace
} // namespace tamarok::dialogs
