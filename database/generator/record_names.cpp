#include "record_names.h"

#include "timber_profile.h"

namespace tamarok::database {
namespace {

/// Returns "yy-nnnnnn": year and number, which is left-padded with zeros to six digits.
std::string yearAndNumber(Date date, std::int64_t number)
{
    constexpr std::size_t width = 6;
    std::string digits = std::to_string(number);
    if (digits.size() < width) digits.insert(0, width - digits.size(), '0');
    return std::to_string(toCivil(date).year).substr(2) + "-" + digits;
}

} // namespace

std::string listName(Date date, std::int64_t number)
{
    return "L" + yearAndNumber(date, number);
}

std::string documentName(std::size_t version, Date date, std::int64_t number)
{
    return std::string{profile::versions[version]} + "-" + yearAndNumber(date, number);
}

} // namespace tamarok::database
