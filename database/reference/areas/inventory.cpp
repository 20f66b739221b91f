#include "areas/inventory.h"

#include <array>
#include <cmath>

#include "areas/areas.h"

#include "tamarok/convert.h"

namespace tamarok::database {

Codes codesOf(ado::Connection& connection, std::string_view query)
{
    Codes codes;
    for (const std::vector<Variant>& row : rowsOf(connection, query))
        codes.emplace(row.at(0).asString(), convert::toLong(row.at(1)));
    return codes;
}

Variant idOf(const Codes& codes, std::string_view code)
{
    const auto found = codes.find(code);
    return found == codes.end() ? Variant{Null{}} : Variant{found->second};
}

double thousandth(double value)
{
    return std::round(value * 1000.0) / 1000.0;
}

double logVolume(double diameter, double length)
{
    const double radius = diameter / 200.0;
    return thousandth(timberPi * radius * radius * length);
}

std::string_view strengthClassOf(double diameter)
{
    struct Class {
        double below; ///< diameter in cm
        std::string_view code;
    };
    constexpr std::array<Class, 9> classes{
        {{10, "0"}, {15, "1a"}, {20, "1b"}, {25, "2a"}, {30, "2b"}, {35, "3a"}, {40, "3b"}, {50, "4"}, {60, "5"}}};
    for (const Class& one : classes)
        if (diameter < one.below) return one.code;
    return "6";
}

Date drawTime(Random& random, std::int32_t first, std::int32_t last, bool withSeconds)
{
    constexpr double firstOfJanuary1900 = 2.0;
    constexpr std::int32_t secondsPerHour = 3600;
    constexpr std::int32_t secondsPerMinute = 60;
    constexpr double secondsPerDay = 86400.0;
    const std::int32_t drawn = random.between(first * secondsPerHour, last * secondsPerHour);
    const std::int32_t seconds = withSeconds ? drawn : drawn - drawn % secondsPerMinute;
    return Date{firstOfJanuary1900 + seconds / secondsPerDay};
}

std::string documentNumber(std::string_view prefix, Date day, std::int32_t number)
{
    constexpr std::size_t digits = 5;
    return std::string{prefix} + "-" + shortYear(day) + "-" + paddedNumber(number, digits);
}

void writeInventory(ado::Connection& connection, const ReferenceOptions& options)
{
    writeStandingTimber(connection, options);
    writeSalesByBid(connection, options);
    writeTimberExchange(connection, options);
    writeCostTransfers(connection, options);
    writeKeyFigures(connection, options);
}

} // namespace tamarok::database
