#include <algorithm>
#include <cmath>
#include <optional>
#include <string>
#include <string_view>

#include "tamarok/comm_get.h"
#include "tamarok/comm_set.h"
#include "tamarok/convert.h"
#include "tamarok/error.h"
#include "tamarok/format.h"
#include "tamarok/platform.h"
#include "tamarok/text.h"

// Key filters. Each one looks at the key first, then at text, cursor and selection of the box; properties are read
// only when they are needed, because a control may lack the others.

namespace tamarok {
namespace {

constexpr std::int16_t refused = 0;
constexpr std::int16_t backspace = 8;
constexpr std::int16_t enter = 13;

bool isDigit(std::int16_t key)
{
    return key >= '0' && key <= '9';
}

/// The properties of a text box that the filters use. Each is read or set by name.
class Box {
public:
    explicit Box(Object& control) : control_{control} {}

    std::string text() const { return convert::toText(control_.get("text", {})); }
    std::int32_t cursor() const { return convert::toLong(control_.get("SelStart", {})); }
    std::int32_t selected() const { return convert::toLong(control_.get("SelLength", {})); }
    std::string selection() const { return convert::toText(control_.get("SelText", {})); }
    bool locked() const { return convert::toBoolean(control_.get("Locked", {})); }
    std::string format() const { return convert::toText(dataFormat()->get("Format", {})); }

    void text(const std::string& value) { control_.put("text", value); }
    void cursor(std::int32_t position) { control_.put("SelStart", position); }
    void deleteSelection() { control_.put("SelText", std::string{}); }
    void format(const std::string& value) { dataFormat()->put("Format", value); }

private:
    ObjectRef dataFormat() const
    {
        const Variant value = control_.get("DataFormat", {});
        require(value.asObject(), "DataFormat");
        return value.asObject();
    }
    Object& control_;
};

std::string_view withoutSign(std::string_view number)
{
    return number.starts_with('-') ? number.substr(1) : number;
}

std::int32_t characters(std::string_view value)
{
    return static_cast<std::int32_t>(text::length(value));
}

/// The parsed number pattern of a filter: "-000.0" allows a sign, three whole digits and one decimal.
struct EntryPattern {
    explicit EntryPattern(std::string_view pattern) : sign{pattern.starts_with('-')}
    {
        const std::string_view digits = withoutSign(pattern);
        length = characters(digits);
        const std::size_t point = digits.find('.');
        hasPoint = point != std::string_view::npos;
        wholeDigits = characters(digits.substr(0, point));
        decimals = hasPoint ? characters(digits.substr(point + 1)) : 0;
    }

    bool sign;
    bool hasPoint = false;
    std::int32_t length = 0;
    std::int32_t wholeDigits = 0;
    std::int32_t decimals = 0;
};

/// Returns whether Backspace keeps the text a number: it must not delete the separator while decimals follow it.
bool backspaceMayPass(const Box& box, const std::string& separator)
{
    const std::string content = box.text();
    if (box.selected() > 0) {
        const std::string selection = box.selection();
        return selection == content || text::find(selection, separator) == 0;
    }
    const auto position = static_cast<std::int32_t>(text::find(content, separator));
    return position == 0 || box.cursor() != position || position == characters(content);
}

/// Returns whether a decimal separator may be typed. Inserts a "0" if no digit precedes it.
bool separatorMayPass(Box& box, const EntryPattern& pattern, const std::string& separator)
{
    const std::string content = box.text();
    const std::int32_t cursor = box.cursor();
    if (text::find(content, separator) != 0) return false;
    if (characters(content) - cursor > pattern.decimals) return false;
    // The 0 stands before the cursor, so the cursor moves behind it.
    if (cursor == 0) {
        box.text("0" + content);
        box.cursor(1);
    } else if (cursor == 1 && content.starts_with('-')) {
        box.text("-0" + content.substr(1));
        box.cursor(2);
    }
    return true;
}

/// Returns whether the part of the number at the cursor has room for one more digit.
bool digitMayPass(const Box& box, const EntryPattern& pattern, const std::string& separator)
{
    const std::string content = box.text();
    // Without decimals the whole text counts. Else the part that the cursor stands in does.
    if (pattern.decimals == 0) return characters(withoutSign(content)) < pattern.length;
    const auto position = static_cast<std::int32_t>(text::find(content, separator));
    if (position == 0) return characters(withoutSign(content)) < pattern.wholeDigits;
    if (box.cursor() < position) {
        const std::string_view whole = text::left(content, static_cast<std::size_t>(position) - 1);
        return characters(withoutSign(whole)) < pattern.wholeDigits;
    }
    return characters(content) - position < pattern.decimals;
}

/// A sign must be the first character, and the pattern must have one.
bool signMayPass(const Box& box, const EntryPattern& pattern)
{
    return pattern.sign && box.cursor() == 0 && !box.text().starts_with('-');
}

/// Returns the length of a number without its sign, written as plain text with at most 15 digits. From 1E+15 on that
/// has exponent form, whose characters count. Required by the contract. Do not correct.
std::int32_t plainLength(double number)
{
    return characters(convert::toPlainText(std::abs(number)));
}

/// Returns whether a number has more digits than the pattern. Without decimals in the pattern and without a sign the
/// text counts as it was typed. Required by the contract.
bool exceeds(double number, std::string_view typed, const EntryPattern& pattern)
{
    if (pattern.hasPoint) return plainLength(std::trunc(number)) > pattern.wholeDigits;
    return (pattern.sign ? plainLength(number) : characters(typed)) > pattern.length;
}

} // namespace

std::int16_t Comm_Get::OnlyNumbers(std::int16_t& KeyAscii, bool blnDecSep, Object& ActiveControl, bool bolNegativ) const
{
    const Box box{ActiveControl};
    const auto passes = [&] {
        if (KeyAscii == backspace || KeyAscii == enter) return true;
        if (bolNegativ) {
            if (box.cursor() == 0 && box.text().starts_with('-')) return false;
            if (KeyAscii == '-') return box.cursor() == 0;
        }
        if (isDigit(KeyAscii)) return true;
        const std::string separator = format::decimalSeparator(Platform::current().regional);
        return blnDecSep && separator.size() == 1 && KeyAscii == separator[0] && text::find(box.text(), separator) == 0;
    };
    if (!passes()) KeyAscii = refused;
    return KeyAscii;
}

void Comm_Get::OnlyNumbersKeyPress(std::int16_t& KeyAscii, Object& ActiveControl, const std::string& strFormat) const
{
    if (ActiveControl.typeName() != "TextBox") return;
    Box box{ActiveControl};
    if (box.locked() && KeyAscii != enter) {
        KeyAscii = refused;
        return;
    }
    // Kept for OnlyNumbersLostFocus, which takes the format of the last key press if it is given none.
    box.format(strFormat);
    const EntryPattern pattern{strFormat};
    const std::string separator = format::decimalSeparator(Platform::current().regional);
    if ((separator == "," && KeyAscii == '.') || (separator == "." && KeyAscii == ','))
        KeyAscii = static_cast<unsigned char>(separator[0]);

    if (KeyAscii == enter) return;
    if (KeyAscii == backspace) {
        if (!backspaceMayPass(box, separator)) KeyAscii = refused;
        return;
    }
    const bool isSeparator = separator.size() == 1 && KeyAscii == separator[0];
    const bool isSign = KeyAscii == '-';
    if ((isSign && !signMayPass(box, pattern)) || (!isSign && !isSeparator && !isDigit(KeyAscii))) {
        KeyAscii = refused;
        return;
    }
    box.deleteSelection(); // also if the key is then refused; required by the contract
    const bool passes = isSign        ? true
                        : isSeparator ? pattern.decimals > 0 && separatorMayPass(box, pattern, separator)
                                      : digitMayPass(box, pattern, separator);
    if (!passes) KeyAscii = refused;
}

void Comm_Get::OnlyNumbersLostFocus(Object& ActiveControl, std::string& strFormat) const
{
    Box box{ActiveControl};
    if (strFormat.empty()) strFormat = box.format();
    if (strFormat.empty()) return;
    std::string content = box.text();
    const std::optional<double> typed = convert::parseNumber(content, Platform::current().regional);
    if (!typed) return box.text("");

    // Required by the contract: every "-" goes, that of an exponent too, and a text is cut at a "." whatever the
    // decimal separator of the machine is. Do not correct.
    const EntryPattern pattern{strFormat};
    const std::size_t typedSize = content.size();
    if (!pattern.sign) std::erase(content, '-');
    if (!pattern.hasPoint) content.erase(std::min(content.find('.'), content.size()));
    const double number = content.size() == typedSize ? *typed : convert::toDouble(Variant{content});
    if (exceeds(number, content, pattern)) return box.text("");
    box.text(format::value(Variant{content}, text::replaceAll(strFormat, "-", "")));
}

std::int16_t Comm_Get::OnlyDate(std::int16_t KeyAscii, Object& ActiveControl) const
{
    const Box box{ActiveControl};
    if (KeyAscii == backspace || KeyAscii == enter) return KeyAscii;
    const std::string content = box.text();
    const std::int32_t cursor = box.cursor();
    // Day and month have at most two digits, the year four; a point may follow each of the first two.
    const auto points = std::count(content.begin(), content.end(), '.');
    if (KeyAscii == '.') {
        if (cursor < 1 || cursor > 5 || points > 1) return refused;
        if (points == 0) return KeyAscii;
        const auto point = static_cast<std::int32_t>(text::find(content, "."));
        return cursor == point - 1 || cursor == point ? refused : KeyAscii;
    }
    if (!isDigit(KeyAscii)) return refused;
    // Required by the contract: a part that is longer already, because a program put it there, takes a further digit,
    // and only the part after the last point is limited. Do not correct.
    if (points == 0) return characters(content) == 2 && box.selected() == 0 ? refused : KeyAscii;
    const std::int32_t lastPoint = characters(std::string_view{content}.substr(0, content.rfind('.'))) + 1;
    const std::int32_t room = points == 1 ? 2 : 4;
    const bool full = characters(content) - lastPoint == room && box.selected() == 0 && cursor >= lastPoint;
    return full ? refused : KeyAscii;
}

void Comm_Set::Select_Text(const ObjectRef& ControlActive) const
{
    if (ControlActive == nullptr) return;
    const std::string_view type = ControlActive->typeName();
    if (type != "ComboBox" && type != "TextBox") return;
    ControlActive->put("SelStart", std::int32_t{0});
    ControlActive->put("SelLength", characters(convert::toText(ControlActive->get("text", {}))));
}

} // namespace tamarok
