#include <array>

#include "line_append.h"

#include "tamarok/comm_act.h"
#include "tamarok/convert.h"
#include "tamarok/error.h"
#include "tamarok/mcomm.h"
#include "tamarok/platform.h"

// The action protocol: one line an action.

namespace tamarok {

namespace {

constexpr std::int32_t stopIcon = 16;

/// The present date and time by the regional settings, joined by "; ". Fractions of a second are cut off.
std::string dateAndTime()
{
    const CivilTime now = toCivil(Platform::now());
    const Date day = makeDate(now.year, now.month, now.day);
    // A time without a date lies on day 0.
    const Date time = fromCivil({.hour = now.hour, .minute = now.minute, .second = now.second});
    const Regional& regional = Platform::current().regional;
    return convert::toText(day, regional) + "; " + convert::toText(time, regional);
}

} // namespace

void Comm_Act::WriteReport(std::string_view strModul, std::string_view strName, std::string_view strAction,
                           std::string_view strUserName, std::string_view strProtokolPath) const
{
    try {
        std::string line;
        for (const std::string_view field : {strModul, strName, strAction})
            line.append(field).append("; ");
        line.append(dateAndTime()).append("; ").append(strUserName).append("  ");
        FileSystem& files = Platform::fileSystem();
        if (!files.exists(strProtokolPath)) files.create(strProtokolPath);
        settings::appendLines(strProtokolPath, std::array{line}, settings::Durability::Buffered);
    } catch (const Error& error) {
        mComm::ShowMessage(error.description, stopIcon);
    }
}

} // namespace tamarok
