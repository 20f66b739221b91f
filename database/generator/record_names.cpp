#include "record_names.h"

#include "timber_profile.h"

namespace tamarok::database {
std::string recordName(std::string_view prefix, Date date, std::int64_t number)
{
    constexpr std::size_t width = 6;
    std::string digits = std::to_string(number);
    if (digits.size() < width) digits.insert(0, width - digits.size(), '0');
    return std::string{prefix} + std::to_string(toCivil(date).year).substr(2) + "-" + digits;
}

std::string listName(Date date, std::int64_t number)
{
    return recordName("L", date, number);
}

std::string documentName(std::size_t version, Date date, std::int64_t number)
{
    return recordName(std::string{profile::versions[version]} + "-", date, number);
}

} // namespace tamarok::database
