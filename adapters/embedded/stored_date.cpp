#include "stored_date.h"

#include "tamarok_tsql/date_value.h"

namespace tamarok::embedded {

/// The server counts days from 1900-01-01 and the system's dates from 1899-12-30, hence the offset.
bool parseStoredDate(std::string_view text, Date& date) noexcept
{
    const auto instant = tsql::readStored(text);
    if (!instant) {
        return false;
    }
    const auto day = static_cast<std::int32_t>(tsql::dayOf(*instant)) + tsql::serverDayZero;
    date = joinDate(day, static_cast<std::int32_t>(tsql::timeOf(*instant)));
    return true;
}

std::string storedDate(Date date)
{
    char buffer[tsql::storedLength];
    return std::string{tsql::writeStored(toCivil(date), buffer)};
}

} // namespace tamarok::embedded
