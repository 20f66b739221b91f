#include <gmock/gmock.h>

#include "question_form.h"
#include "recording_window.h"
#include "support/errors.h"
#include "support/surroundings.h"

namespace tamarok::dialogs {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

using Captions = std::array<std::int32_t, QuestionForm::buttonCount>;

class QuestionFormTest : public ::testing::Test {
protected:
    QuestionFormTest()
    {
        for (int number = 1; number <= 9; ++number)
            with.loc.texts[number] = "text " + std::to_string(number);
        window.boxes["lblText"] = {0, 0, 3000, 240};
        for (const char* button : {"cmdYes", "cmdYesAll", "cmdNo", "cmdNoAll", "cmdExit"})
            window.boxes[button] = {0, 900, 1000, 500};
    }

    std::int16_t run(const Captions& captions, std::int32_t title = 9)
    {
        return QuestionForm{window}.run(with.session, "Delete?", title, captions);
    }

    tamarok::test::Surroundings with;
    test::Recording<QuestionWindow> window;
};

TEST_F(QuestionFormTest, EachButtonHasItsCode)
{
    const std::pair<std::string, int> codes[]{
        {"cmdYes", 1}, {"cmdYesAll", 2}, {"cmdNo", 3}, {"cmdNoAll", 4}, {"cmdExit", 0}};
    for (const auto& [button, code] : codes) {
        window.closed = false;
        window.user = [name = button](DialogEvents& events) { events.clicked(name); };
        EXPECT_EQ(run({1, 2, 3, 4, 5}), code) << button;
        EXPECT_TRUE(window.closed) << button;
    }
}

TEST_F(QuestionFormTest, ClosedInAnotherWayItGives0)
{
    window.user = [](DialogEvents& events) { events.closeAsked(); };
    EXPECT_EQ(run({1, 2, 3, 4, 5}), 0);
    EXPECT_TRUE(window.closed);
}

TEST_F(QuestionFormTest, TextsComeByNumber)
{
    run({1, 2, 3, 4, 5});
    EXPECT_EQ(window.log[0], "caption text 9");
    EXPECT_EQ(window.texts["lblText"], "Delete?");
    EXPECT_EQ(window.texts["cmdYes"], "text 1");
    EXPECT_EQ(window.texts["cmdYesAll"], "text 2");
    EXPECT_EQ(window.texts["cmdNo"], "text 3");
    EXPECT_EQ(window.texts["cmdNoAll"], "text 4");
    EXPECT_EQ(window.texts["cmdExit"], "text 5");
    EXPECT_THAT(window.hidden, IsEmpty());
    EXPECT_THAT(with.loc.asked, ElementsAre(9, 1, 2, 3, 4, 5));
}

TEST_F(QuestionFormTest, FormCaption0IsAnEmptyTitle)
{
    run({1, 0, 0, 0, 0}, 0);
    EXPECT_EQ(window.log[0], "caption ");
    EXPECT_THAT(with.loc.asked, ElementsAre(1));
}

TEST_F(QuestionFormTest, AllFiveNumbers0ShowNoButton)
{
    window.user = [](DialogEvents& events) { events.closeAsked(); };
    EXPECT_EQ(run({0, 0, 0, 0, 0}), 0);
    EXPECT_EQ(window.hidden, (std::set<std::string>{"cmdYes", "cmdYesAll", "cmdNo", "cmdNoAll", "cmdExit"}));
    EXPECT_EQ(window.present, (Size{3300, 2000}));
}

TEST_F(QuestionFormTest, ALongTextAndOneButtonMakeTheWindowAsWideAsTheTextAnd300)
{
    window.boxes["lblText"].width = 9000;
    run({0, 0, 3, 0, 0});
    EXPECT_EQ(window.present.width, 9300);
    EXPECT_EQ(window.boxes["cmdNo"], (Box{9300 - 200 - 1000, 900, 1000, 500}));
    EXPECT_EQ(window.boxes["cmdYes"].left, 0); // a hidden button stays
}

TEST_F(QuestionFormTest, ManyButtonsMakeTheWindowAsWideAsThemAnd400)
{
    run({1, 2, 3, 4, 5});
    EXPECT_EQ(window.present.width, 5400);
    EXPECT_EQ(window.boxes["cmdExit"].left, 4200);
    EXPECT_EQ(window.boxes["cmdNoAll"].left, 3200);
    EXPECT_EQ(window.boxes["cmdNo"].left, 2200);
    EXPECT_EQ(window.boxes["cmdYesAll"].left, 1200);
    EXPECT_EQ(window.boxes["cmdYes"].left, 200);
    EXPECT_THAT(window.log, ElementsAre("caption text 9", "front cmdExit", "front cmdNoAll", "front cmdNo",
                                        "front cmdYesAll", "front cmdYes", "show"));
}

TEST_F(QuestionFormTest, ButtonsAsWideAsTheTextCountAsNotWider)
{
    run({1, 0, 3, 0, 5});
    EXPECT_EQ(window.present.width, 3300);
}

TEST_F(QuestionFormTest, ShownButtonsCloseUpToTheRight)
{
    run({1, 0, 0, 4, 0});
    EXPECT_EQ(window.boxes["cmdNoAll"].left, 3300 - 200 - 1000);
    EXPECT_EQ(window.boxes["cmdYes"].left, 3300 - 200 - 2000);
}

TEST_F(QuestionFormTest, ANumberBeyondAnIntegerIsAnOverflow)
{
    EXPECT_EQ(tamarok::test::errorNumber([&] { run({1, 0, 32768, 0, 0}); }), errors::overflow);
    EXPECT_THAT(window.log, ElementsAre("caption text 9"));
}

TEST_F(QuestionFormTest, AFailureOfTheTextsGoesToTheCaller)
{
    with.loc.unreadable.insert(2);
    EXPECT_EQ(tamarok::test::errorNumber([&] { run({1, 2, 0, 0, 0}); }), errors::timeout);
}

} // namespace
} // namespace tamarok::dialogs
