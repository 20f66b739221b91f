#include <cstdint>
#include <optional>
#include <random>
#include <regex>

#include "values/machines.h"

#include "tamarok/comm_get.h"
#include "tamarok/controls.h"
#include "tamarok/convert.h"

// Random hands at the keyboard. Whatever they press, the box holds the beginning of a number that its
// pattern has room for, and the box that is left is empty or formatted.

namespace tamarok {
namespace {

using controls::TextBox;
using test::Machine;

const Comm_Get get;
constexpr const char* formats[] = {"0000.00", "-000.0", "00", "-0000", "0.000", "-0.0", "000", "-00.00"};

struct Room {
    explicit Room(std::string_view format) :
        sign{format.starts_with('-')}, whole{format.substr(sign ? 1 : 0, format.find('.') - (sign ? 1 : 0)).size()},
        decimals{format.find('.') == std::string_view::npos ? 0 : format.size() - format.find('.') - 1}
    {}
    bool sign;
    std::size_t whole;
    std::size_t decimals;
};

/// True where some number of the pattern begins like that; the whole part may be missing.
bool isBeginning(std::string_view content, const Room& room, char separator)
{
    if (room.sign && content.starts_with('-')) content.remove_prefix(1);
    const auto digits = [&] {
        std::size_t count = 0;
        while (count < content.size() && content[count] >= '0' && content[count] <= '9')
            ++count;
        content.remove_prefix(count);
        return count;
    };
    if (digits() > room.whole) return false;
    if (content.empty()) return true;
    if (room.decimals == 0 || content.front() != separator) return false;
    content.remove_prefix(1);
    return digits() <= room.decimals && content.empty();
}

class Hands {
public:
    Hands(std::uint64_t seed, std::string_view format, char separator) :
        engine_{seed}, format_{format}, room_{format}, separator_{separator}
    {}

    TextBox& box() { return box_; }

    void press()
    {
        static constexpr std::u32string_view keys =
            U"0123456789012345678901234567890123456789,,,,....----\b\b\b\b\rae+ E'äé🌲\t";
        controls::typeKey(box_, keys[below(keys.size())],
                          [this](std::int16_t& key) { get.OnlyNumbersKeyPress(key, box_, format_); });
    }

    /// The cursor and the selection go anywhere, but for the two places where the filter itself lets a
    /// number be broken: before a sign, and around a separator that is not all of the selection's text.
    void moveAbout()
    {
        const auto length = static_cast<std::size_t>(box_.text().size());
        const std::size_t first = box_.text().starts_with('-') ? 1 : 0;
        if (first > length) return;
        box_.SelStart(static_cast<std::int32_t>(first + below(length - first + 1)));
        if (below(3) == 0) box_.SelLength(static_cast<std::int32_t>(below(length + 1)));
        if (below(10) == 0 && first == 0) {
            box_.SelStart(0);
            box_.SelLength(static_cast<std::int32_t>(length));
        }
        const std::string selection = box_.SelText();
        if (selection != box_.text() && selection.find(separator_) != std::string::npos) box_.SelLength(0);
    }

    bool holdsABeginning() const { return isBeginning(box_.text(), room_, separator_); }
    std::size_t below(std::size_t bound) { return std::uniform_int_distribution<std::size_t>{0, bound - 1}(engine_); }

private:
    std::mt19937_64 engine_;
    std::string format_;
    Room room_;
    char separator_;
    TextBox box_;
};

/// What a box that was left holds: nothing, or a number under the pattern.
void expectTidied(TextBox& box, const std::string& format, char separator)
{
    const std::string typed = box.text();
    const std::optional<double> number = convert::parseNumber(typed, Platform::current().regional);
    std::string ofBox;
    ASSERT_NO_THROW(get.OnlyNumbersLostFocus(box, ofBox)) << format << " [" << typed << "]";
    if (!number) {
        EXPECT_EQ(box.text(), "") << format << " [" << typed << "]";
        return;
    }
    EXPECT_TRUE(isBeginning(box.text(), Room{format}, separator)) << format << " [" << typed << "] " << box.text();
    EXPECT_EQ(box.text().size(), (*number < 0 ? 1 : 0) + format.size() - (format.starts_with('-') ? 1 : 0))
        << format << " [" << typed << "] " << box.text();
    EXPECT_EQ(convert::parseNumber(box.text(), Platform::current().regional), number) << format << " [" << typed << "]";
}

void typeSequences(const Machine& machine, const std::string& format, bool moving)
{
    constexpr std::uint64_t sequences = 250;
    const char separator = machine.hasComma() ? ',' : '.';
    for (std::uint64_t seed = 0; seed < sequences; ++seed) {
        Hands hands{seed, format, separator};
        const std::size_t presses = 1 + hands.below(25);
        for (std::size_t press = 0; press < presses; ++press) {
            if (moving && hands.below(3) == 0) hands.moveAbout();
            const std::string before = hands.box().text();
            hands.press();
            ASSERT_TRUE(hands.holdsABeginning())
                << format << " seed " << seed << " [" << before << "] became [" << hands.box().text() << "]";
        }
        expectTidied(hands.box(), format, separator);
        if (::testing::Test::HasFailure()) return;
    }
}

TEST(Typing, AnyKeysLeaveTheBeginningOfANumber)
{
    test::onEachMachine([](const Machine& machine) {
        for (const char* format : formats)
            typeSequences(machine, format, false);
    });
}

TEST(Typing, AnyKeysWithTheCursorMovingAbout)
{
    test::onEachMachine([](const Machine& machine) {
        for (const char* format : formats)
            typeSequences(machine, format, true);
    });
}

TEST(Typing, TheTwoPlacesWhereTheFilterLetsANumberBreak)
{
    const PlatformScope german{test::platformFor("de-AT")};
    const auto typed = [](std::string_view text, std::int32_t start, std::int32_t length, char32_t key) {
        TextBox box;
        box.text(std::string{text});
        box.SelStart(start);
        box.SelLength(length);
        controls::typeKey(box, key, [&](std::int16_t& value) { get.OnlyNumbersKeyPress(value, box, "-000.00"); });
        std::string ofBox;
        get.OnlyNumbersLostFocus(box, ofBox);
        return box.text();
    };
    EXPECT_EQ(typed("-5", 0, 0, U'3'), "") << "a digit before the sign is no number any more: the box is cleared";
    EXPECT_EQ(typed("123,45", 3, 1, U'6'), "") << "the selected separator goes, the digit does not come: no room";
    EXPECT_EQ(typed("1,4", 1, 1, U'6'), "164,00");
}

/// Dates: two, two and four digits, whatever is pressed at the end of the text.
TEST(Typing, AnyKeysLeaveTheBeginningOfADate)
{
    const std::regex beginning{R"(\d{0,2}|\d{1,2}\.\d{0,2}|\d{1,2}\.\d{1,2}\.\d{0,4})"};
    std::mt19937_64 engine{7};
    static constexpr std::u32string_view keys = U"0123456789....,-/ \b\bä";
    for (int sequence = 0; sequence < 5'000; ++sequence) {
        TextBox box;
        for (int press = 0; press < 20; ++press) {
            const char32_t key = keys[std::uniform_int_distribution<std::size_t>{0, keys.size() - 1}(engine)];
            controls::typeKey(box, key, [&](std::int16_t& value) { value = get.OnlyDate(value, box); });
            ASSERT_TRUE(std::regex_match(box.text(), beginning)) << box.text();
        }
    }
}

} // namespace
} // namespace tamarok
