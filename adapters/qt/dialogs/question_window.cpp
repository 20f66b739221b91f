#include <QFontMetrics>
#include <QLabel>
#include <QPushButton>
#include <QScreen>
#include <QStyle>
#include <algorithm>
#include <array>

#include "dialogs/dialog_shell.h"
#include "dialogs/windows.h"
#include "owned.h"
#include "tamarok_qt/texts.h"
#include "tamarok_qt/twips.h"

namespace tamarok::qt {

namespace {

constexpr std::array<std::string_view, 5> buttons{"cmdYes", "cmdYesAll", "cmdNo", "cmdNoAll", "cmdExit"};
constexpr int textLeft = 8;   ///< pixels
constexpr int textTop = 8;    ///< likewise
constexpr int belowText = 20; ///< to the buttons
constexpr int leastButton = 84;

/// The presenter makes the window as wide as the text or the buttons need. The window gives the label the size of its
/// text, wrapped where it is wider than most of the screen, and all buttons the width of the longest caption.
class QuestionDialog final : public Modal<dialogs::QuestionWindow> {
public:
    explicit QuestionDialog(const std::shared_ptr<Desk>& desk) : Modal{"F_MessageBox_All", desk}
    {
        label_ = &makeOwned<QLabel>(&shell().content());
        label_->setTextFormat(Qt::PlainText);
        label_->setTextInteractionFlags(Qt::TextSelectableByMouse);
        label_->setFocusPolicy(Qt::NoFocus);
        shell().addControl("lblText", *label_);
        for (const std::string_view button : buttons)
            shell().addButton(button, {});
        shell().buttonGap(8);
        fitText();
        fitButtons();
    }

    using Modal::text;
    void text(std::string_view control, std::string_view text) override
    {
        Modal::text(control, text);
        if (control == "lblText") fitText();
        fitButtons();
    }

private:
    void fitText()
    {
        const QScreen* const screen = shell().screen();
        const int widest = screen != nullptr ? screen->availableGeometry().width() * 2 / 3 : 800;
        const QFontMetrics metrics{label_->font()};
        const QRect extent = metrics.boundingRect(QRect{0, 0, widest, 0}, Qt::TextWordWrap, label_->text());
        label_->setWordWrap(true);
        label_->setGeometry(textLeft, textTop, extent.width() + 2, std::max(extent.height(), metrics.height()));
    }

    void fitButtons()
    {
        QSize all{leastButton, 0};
        for (const std::string_view name : buttons)
            all = all.expandedTo(shell().control(name).sizeHint());
        const int top = label_->geometry().bottom() + 1 + belowText;
        for (const std::string_view name : buttons) {
            QWidget& button = shell().control(name);
            button.setGeometry(button.x(), top, all.width(), all.height());
        }
        const dialogs::Size outer = shell().outerSize();
        const float bordersHeight = outer.height - shell().innerSize().height;
        shell().outerSize({outer.width, twips(top + all.height()) + bordersHeight});
    }

    QLabel* label_ = nullptr;
};

} // namespace

std::unique_ptr<dialogs::QuestionWindow> makeQuestionWindow(const std::shared_ptr<Desk>& desk)
{
    return std::make_unique<QuestionDialog>(desk);
}

} // namespace tamarok::qt
