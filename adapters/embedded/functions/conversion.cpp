#include "functions/conversion.h"

#include <array>
#include <charconv>
#include <cmath>
#include <limits>
#include <string>

#include "functions/catalog.h"
#include "functions/number_text.h"

#include "tamarok/text.h"

namespace tamarok::embedded::functions {

namespace {

/// A whole type of the server: its range, and the names by which error messages call it.
struct WholeLimits {
    std::string_view name;
    std::int64_t lowest;
    std::int64_t highest;
    std::string_view column; ///< what error 244 calls it; empty where another error is raised
};

constexpr std::array<WholeLimits, 4> wholeLimits = {
    WholeLimits{"tinyint", 0, 255, "INT1"}, WholeLimits{"smallint", -32'768, 32'767, "INT2"},
    WholeLimits{"int", -2'147'483'648, 2'147'483'647, ""},
    WholeLimits{"bigint", std::numeric_limits<std::int64_t>::min(), std::numeric_limits<std::int64_t>::max(), ""}};

const WholeLimits& limitsOf(WholeType type) noexcept
{
    return wholeLimits[static_cast<std::size_t>(type)];
}

std::string quoted(std::string_view value)
{
    std::string text = "'";
    text += value;
    return text += '\'';
}

/// The server has one error for a number beyond tinyint and smallint (220) and another for int and bigint (8115).
[[noreturn]] void failOverflow(WholeType type, std::string_view value)
{
    const WholeLimits& limits = limitsOf(type);
    if (!limits.column.empty()) {
        fail(220, "Arithmetic overflow error for data type " + std::string{limits.name} +
                      ", value = " + std::string{value} + ".");
    }
    failWith(8115, "Arithmetic overflow error converting expression to data type " + std::string{limits.name} + ".",
             value);
}

/// A text with a number beyond the type: error 244 for the small types, 248 for int, 8115 for bigint.
[[noreturn]] void failTextOverflow(WholeType type, std::string_view value)
{
    const WholeLimits& limits = limitsOf(type);
    const std::string begin = "The conversion of the nvarchar value " + quoted(value) + " overflowed an ";
    if (!limits.column.empty()) {
        fail(244, begin + std::string{limits.column} + " column. Use a larger integer column.");
    }
    if (type == WholeType::Int) fail(248, begin + "int column.");
    failOverflow(type, value);
}

[[noreturn]] void failText(WholeType type, std::string_view value)
{
    if (type == WholeType::BigInt) failWith(8114, "Error converting data type nvarchar to bigint.", value);
    fail(245, "Conversion failed when converting the nvarchar value " + quoted(value) + " to data type " +
                  std::string{limitsOf(type).name} + ".");
}

/// A whole number with blanks around it. A blank text and a lone sign are 0, as on the server.
std::int64_t wholeOfText(std::string_view text, WholeType type)
{
    std::string_view digits = trimBlanks(text);
    const bool negative = !digits.empty() && digits.front() == '-';
    if (negative || (!digits.empty() && digits.front() == '+')) digits.remove_prefix(1);
    if (digits.empty()) return 0;
    const std::size_t wrong = digits.find_first_not_of("0123456789");
    if (wrong != std::string_view::npos) failText(type, text);
    std::string signedDigits{negative ? "-" : ""};
    signedDigits += digits;
    std::int64_t number = 0;
    const auto read = std::from_chars(signedDigits.data(), signedDigits.data() + signedDigits.size(), number);
    const WholeLimits& limits = limitsOf(type);
    if (read.ec != std::errc{} || number < limits.lowest || number > limits.highest) failTextOverflow(type, text);
    return number;
}

/// The signs that the server accepts in an amount of money.
constexpr std::array<std::string_view, 18> currencySigns = {"$", "¢", "£", "¤", "¥", "€", "৲", "৳", "฿",
                                                            "₡", "₢", "₣", "₤", "₦", "₧", "₩", "₫", "\\"};

/// Number of bytes of the currency sign that `text` begins with; 0 for none.
std::size_t currencyLength(std::string_view text) noexcept
{
    for (const std::string_view sign : currencySigns) {
        if (text.starts_with(sign)) return sign.size();
    }
    return 0;
}

/// Tab, line feed, vertical tab, form feed, carriage return and the no-break space; `length` is set to its bytes.
bool startsWithSpace(std::string_view text, std::size_t& length) noexcept
{
    length = text.starts_with("\xC2\xA0") ? 2 : 1;
    return length == 2 || (!text.empty() && (text.front() == ' ' || (text.front() >= '\t' && text.front() <= '\r')));
}

/// Error 8115 for an infinite number.
double checkedReal(double number, std::string_view type)
{
    if (std::isfinite(number)) return number;
    fail(8115, "Arithmetic overflow error converting expression to data type " + std::string{type} + ".");
}

void resultWhole(Call& call, WholeType type)
{
    if (call.isNull(0)) return call.resultNull();
    call.result(toWhole(call.value(0), type));
}

void resultText(Call& call, std::string_view text, std::int64_t limit)
{
    call.result(limit < 0 ? text : text::left(text, static_cast<std::size_t>(limit)));
}

/// The type that overflow messages name as the source.
std::string_view sourceName(Storage storage) noexcept
{
    return storage == Storage::Text ? "nvarchar" : storage == Storage::Real ? "float" : "expression";
}

/// Numbers are never cut: where they do not fit, whole ones become "*" as varchar and fail as nvarchar.
void resultAsText(Call& call, bool starForWhole)
{
    if (call.isNull(0)) return call.resultNull();
    const TextArgument text = call.text(0);
    const std::int64_t limit = call.isNull(1) ? -1 : call.whole(1);
    const Storage storage = call.storage(0);
    const bool number = storage == Storage::Whole || storage == Storage::Real;
    if (!number || limit < 0 || text.view().size() <= static_cast<std::size_t>(limit)) {
        return resultText(call, text, limit);
    }
    if (starForWhole && storage == Storage::Whole) return call.result(std::string_view{"*"});
    failWith(8115,
             "Arithmetic overflow error converting expression to data type " +
                 std::string{starForWhole ? "varchar" : "nvarchar"} + ".",
             text);
}

/// char(n) and nchar(n): padded with blanks on the right.
void resultPadded(Call& call, bool starForWhole)
{
    if (call.anyNull()) return call.resultNull();
    const TextArgument text = call.text(0);
    constexpr std::int64_t longestPadded = 8000;
    const std::int64_t wanted = call.whole(1);
    if (wanted < 0 || wanted > longestPadded) {
        fail(131, "The size (" + std::to_string(wanted) + ") given to the type '" + (starForWhole ? "char" : "nchar") +
                      "' exceeds the maximum allowed (" + std::to_string(longestPadded) + ").");
    }
    const auto size = static_cast<std::size_t>(wanted);
    const std::size_t length = text::length(text);
    if (length >= size) return resultAsText(call, starForWhole);
    std::string padded{text.view()};
    padded.append(size - length, ' ');
    call.result(std::string_view{padded});
}

} // namespace

std::string_view trimBlanks(std::string_view text) noexcept
{
    while (!text.empty() && text.front() == ' ')
        text.remove_prefix(1);
    while (!text.empty() && text.back() == ' ')
        text.remove_suffix(1);
    return text;
}

std::int64_t checkedWhole(std::int64_t number, WholeType type)
{
    const WholeLimits& limits = limitsOf(type);
    if (number >= limits.lowest && number <= limits.highest) return number;
    failWith(8115, "Arithmetic overflow error converting expression to data type " + std::string{limits.name} + ".",
             std::to_string(number));
}

std::int64_t checkedInt(std::int64_t number)
{
    return checkedWhole(number, WholeType::Int);
}

std::int64_t toWhole(sqlite3_value* value, WholeType type)
{
    // Null, texts, whole numbers and floats in turn; only the last are cut.
    const Storage storage = storageOf(value);
    if (storage == Storage::Null) return 0;
    const WholeLimits& limits = limitsOf(type);
    if (storage == Storage::Text || storage == Storage::Blob) return wholeOfText(TextArgument{value}, type);
    if (storage == Storage::Whole) {
        const std::int64_t number = sqlite3_value_int64(value);
        if (number < limits.lowest || number > limits.highest) failOverflow(type, std::to_string(number));
        return number;
    }
    constexpr double bigLimit = 9223372036854775808.0;
    const double number = std::trunc(sqlite3_value_double(value));
    // The bounds are checked as doubles: a conversion of a number beyond 64 bits is undefined.
    const bool fits = number >= -bigLimit && number < bigLimit;
    const std::int64_t whole = fits ? static_cast<std::int64_t>(number) : 0;
    if (!fits || whole < limits.lowest || whole > limits.highest) {
        failOverflow(type, decimalText(sqlite3_value_double(value), 0));
    }
    return whole;
}

/// Copies the number into the form that std::from_chars reads, and reads all of it. No value for any other text.
std::optional<double> readFloat(std::string_view text) noexcept
{
    // std::from_chars knows neither a leading "+" nor the exponent letter D, and it accepts "inf" and "nan".
    text = trimBlanks(text);
    std::array<char, 400> plain{};
    std::size_t length = 0;
    std::size_t at = 0;
    if (!text.empty() && (text[0] == '-' || text[0] == '+')) {
        if (text[0] == '-') plain[length++] = '-';
        ++at;
    }
    const bool point = at < text.size() && text[at] == '.';
    const std::size_t first = at + (point ? 1 : 0);
    if (first >= text.size() || text[first] < '0' || text[first] > '9') return std::nullopt;
    // The buffer limits the length: a longer text is taken for no number.
    if (text.size() - at >= plain.size() - 2) return std::nullopt;
    for (; at < text.size(); ++at) {
        const char character = text[at];
        plain[length++] = character == 'd' || character == 'D' ? 'e' : character;
    }
    double number = 0.0;
    const auto read = std::from_chars(plain.data(), plain.data() + length, number);
    if (read.ec != std::errc{} || read.ptr != plain.data() + length) return std::nullopt;
    return number;
}

/// A blank text is 0, as in the server's conversion to float.
double toFloat(sqlite3_value* value)
{
    const Storage storage = storageOf(value);
    if (storage == Storage::Null || storage == Storage::Whole || storage == Storage::Real) {
        return sqlite3_value_double(value);
    }
    const TextArgument text{value};
    if (trimBlanks(text).empty()) return 0.0;
    if (const auto number = readFloat(text)) return *number;
    failWith(8114, "Error converting data type nvarchar to float.", text);
}

namespace {

/// Reads an amount of money: sign and currency sign before the digits in either order, with white space between them,
/// and commas anywhere in the whole part.
class MoneyReader {
public:
    explicit MoneyReader(std::string_view text) noexcept : rest_{text} {}

    std::optional<double> read()
    {
        // A text of blanks alone is no amount; a text of other white space is 0.
        std::size_t length = 0;
        for (; startsWithSpace(rest_, length); rest_.remove_prefix(length))
            hasContent_ = hasContent_ || rest_.front() != ' ';
        while (!rest_.empty() && rest_.back() == ' ')
            rest_.remove_suffix(1);
        while (!rest_.empty()) {
            if (!readCharacter()) return std::nullopt;
            hasContent_ = true;
            const bool hasGap = skipSpace();
            if (hasGap && isInNumber() && !rest_.empty()) return std::nullopt;
        }
        if (!hasContent_) return std::nullopt;
        return hasDigits_ ? readFloat(plain_) : 0.0;
    }

private:
    bool isInNumber() const noexcept { return hasDigits_ || hasPoint_; }

    bool skipSpace() noexcept
    {
        bool found = false;
        for (std::size_t length = 0; startsWithSpace(rest_, length); rest_.remove_prefix(length))
            found = true;
        return found;
    }

    /// Takes a digit, sign, separator or currency sign; false for any other character and for one out of place.
    bool readCharacter()
    {
        const char character = rest_.front();
        std::size_t length = 1;
        if (character >= '0' && character <= '9') {
            plain_ += character;
            hasDigits_ = true;
        } else if ((character == '-' || character == '+') && !hasSign_ && !isInNumber()) {
            hasSign_ = true;
            if (character == '-') plain_.insert(plain_.begin(), '-');
        } else if (character == '.' && !hasPoint_) {
            hasPoint_ = true;
            plain_ += '.';
        } else if (character != ',' || hasPoint_) {
            length = currencyLength(rest_);
            if (length == 0 || hasCurrency_ || isInNumber()) return false;
            hasCurrency_ = true;
        }
        rest_.remove_prefix(length);
        return true;
    }

    std::string_view rest_;
    std::string plain_; ///< sign, digits and point
    bool hasSign_ = false;
    bool hasCurrency_ = false;
    bool hasDigits_ = false;
    bool hasPoint_ = false;
    bool hasContent_ = false;
};

} // namespace

std::optional<double> readMoney(std::string_view text)
{
    return MoneyReader{text}.read();
}

/// ISNUMERIC is true for a text that some number type accepts, money included: "$" and "1,5" count.
bool isNumericText(std::string_view text)
{
    return readFloat(text).has_value() || readMoney(text).has_value();
}

void tmTinyInt(Call& call)
{
    resultWhole(call, WholeType::TinyInt);
}

void tmSmallInt(Call& call)
{
    resultWhole(call, WholeType::SmallInt);
}

void tmInt(Call& call)
{
    resultWhole(call, WholeType::Int);
}

void tmBigInt(Call& call)
{
    resultWhole(call, WholeType::BigInt);
}

/// A number other than 0 is 1; the words true and false are read too.
void tmBit(Call& call)
{
    switch (call.storage(0)) {
    case Storage::Null: return call.resultNull();
    case Storage::Whole: return call.result(std::int64_t{sqlite3_value_int64(call.value(0)) != 0});
    case Storage::Real: return call.result(std::int64_t{sqlite3_value_double(call.value(0)) != 0.0});
    default: break;
    }
    const TextArgument text = call.text(0);
    const std::string_view word = trimBlanks(text);
    if (text::equalsNoCase(word, "true")) return call.result(std::int64_t{1});
    if (text::equalsNoCase(word, "false")) return call.result(std::int64_t{0});
    std::string_view digits = word;
    if (!digits.empty() && (digits.front() == '-' || digits.front() == '+')) digits.remove_prefix(1);
    if (digits.find_first_not_of("0123456789") != std::string_view::npos) {
        fail(245, "Conversion failed when converting the nvarchar value " + quoted(text) + " to data type bit.");
    }
    call.result(std::int64_t{digits.find_first_not_of('0') != std::string_view::npos});
}

void tmFloat(Call& call)
{
    if (call.isNull(0)) return call.resultNull();
    call.result(checkedReal(toFloat(call.value(0)), "float"));
}

/// A float of 32 bits, stored as the double of the same value.
void tmReal(Call& call)
{
    if (call.isNull(0)) return call.resultNull();
    const double number = toFloat(call.value(0));
    if (std::fabs(number) > static_cast<double>(std::numeric_limits<float>::max())) checkedReal(HUGE_VAL, "real");
    call.result(static_cast<double>(static_cast<float>(number)));
}

namespace {

/// The range of an amount, in 64 or 32 bits of ten-thousandths.
struct MoneyLimits {
    std::string_view name;
    double lowest;
    double highest;
};

constexpr MoneyLimits money{"money", -922337203685477.5808, 922337203685477.5807};
constexpr MoneyLimits smallMoney{"smallmoney", -214748.3648, 214748.3647};

/// Error 8115 beyond the range of the type.
double checkedAmount(double number, const MoneyLimits& limits)
{
    if (number >= limits.lowest && number <= limits.highest) return number;
    char buffer[40];
    failWith(8115, "Arithmetic overflow error converting expression to data type " + std::string{limits.name} + ".",
             writeFloat(number, 0, buffer));
}

/// Converts to an amount with four decimals.
void resultMoney(Call& call, const MoneyLimits& limits)
{
    if (call.isNull(0)) return call.resultNull();
    double number = 0.0;
    const TextArgument text = call.text(0);
    if (call.storage(0) != Storage::Text) {
        number = call.real(0);
    } else if (!trimBlanks(text).empty()) {
        const auto amount = readMoney(text);
        if (!amount) {
            failWith(235, "Cannot convert a char value to money. The char value has incorrect syntax.", text);
        }
        number = *amount;
    }
    call.result(checkedAmount(roundHalfAway(number, 4), limits));
}

} // namespace

double checkedMoney(double number, bool small)
{
    return checkedAmount(number, small ? smallMoney : money);
}

void tmMoney(Call& call)
{
    resultMoney(call, money);
}

void tmSmallMoney(Call& call)
{
    resultMoney(call, smallMoney);
}

namespace {

/// A text as decimal: no exponent, and a blank text is none.
double decimalOfText(std::string_view text)
{
    // Required by the server's rule: decimal refuses '1e3', which float accepts.
    const bool exponent = text.find_first_of("eEdD") != std::string_view::npos;
    const auto number = exponent ? std::nullopt : readFloat(text);
    if (!number) failWith(8114, "Error converting data type nvarchar to numeric.", text);
    return *number;
}

void checkScale(std::int64_t precision, std::int64_t scale)
{
    constexpr std::int64_t mostDigits = 38;
    if (precision >= 1 && precision <= mostDigits && scale >= 0 && scale <= precision) return;
    fail(192, "The scale must be less than or equal to the precision: decimal(" + std::to_string(precision) + "," +
                  std::to_string(scale) + ").");
}

bool fitsDecimal(double number, std::int64_t digits)
{
    return std::fabs(number) < std::pow(10.0, static_cast<double>(digits));
}

/// Rounds with `fit` to the scale. Error 8115 if the whole part has more digits than the precision leaves.
void resultDecimal(Call& call, double (*fit)(double, std::int32_t))
{
    if (call.anyNull()) return call.resultNull();
    const std::int64_t precision = call.whole(1);
    const std::int64_t scale = call.whole(2);
    checkScale(precision, scale);
    const bool isText = call.storage(0) == Storage::Text;
    const double number = isText ? decimalOfText(call.text(0)) : call.real(0);
    const double rounded = fit(number, static_cast<std::int32_t>(scale));
    if (!fitsDecimal(rounded, precision - scale)) {
        failWith(8115,
                 "Arithmetic overflow error converting " + std::string{sourceName(call.storage(0))} +
                     " to data type numeric.",
                 call.text(0));
    }
    call.result(rounded);
}

} // namespace

double checkedDecimal(double number, std::int64_t precision, std::int64_t scale)
{
    const double rounded = roundHalfAway(number, static_cast<std::int32_t>(scale));
    if (fitsDecimal(rounded, precision - scale)) return rounded;
    char buffer[40];
    failWith(8115, "Arithmetic overflow error converting expression to data type numeric.",
             writeFloat(number, 0, buffer));
}

void tmDecimal(Call& call)
{
    resultDecimal(call, &roundHalfAway);
}

/// A quotient of decimals: the server cuts its further places.
void tmDecimalCut(Call& call)
{
    resultDecimal(call, &truncateTo);
}

void tmNVarChar(Call& call)
{
    resultAsText(call, false);
}

void tmVarChar(Call& call)
{
    resultAsText(call, true);
}

void tmNChar(Call& call)
{
    resultPadded(call, false);
}

void tmChar(Call& call)
{
    resultPadded(call, true);
}

/// tm_floattext(number, style, limit): CONVERT of a float. Style 0 shows six digits, 1 to 3 an exponent.
void tmFloatText(Call& call)
{
    if (call.anyNull()) return call.resultNull();
    const std::int64_t style = call.whole(1);
    if (style < 0 || style > 3) {
        fail(281,
             std::to_string(style) + " is not a valid style number when converting from float to a character string.");
    }
    char buffer[40];
    const std::string_view text = writeFloat(call.real(0), static_cast<std::int32_t>(style), buffer);
    const std::int64_t limit = call.whole(2);
    if (limit >= 0 && text.size() > static_cast<std::size_t>(limit)) {
        failWith(8115, "Arithmetic overflow error converting expression to data type nvarchar.", text);
    }
    call.result(text);
}

namespace {

/// A number that does not fit as text is an error; it is never cut.
void resultNumberText(Call& call, const std::string& text, std::string_view source)
{
    const std::int64_t limit = call.whole(2);
    if (limit >= 0 && text.size() > static_cast<std::size_t>(limit)) {
        failWith(8115, "Arithmetic overflow error converting " + std::string{source} + " to data type nvarchar.", text);
    }
    call.result(std::string_view{text});
}

} // namespace

/// tm_decimaltext(number, scale, limit): all places of the scale are shown.
void tmDecimalText(Call& call)
{
    if (call.anyNull()) return call.resultNull();
    constexpr std::int64_t largestScale = 38;
    const std::int64_t scale = std::min(std::max<std::int64_t>(call.whole(1), 0), largestScale);
    resultNumberText(call, decimalText(call.real(0), static_cast<std::int32_t>(scale)), "numeric");
}

/// tm_moneytext(amount, style, limit)
void tmMoneyText(Call& call)
{
    if (call.anyNull()) return call.resultNull();
    resultNumberText(call, moneyText(call.real(0), static_cast<std::int32_t>(call.whole(1))), "money");
}

/// Assigns a text to a column of limited length: only trailing blanks are cut off silently.
void tmStoreText(Call& call)
{
    if (call.isNull(0)) return call.resultNull();
    const TextArgument text = call.text(0);
    const std::int64_t limit = call.isNull(1) ? -1 : call.whole(1);
    if (limit < 0 || text.view().size() <= static_cast<std::size_t>(limit)) return call.result(text.view());
    const std::string_view kept = text::left(text, static_cast<std::size_t>(limit));
    // `limit` counts characters and the size counts bytes, so that only a text that may be too long gets here.
    const std::string_view rest = text.view().substr(kept.size());
    if (rest.find_first_not_of(' ') != std::string_view::npos) {
        fail(2628, "String or binary data would be truncated at " + std::to_string(limit) +
                       " characters. Truncated value: " + quoted(kept) + ".");
    }
    call.result(kept);
}

} // namespace tamarok::embedded::functions
