#include <string>
#include <string_view>

#include "check/checks.h"
#include "check/rows.h"

#include "tamarok/comm_conv.h"
#include "tamarok/convert.h"
#include "tamarok/date.h"
#include "tamarok/error.h"
#include "tamarok/text.h"

namespace tamarok::cli::check {

namespace {

/// 5 March 2024, a day that is another one with day and month swapped.
const Date probedDay = makeDate(2024, 3, 5);
constexpr std::string_view probedText = "20240305";

/// The order of day, month and year in a date format, such as "DMY" for DD.MM.YYYY.
std::string orderOf(std::string_view format)
{
    std::string order;
    for (const char letter : text::toUpper(format))
        if ((letter == 'D' || letter == 'M' || letter == 'Y') && order.find(letter) == std::string::npos)
            order.push_back(letter);
    return order;
}

/// What the connection takes a date text for: eight digits, or "no date".
std::string readAs(const Installation& installation, std::string_view text)
{
    try {
        return readText(installation.connection(), "SELECT CONVERT(VARCHAR(8), CAST('" +
                                                       text::replaceAll(text, "'", "''") + "' AS DATETIME), 112)");
    } catch (const Error&) {
        if (!installation.answers()) throw;
        return "no date";
    }
}

/// Writes the day as the library writes dates into statements; empty for a format that it does not know.
std::string writtenIn(const std::string& format)
{
    try {
        std::string text = convert::toText(Comm_Conv{}.TransDate(probedDay, format));
        return orderOf(format).size() == 3 ? text : std::string{};
    } catch (const Error&) {
        return {};
    }
}

} // namespace

void checkDates(Context& context)
{
    const std::string& format = context.installation.session.strDateFormat;
    const std::string what = "date order for " + format;
    const std::string written = writtenIn(format);
    if (written.empty()) {
        context.report.add(State::Different, what,
                           "not a date format of the session: name DD, MM and YYYY with points or hyphens between");
        return;
    }
    const std::string read = readAs(context.installation, written);
    if (read == probedText) {
        context.report.add(State::Ok, what, "'" + written + "' is read as 5 March 2024");
        return;
    }
    context.report.add(State::Different, what,
                       "'" + written + "' is read as " + read + " instead of " + std::string{probedText} +
                           ": write 'Date Order=" + orderOf(format) +
                           "' into the connection text, or give the sessions another strDateFormat "
                           "(--date-format)");
}

} // namespace tamarok::cli::check
