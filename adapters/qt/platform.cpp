#include "tamarok_qt/platform.h"

#include <QApplication>
#include <QMessageBox>
#include <QPushButton>
#include <array>
#include <string>

#include "desk.h"
#include "dialogs/design_texts.h"
#include "dialogs/windows.h"
#include "tamarok_qt/texts.h"

#include "tamarok/error.h"

namespace tamarok::qt {

namespace {

/// A button of a message box, with the number of its answer.
struct AnswerButton {
    QMessageBox::StandardButton button;
    DesignText text;
    std::int16_t answer;
};

constexpr AnswerButton ok{QMessageBox::Ok, DesignText::Ok, 1};
constexpr AnswerButton cancel{QMessageBox::Cancel, DesignText::Cancel, 2};
constexpr AnswerButton abort{QMessageBox::Abort, DesignText::Abort, 3};
constexpr AnswerButton retry{QMessageBox::Retry, DesignText::Retry, 4};
constexpr AnswerButton ignore{QMessageBox::Ignore, DesignText::Ignore, 5};
constexpr AnswerButton yes{QMessageBox::Yes, DesignText::Yes, 6};
constexpr AnswerButton no{QMessageBox::No, DesignText::No, 7};

/// The buttons of a style, the lowest four bits of the flags. The last one that can be pressed by Escape does so.
std::span<const AnswerButton> buttonsOf(std::int32_t flags)
{
    static constexpr std::array onlyOk{ok};
    static constexpr std::array okCancel{ok, cancel};
    static constexpr std::array abortRetryIgnore{abort, retry, ignore};
    static constexpr std::array yesNoCancel{yes, no, cancel};
    static constexpr std::array yesNo{yes, no};
    static constexpr std::array retryCancel{retry, cancel};
    switch (flags & 0xF) {
    case 1: return okCancel;
    case 2: return abortRetryIgnore;
    case 3: return yesNoCancel;
    case 4: return yesNo;
    case 5: return retryCancel;
    default: return onlyOk;
    }
}

QMessageBox::Icon iconOf(std::int32_t flags)
{
    switch (flags & 0x70) {
    case 16: return QMessageBox::Critical;
    case 32: return QMessageBox::Question;
    case 48: return QMessageBox::Warning;
    case 64: return QMessageBox::Information;
    default: return QMessageBox::NoIcon;
    }
}

class QtMessageBox final : public MessageBox {
public:
    std::int16_t show(std::string_view text, std::int32_t flags, std::string_view title) override
    {
        requireApplication();
        QMessageBox box{iconOf(flags), toQt(title), toQt(text)};
        box.setTextFormat(Qt::PlainText);
        box.setTextInteractionFlags(Qt::TextSelectableByMouse);
        const std::span<const AnswerButton> buttons = buttonsOf(flags);
        // The third hexadecimal digit counts the default button from 0.
        const auto preset = static_cast<std::size_t>((flags >> 8) & 0x3);
        for (std::size_t index = 0; index < buttons.size(); ++index) {
            QPushButton* const button = box.addButton(buttons[index].button);
            button->setText(designText(buttons[index].text));
            button->setIcon({});
            if (index == (preset < buttons.size() ? preset : 0)) box.setDefaultButton(button);
        }
        box.setWindowModality(Qt::ApplicationModal);
        box.ensurePolished();
        box.adjustSize();
        putAboveActiveWindow(box);
        // Closing the window answers as its Cancel, or as its only button; where there is neither, it cannot be closed.
        const int pressed = box.exec();
        for (const AnswerButton& button : buttons)
            if (button.button == pressed) return button.answer;
        return buttons.size() == 1 ? ok.answer : cancel.answer;
    }
};

class QtKeyboard final : public Keyboard {
public:
    explicit QtKeyboard(std::shared_ptr<Desk> desk) : desk_{std::move(desk)} {}
    void pressEnter() override { desk_->pressEnter(); }

private:
    std::shared_ptr<Desk> desk_;
};

} // namespace

std::unique_ptr<dialogs::MapWindow> Windows::makeMap()
{
    if (!makeMap_)
        throw Error{errors::cannotCreateObject,
                    "The map dialog cannot be shown: the program was built without its browser."};
    return makeMap_(checkedDesk());
}

void equip(Platform& platform, MapMaker makeMap)
{
    const auto desk = std::make_shared<Desk>();
    platform.messageBox = std::make_shared<QtMessageBox>();
    platform.keyboard = std::make_shared<QtKeyboard>(desk);
    platform.dialogWindows = std::make_shared<Windows>(desk, std::move(makeMap));
}

Platform platform(MapMaker makeMap)
{
    Platform made;
    equip(made, std::move(makeMap));
    return made;
}

} // namespace tamarok::qt
