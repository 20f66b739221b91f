#include <gtest/gtest.h>

#include "support/surroundings.h"

#include "tamarok/comm_set.h"

namespace tamarok {
namespace {

using test::Surroundings;

/// The one procedure call, its parameters checked for names, types and sizes.
std::vector<Variant> writtenValues(const Surroundings& with, std::int32_t valueSize)
{
    EXPECT_EQ(with.loc.procedures.size(), 1U);
    const auto& call = with.loc.procedures.at(0);
    EXPECT_EQ(call.name, "tmk_OPTIONEN_INS");
    EXPECT_EQ(call.parameters.size(), 3U);
    EXPECT_EQ(call.parameters.at(0).type, ado::DataType::VarChar);
    EXPECT_EQ(call.parameters.at(0).size, 30);
    EXPECT_EQ(call.parameters.at(1).type, ado::DataType::BigInt);
    EXPECT_EQ(call.parameters.at(2).type, ado::DataType::VarChar);
    EXPECT_EQ(call.parameters.at(2).size, valueSize);
    std::vector<Variant> values;
    for (const ado::Parameter& parameter : call.parameters) {
        EXPECT_EQ(parameter.name, "");
        EXPECT_EQ(parameter.direction, ado::ParameterDirection::Input);
        values.push_back(parameter.value);
    }
    return values;
}

std::vector<Variant> written(std::string_view property, std::int32_t kind, std::string_view value)
{
    return {property, kind, value};
}

struct ValueCase {
    const char* locale;
    Variant value;
    const char* text;
};

TEST(OptionWriters, NumberGoesAsTextAndNullAsNoValue)
{
    for (const ValueCase& c :
         {ValueCase{"de-AT", std::int32_t{42}, "42"}, ValueCase{"de-AT", Null{}, ""}, ValueCase{"de-AT", Variant{}, ""},
          ValueCase{"de-AT", 1.5, "1,5"}, ValueCase{"en-US", 1.5, "1.5"}}) {
        const Surroundings with{c.locale};
        Comm_Set{}.SetOptionenNumber(with.session, "abc", c.value);
        EXPECT_EQ(writtenValues(with, 50), written("abc", 2, c.text));
    }
}

TEST(OptionWriters, DoubleHasAPointUnderEveryLocale)
{
    for (const char* locale : {"de-AT", "en-US", "fr-FR"}) {
        const Surroundings with{locale};
        Comm_Set{}.SetOptionenDouble(with.session, "Abc", 1234.5);
        EXPECT_EQ(writtenValues(with, 50), written("Abc", 3, "1234.5")) << locale;
    }
}

TEST(OptionWriters, TextHasRoomForAHundredCharacters)
{
    for (const ValueCase& c : {ValueCase{"de-AT", "Höhe", "Höhe"}, ValueCase{"de-AT", Null{}, ""},
                               ValueCase{"de-AT", true, "Wahr"}, ValueCase{"en-US", true, "True"}}) {
        const Surroundings with{c.locale};
        Comm_Set{}.SetOptionenText(with.session, "ABC", c.value);
        EXPECT_EQ(writtenValues(with, 100), written("ABC", 1, c.text));
    }
}

TEST(OptionWriters, DateGoesInTheRegionalShortForm)
{
    const Date day = makeDate(2024, 5, 7);
    for (const ValueCase& c : {ValueCase{"de-AT", day, "07.05.2024"}, ValueCase{"en-US", day, "5/7/2024"},
                               ValueCase{"de-AT", Null{}, ""}, ValueCase{"de-AT", "morgen", "morgen"}}) {
        const Surroundings with{c.locale};
        Comm_Set{}.SetOptionenDate(with.session, "ABC", c.value);
        EXPECT_EQ(writtenValues(with, 50), written("ABC", 4, c.text));
    }
}

TEST(OptionWriters, NothingIsReadOrExecuted)
{
    const Surroundings with;
    Comm_Set{}.SetOptionenText(with.session, "ABC", "x");
    EXPECT_TRUE(with.database.opened.empty());
    EXPECT_TRUE(with.database.executed.empty());
    EXPECT_EQ(with.loc.services, 1);
}

} // namespace
} // namespace tamarok
