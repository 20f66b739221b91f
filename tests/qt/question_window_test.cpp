#include "qt/support/sample.h"
#include "qt/support/user.h"

#include "tamarok/comm_forms.h"

namespace tamarok::qt {
namespace {

using namespace acting;

class QuestionWindowTest : public ::testing::Test {
protected:
    std::int16_t ask(std::array<std::int32_t, 5> texts, const std::string& text = "Löschen?")
    {
        return Comm_Forms{}.MessageBox_All(sample.session, text, 223, texts[0], texts[1], texts[2], texts[3], texts[4]);
    }
    Sample sample;
};

TEST_F(QuestionWindowTest, EachButtonHasItsAnswer)
{
    struct Row {
        const char* button;
        int answer;
    };
    for (const Row& row :
         {Row{"cmdYes", 1}, Row{"cmdYesAll", 2}, Row{"cmdNo", 3}, Row{"cmdNoAll", 4}, Row{"cmdExit", 0}}) {
        User user{click(row.button)};
        EXPECT_EQ(ask({91, 94, 268, 610, 223}), row.answer) << row.button;
    }
    User closing{closeWindow()};
    EXPECT_EQ(ask({91, 94, 268, 610, 223}), 0);
    User escape{pressKey(Qt::Key_Escape)};
    EXPECT_EQ(ask({91, 0, 0, 0, 0}), 0);
    User enter{pressKey(Qt::Key_Return)};
    EXPECT_EQ(ask({0, 94, 0, 610, 0}), 2) << "Enter presses the first button";
}

TEST_F(QuestionWindowTest, ShownButtonsStandInOrderInsideTheWindow)
{
    User user{[](QDialog& dialog) {
                  int last = 0;
                  for (const char* name : {"cmdYes", "cmdNo", "cmdExit"}) {
                      const auto& button = find<QPushButton>(dialog, name);
                      EXPECT_TRUE(button.isVisible());
                      EXPECT_GT(button.x(), last);
                      EXPECT_GE(button.width(), button.sizeHint().width()) << "no text is cut";
                      last = button.geometry().right();
                  }
                  EXPECT_LE(last, dialog.width());
                  EXPECT_FALSE(find<QPushButton>(dialog, "cmdNoAll").isVisible());
                  const auto& label = find<QLabel>(dialog, "lblText");
                  EXPECT_LT(label.geometry().bottom(), find<QPushButton>(dialog, "cmdYes").y());
              },
              closeWindow()};
    ask({91, 0, 94, 0, 610}, "Eins\nZwei\nDrei & vier <b>fünf</b>");
}

TEST_F(QuestionWindowTest, AVeryLongTextIsWrapped)
{
    std::string text;
    for (int word = 0; word < 200; ++word)
        text += "Holzliste ";
    User user{[](QDialog& dialog) { EXPECT_LE(dialog.width(), dialog.screen()->availableGeometry().width()); },
              click("cmdYes")};
    EXPECT_EQ(ask({91, 0, 0, 0, 0}, text), 1);
}

TEST_F(QuestionWindowTest, WithoutButtonsOnlyClosingEndsIt)
{
    User user{pressKey(Qt::Key_Return), closeWindow()};
    EXPECT_EQ(ask({0, 0, 0, 0, 0}), 0);
}

} // namespace
} // namespace tamarok::qt
