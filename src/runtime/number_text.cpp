#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>

#include "tamarok/convert.h"
#include "tamarok/decimal_digits.h"
#include "tamarok/error.h"

// Numbers as text. Whole numbers are written directly, all others by their 15 significant digits, in plain or
// exponent form.

namespace tamarok::convert {

namespace {

constexpr std::int32_t firstExponentForm = 16; ///< digits before the point from which the exponent form is used
constexpr std::int32_t lastExponentForm = -4;  ///< minus the zeros after the point from which the exponent form is used

/// Appends to a buffer, without a check of its size.
class Writer {
public:
    explicit Writer(char* begin) noexcept : begin_{begin}, at_{begin} {}

    void put(char c) noexcept { *at_++ = c; }
    void put(std::string_view text) noexcept { at_ = std::copy(text.begin(), text.end(), at_); }
    void zeros(std::int32_t count) noexcept { at_ = std::fill_n(at_, count, '0'); }
    std::size_t length() const noexcept { return static_cast<std::size_t>(at_ - begin_); }

private:
    char* begin_;
    char* at_;
};

/// Writes "1.2345E-05": one digit before the separator, at least two exponent digits.
void writeExponentForm(const DecimalDigits& number, char decimal, Writer& writer) noexcept
{
    const std::string_view digits = number.text();
    writer.put(digits.front());
    if (digits.size() > 1) {
        writer.put(decimal);
        writer.put(digits.substr(1));
    }
    const std::int32_t exponent = number.point - 1;
    const std::int32_t magnitude = std::abs(exponent);
    writer.put('E');
    writer.put(exponent < 0 ? '-' : '+');
    if (magnitude < 10) writer.put('0');
    std::array<char, 4> text;
    const auto end = std::to_chars(text.data(), text.data() + text.size(), magnitude).ptr;
    writer.put({text.data(), static_cast<std::size_t>(end - text.data())});
}

/// Writes the digits with zeros or the separator where the point demands it.
void writePlainForm(const DecimalDigits& number, char decimal, Writer& writer) noexcept
{
    const std::string_view digits = number.text();
    if (number.point <= 0) {
        writer.put('0');
        writer.put(decimal);
        writer.zeros(-number.point);
        writer.put(digits);
    } else if (number.point >= number.count) {
        writer.put(digits);
        writer.zeros(number.point - number.count);
    } else {
        const auto whole = static_cast<std::size_t>(number.point);
        writer.put(digits.substr(0, whole));
        writer.put(decimal);
        writer.put(digits.substr(whole));
    }
}

void requireFinite(double number)
{
    if (!std::isfinite(number)) throw Error{errors::overflow, "Overflow: the number is not finite."};
}

} // namespace

std::size_t writeNumber(double number, std::span<char> buffer, char decimal) noexcept
{
    // A whole number below 10^15 is its own shortest form.
    constexpr double firstLongWhole = 1e15;
    if (!std::isfinite(number)) return 0;
    if (std::abs(number) < firstLongWhole) {
        const auto whole = static_cast<std::int64_t>(number);
        if (static_cast<double>(whole) == number)
            return static_cast<std::size_t>(std::to_chars(buffer.data(), buffer.data() + buffer.size(), whole).ptr -
                                            buffer.data());
    }
    const DecimalDigits digits = decimalDigits(number);
    Writer writer{buffer.data()};
    if (digits.negative) writer.put('-');
    if (digits.point >= firstExponentForm || digits.point <= lastExponentForm)
        writeExponentForm(digits, decimal, writer);
    else
        writePlainForm(digits, decimal, writer);
    return writer.length();
}

std::string toText(double number, const Regional& regional)
{
    requireFinite(number);
    std::array<char, maxNumberText> buffer;
    // A separator of several bytes replaces the point afterwards.
    const bool plainMark = regional.decimal.size() == 1;
    const std::size_t length = writeNumber(number, buffer, plainMark ? regional.decimal.front() : '.');
    std::string text{buffer.data(), length};
    if (!plainMark)
        if (const std::size_t point = text.find('.'); point != std::string::npos)
            text.replace(point, 1, regional.decimal);
    return text;
}

std::string toPlainText(double number)
{
    requireFinite(number);
    std::array<char, maxNumberText> buffer;
    return {buffer.data(), writeNumber(number, buffer)};
}

} // namespace tamarok::convert
