#include "runtime/support.h"

#include "tamarok/format.h"

namespace tamarok::format {
namespace {

using test::errorNumber;
using test::field;

class ValueFormat : public testing::Test {
protected:
    PlatformScope scope_{test::platformFor("de-AT")};
};

struct Case {
    Variant value;
    const char* pattern;
    const char* text;
};

TEST_F(ValueFormat, KindOfPatternAndValueDecideTheForm)
{
    const Case table[] = {
        {1.005, "0.00", "1,01"},
        {"1,005", "0.00", "1,01"},
        {"1.234,5", "###,###,##0.00", "1.234,50"},
        {"abc", "0.00", "abc"},
        {"", "0.00", ""},
        {std::int32_t{7}, "000", "007"},
        {Variant{}, "0.0", "0,0"},
        {true, "0", "-1"},
        {Date{40271.0}, "dd.mm.yyyy", "03.04.2010"},
        {"3.4.2010", "dd.mm.yyyy", "03.04.2010"},
        {"2010-04-03", "dddd", "Samstag"},
        {"abc", "dd.mm.yyyy", "abc"},
        {40271.0, "dd.mm.yyyy", "03.04.2010"},
        {"40271", "dd.mm.yyyy", "03.04.2010"},
        {"99999999", "dd.mm.yyyy", "99999999"},
        {Date{40271.5}, "hh:nn", "12:00"},
        {Date{40271.0}, "0", "40271"},
        {Date{40271.0}, "d/m/yyyy", "3.4.2010"},
        {Date{40271.0}, "MMMM", "April"},
        {"text", "@", "text"},
        {1.5, "@", "1,5"},
        {1.5, "", "1,5"},
        {true, "", "Wahr"},
        {Null{}, "0.00", ""},
        {Null{}, "dd.mm.yyyy", ""},
        {5.0, "0 \"days\"", "5 days"},
        {field(2.5), "0.00", "2,50"},
        {field(Null{}), "0.00", ""},
        {field("3.4.2010"), "dd.mm.yyyy", "03.04.2010"},
    };
    for (const Case& row : table)
        EXPECT_EQ(value(row.value, row.pattern), row.text) << row.pattern;
}

TEST_F(ValueFormat, ValuesWithoutATextFail)
{
    EXPECT_EQ(errorNumber([] { value(Variant{VariantArray{}}, "0.00"); }), errors::typeMismatch);
    EXPECT_EQ(errorNumber([] { value(Variant{ObjectRef{}}, "0.00"); }), errors::objectNotSet);
    EXPECT_EQ(errorNumber([] { value(field(field(1.0)), "0.00"); }), errors::typeMismatch);
    EXPECT_EQ(errorNumber([] { value(Variant{1e9}, "dd.mm.yyyy"); }), errors::overflow);
}

TEST_F(ValueFormat, OtherSettingsByArgument)
{
    EXPECT_EQ(value(Variant{"1,234.5"}, "0.00", Regional::named("en-US")), "1234.50");
}

} // namespace
} // namespace tamarok::format
