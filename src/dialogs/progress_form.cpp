#include "progress_form.h"

#include <cmath>

#include "tamarok/convert.h"
#include "tamarok/error.h"
#include "tamarok/platform.h"
#include "tamarok/variant.h"

namespace tamarok::dialogs {

namespace {

/// A whole number as the bar takes it. The addition keeps the end of the range above its beginning for 0.
float onBar(std::int32_t number)
{
    return static_cast<float>(number + 0.0001);
}

[[noreturn]] void refuse(std::string_view property, std::int32_t value, float maximum)
{
    throw Error{errors::invalidPropertyValue,
                "Invalid property value: " + std::string{property} + " " + std::to_string(value) +
                    " is outside the range of the progress bar, 0 to " +
                    convert::toText(std::nearbyint(double{maximum})) + ".",
                "ProgressBar"};
}

} // namespace

ProgressForm& ProgressForm::current()
{
    auto& form = Platform::current().progressForm;
    if (!form) form = std::make_shared<ProgressForm>(Platform::windows().makeProgress());
    return *form;
}

void ProgressForm::release()
{
    Platform::current().progressForm.reset();
}

void ProgressForm::start(std::int32_t maximum)
{
    if (onBar(maximum) <= 0) refuse("Max", maximum, maximum_);
    maximum_ = onBar(maximum);
    window_->maximum(maximum_);
    if (value_ > maximum_) window_->value(value_ = maximum_);
    try {
        window_->show();
    } catch (const Error&) {
        // Required by the contract: work goes on without the window, such as while another dialog is open.
    }
}

void ProgressForm::label(std::string_view text)
{
    label_ = text;
    window_->text("LbInfo1", text);
    window_->repaint();
}

std::int32_t ProgressForm::value() const
{
    return convert::toLong(double{value_});
}

void ProgressForm::value(std::int32_t value)
{
    if (onBar(value) < 0 || onBar(value) > maximum_) refuse("Value", value, maximum_);
    value_ = onBar(value);
    window_->value(value_);
    window_->repaint();
}

} // namespace tamarok::dialogs
