#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "tamarok/object.h"
#include "tamarok/string_array.h"
#include "tamarok/tmkvar.h"

#pragma GCC visibility push(default)

namespace tamarok {

/// The question with up to five buttons, the progress window and the map dialog. All of them are Error 91 if the
/// platform has no dialog windows. The class has no state: the progress window belongs to the thread's platform.
class Comm_Forms {
public:
    /// Sets or returns the text of the progress window. A window that is not open is made, hidden.
    void Info_ProgressLabel(std::string_view text);
    std::string Info_ProgressLabel() const;

    /// Sets or returns the position of the progress bar. A window that is not open is made, hidden, with a bar to 100.
    /// Error 380 for a position outside the bar's range; 6 for one that a Long cannot hold.
    void Info_ProgressValue(std::int32_t value);
    std::int32_t Info_ProgressValue() const;

    /// Shows the progress window and returns at once. A window that cannot be shown stays hidden.
    /// @param Max              end of the bar's range; Error 380 below 0
    /// @param DisableFormName  not used: the caller disables his form himself
    void Info_Init(std::int32_t Max, const ObjectRef& DisableFormName);

    /// Closes the progress window; nothing happens if there is none.
    /// @param EnableFormName  not used, as above
    void Info_Release(const ObjectRef& EnableFormName);

    /// Asks a question and waits for a button.
    /// @param strText      the question
    /// @param FormCaption  number of the title's text, 0 for no title
    /// @param btn1         number of the text of the button for yes; 0 hides it
    /// @param btn2         yes to all
    /// @param btn3         no
    /// @param btn4         no to all
    /// @param btn5         stop
    /// @return 1 yes, 2 yes to all, 3 no, 4 no to all, 0 stop or closed
    /// Error 6 for a number above 32,767; failures of the database that has the texts.
    std::int16_t MessageBox_All(const TmkVar& tmkVar, std::string_view strText, std::int32_t FormCaption,
                                std::int32_t btn1, std::int32_t btn2, std::int32_t btn3, std::int32_t btn4,
                                std::int32_t btn5) const;

    /// Lets the user choose a point on a page of the map service.
    /// @param URL  address of the page
    /// @param arr  element 0 receives X, element 1 receives Y, as texts; they stay if the user closes the dialog
    /// Errors: 5 if the platform's map endpoints are not set; 9 for an array without the two elements.
    void WebBrowser_Run(const TmkVar& tmkVar, std::string_view URL, StringArray& arr) const;
};

} // namespace tamarok

#pragma GCC visibility pop
