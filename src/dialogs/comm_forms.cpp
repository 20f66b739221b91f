#include "tamarok/comm_forms.h"

#include <array>
#include <memory>

#include "map_form.h"
#include "progress_form.h"
#include "question_form.h"

#include "tamarok/error.h"
#include "tamarok/platform.h"

// The windows of each dialog come from the thread's platform.

namespace tamarok {

using dialogs::ProgressForm;

void Comm_Forms::Info_ProgressLabel(std::string_view text)
{
    ProgressForm::current().label(text);
}

std::string Comm_Forms::Info_ProgressLabel() const
{
    return ProgressForm::current().label();
}

void Comm_Forms::Info_ProgressValue(std::int32_t value)
{
    ProgressForm::current().value(value);
}

std::int32_t Comm_Forms::Info_ProgressValue() const
{
    return ProgressForm::current().value();
}

void Comm_Forms::Info_Init(std::int32_t Max, const ObjectRef& /*DisableFormName*/)
{
    ProgressForm::current().start(Max);
}

void Comm_Forms::Info_Release(const ObjectRef& /*EnableFormName*/)
{
    ProgressForm::release();
}

std::int16_t Comm_Forms::MessageBox_All(const TmkVar& tmkVar, std::string_view strText, std::int32_t FormCaption,
                                        std::int32_t btn1, std::int32_t btn2, std::int32_t btn3, std::int32_t btn4,
                                        std::int32_t btn5) const
{
    const auto window = Platform::windows().makeQuestion();
    return dialogs::QuestionForm{*window}.run(tmkVar, strText, FormCaption, {btn1, btn2, btn3, btn4, btn5});
}

void Comm_Forms::WebBrowser_Run(const TmkVar& tmkVar, std::string_view URL, StringArray& arr) const
{
    const MapEndpoints& endpoints = Platform::current().mapEndpoints;
    // An empty text would stand in every address.
    if (endpoints.home.empty() || endpoints.service.empty()) {
        throw Error{errors::invalidArgument, std::string{"The map dialog cannot be shown: the map endpoint \""} +
                                                 (endpoints.home.empty() ? "home" : "service") + "\" is not set."};
    }
    const auto window = Platform::windows().makeMap();
    dialogs::MapForm{tmkVar, endpoints, *window}.run(URL, arr);
}

} // namespace tamarok
