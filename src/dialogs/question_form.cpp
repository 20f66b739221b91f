#include "question_form.h"

#include <algorithm>
#include <memory>
#include <string>

#include "tamarok/convert.h"
#include "tamarok/loc_service.h"
#include "tamarok/platform.h"

namespace tamarok::dialogs {

namespace {

struct Answer {
    std::string_view button;
    std::int16_t code;
};

/// In the order on the screen, from the left.
constexpr std::array<Answer, QuestionForm::buttonCount> answers{{
    {"cmdYes", 1},
    {"cmdYesAll", 2},
    {"cmdNo", 3},
    {"cmdNoAll", 4},
    {"cmdExit", 0},
}};

/// Margins of the window, in twips.
constexpr float besideButtons = 400;
constexpr float besideText = 300;
constexpr float behindButtons = 200;

std::string textOf(std::int32_t number, const TmkVar& session)
{
    return Platform::locService()->GetText(convert::toInteger(number), session);
}

} // namespace

std::int16_t QuestionForm::run(const TmkVar& session, std::string_view text, std::int32_t caption,
                               const std::array<std::int32_t, buttonCount>& captions)
{
    window_.text("lblText", text);
    window_.caption(caption == 0 ? std::string{} : textOf(caption, session));
    for (std::size_t index = 0; index < buttonCount; ++index) {
        if (captions[index] != 0)
            window_.text(answers[index].button, textOf(captions[index], session));
        else
            window_.visible(answers[index].button, false);
    }
    placeButtons(captions);
    window_.showModal(*this);
    return result_;
}

/// Makes the window wide enough for the text and for the buttons, and closes the shown buttons up to the right.
void QuestionForm::placeButtons(const std::array<std::int32_t, buttonCount>& captions)
{
    const auto shown =
        static_cast<float>(std::ranges::count_if(captions, [](std::int32_t number) { return number != 0; }));
    const float labelWidth = window_.place("lblText").width;
    const float row = shown * window_.place("cmdExit").width;
    const float width = row > labelWidth ? row + besideButtons : labelWidth + besideText;
    window_.resize({width, window_.size().height});
    float position = 0; // of a shown button, from the right, from 1
    for (std::size_t index = buttonCount; index-- > 0;) {
        if (captions[index] == 0) continue;
        const std::string_view button = answers[index].button;
        Box box = window_.place(button);
        box.left = width - behindButtons - ++position * box.width;
        window_.place(button, box);
        window_.bringToFront(button);
    }
}

void QuestionForm::clicked(std::string_view button)
{
    const auto answer = std::ranges::find(answers, button, &Answer::button);
    if (answer != answers.end()) result_ = answer->code;
    window_.close();
}

} // namespace tamarok::dialogs
