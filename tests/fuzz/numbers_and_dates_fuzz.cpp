#include <array>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <iostream>
#include <string>

#include "fuzz_input.h"
#include "tamarok_tsql/date_text.h"

#include "tamarok/convert.h"
#include "tamarok/error.h"
#include "tamarok/format.h"

/// Texts to numbers and dates, and both to texts again. The first line of an input is the text, the second a pattern of
/// Format; its first eight bytes are a number as well.
namespace {

using namespace tamarok;

[[noreturn]] void complain(std::string_view what, std::string_view text)
{
    std::cerr << what << ": " << text << '\n';
    std::abort();
}

/// Carries out `work`, which may fail with an error of the library and nothing else.
template <class Work>
void attempt(Work work)
{
    try {
        work();
    } catch (const Error& error) {
        if (error.number == 0) complain("an error without a number", error.description);
    }
}

/// Returns the number that 15 significant digits make of `number`, by the C library; infinity beyond the largest
/// double.
double fifteenDigitsOf(double number)
{
    std::array<char, 32> digits;
    std::snprintf(digits.data(), digits.size(), "%.14e", number);
    return std::strtod(digits.data(), nullptr);
}

/// A number's plain text is read as the number again, up to its 15 digits. The largest doubles round up to the one
/// decimal of 15 digits that lies beyond the range: it is written, and refused when it is read.
void checkNumber(double number)
{
    if (!std::isfinite(number)) return;
    const std::string text = convert::toPlainText(number);
    const auto again = convert::parsePlainNumber(text);
    if (!std::isfinite(fifteenDigitsOf(number))) {
        if (text != (number < 0 ? "-1.79769313486232E+308" : "1.79769313486232E+308"))
            complain("not the 15 digits of one of the largest numbers", text);
        if (again) complain("a text beyond the range is a number", text);
        return;
    }
    if (!again) complain("a number's text is no number", text);
    const double scale = std::fabs(number);
    if (std::fabs(*again - number) > scale * 1e-14) complain("a number's text is another number", text);
}

void checkValues(std::string_view text, std::string_view pattern, const Regional& regional)
{
    const Variant value{std::string{text}};
    attempt([&] { static_cast<void>(convert::toLong(value)); });
    attempt([&] { static_cast<void>(convert::toInteger(value)); });
    attempt([&] { static_cast<void>(convert::toBoolean(value)); });
    attempt([&] { static_cast<void>(convert::toDate(value)); });
    attempt([&] { static_cast<void>(format::value(value, pattern, regional)); });
    if (const auto number = convert::parseNumber(text, regional)) {
        checkNumber(*number);
        attempt([&] { static_cast<void>(format::number(*number, pattern, regional)); });
    }
    if (const auto date = convert::parseDate(text, regional)) {
        attempt([&] { static_cast<void>(convert::toText(*date, regional)); });
        attempt([&] { static_cast<void>(format::date(*date, pattern, regional)); });
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    std::string_view rest = fuzz::textOf(data, size);
    double number = 0;
    if (size >= sizeof number) std::memcpy(&number, data, sizeof number);
    checkNumber(number);
    const std::string_view text = fuzz::takeUpTo(rest, '\n');
    const std::string_view pattern = fuzz::takeUpTo(rest, '\n');
    for (const char* const locale : {"de-DE", "en-US", "cs-CZ"}) {
        checkValues(text, pattern, Regional::named(locale));
    }
    for (const auto order : {DateOrder::Mdy, DateOrder::Dmy, DateOrder::Ymd}) {
        for (const auto kind : {tsql::TypeKind::DateTime, tsql::TypeKind::SmallDateTime, tsql::TypeKind::Date}) {
            static_cast<void>(tsql::convertDateText(text, kind, tsql::readingOf(order)));
        }
    }
    return 0;
}
