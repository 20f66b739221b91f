#include "binder.h"
#include "class_tables.h"

#include "tamarok/comm_forms.h"

namespace tamarok::component {

namespace {

using C = Comm_Forms;

// The two functions of each property.
constexpr auto putLabel = static_cast<void (C::*)(std::string_view)>(&C::Info_ProgressLabel);
constexpr auto getLabel = static_cast<std::string (C::*)() const>(&C::Info_ProgressLabel);
constexpr auto putValue = static_cast<void (C::*)(std::int32_t)>(&C::Info_ProgressValue);
constexpr auto getValue = static_cast<std::int32_t (C::*)() const>(&C::Info_ProgressValue);

// clang-format off
constexpr std::array operations{
    operation<putLabel>(1, "Info_ProgressLabel", "text", "Sets the text of the progress window.", MemberKind::PropertyPut),
    operation<getLabel>(2, "Info_ProgressLabel", "", "Text of the progress window.", MemberKind::PropertyGet),
    operation<putValue>(3, "Info_ProgressValue", "value", "Moves the progress bar.", MemberKind::PropertyPut),
    operation<getValue>(4, "Info_ProgressValue", "", "Position of the progress bar.", MemberKind::PropertyGet),
    operation<&C::Info_Init>(5, "Info_Init", "Max, DisableFormName", "Shows the progress window and returns at once."),
    operation<&C::Info_Release>(6, "Info_Release", "EnableFormName", "Closes the progress window."),
    operation<&C::MessageBox_All>(7, "MessageBox_All", "&TmkVar, strText, &FormCaption, &btn1, &btn2, &btn3, &btn4, &btn5", "Asks a question with up to five buttons and gives the button pressed."),
    operation<&C::WebBrowser_Run>(8, "WebBrowser_Run", "&TmkVar, URL, &arr", "Lets the user choose a point on a map and gives its coordinates."),
};
// clang-format on
static_assert(slotsAscend(operations));

} // namespace

constinit const ClassInfo commForms{"Comm_Forms", "Question, progress window and map.", operations, makeClass<C>};

} // namespace tamarok::component
