#include "runtime/support.h"

#include "tamarok/convert.h"

namespace tamarok::convert {
namespace {

struct Case {
    double number;
    std::int32_t places;
    double result;
};

TEST(RoundHalfEven, JudgesTheTieOnTheScaledDouble)
{
    const Case table[] = {
        {0.125, 2, 0.12},   {0.375, 2, 0.38},    {2.675, 2, 2.68}, {1.005, 2, 1.0},
        {0.35343, 2, 0.35}, {0.5, 0, 0.0},       {1.5, 0, 2.0},    {2.5, 0, 2.0},
        {-0.5, 0, 0.0},     {-1.5, 0, -2.0},     {-2.5, 0, -2.0},  {-0.125, 2, -0.12},
        {1e300, 8, 1e300},  {123.456, 1, 123.5}, {0.0, 5, 0.0},    {1234.5678, 22, 1234.5678},
    };
    for (const Case& row : table)
        EXPECT_DOUBLE_EQ(roundHalfEven(row.number, row.places), row.result) << row.number << " at " << row.places;
}

TEST(RoundHalfEven, PlacesHaveTheirRange)
{
    EXPECT_EQ(test::errorNumber([] { roundHalfEven(1.0, -1); }), errors::invalidArgument);
    EXPECT_EQ(test::errorNumber([] { roundHalfEven(1.0, 23); }), errors::invalidArgument);
    EXPECT_EQ(test::errorText([] { roundHalfEven(1.0, -1); }),
              "Invalid argument: a number cannot be rounded to -1 decimals.");
}

TEST(RoundHalfEven, AProductThatOverflowsIsAnOverflow)
{
    EXPECT_EQ(test::errorNumber([] { roundHalfEven(1e300, 9); }), errors::overflow);
    EXPECT_EQ(test::errorNumber([] { roundHalfEven(-1e300, 22); }), errors::overflow);
    EXPECT_EQ(test::errorText([] { roundHalfEven(1e300, 22); }),
              "Overflow: a number is too large to be rounded to 22 decimals.");
}

TEST(NearestEven, TakesTheEvenNeighbourOfAHalf)
{
    const std::pair<double, double> table[] = {{0.5, 0.0},
                                               {1.5, 2.0},
                                               {2.5, 2.0},
                                               {-0.5, 0.0},
                                               {-1.5, -2.0},
                                               {-2.5, -2.0},
                                               {0.49999999999999994, 0.0},
                                               {2.4, 2.0},
                                               {2.6, 3.0},
                                               {-2.6, -3.0},
                                               {4503599627370497.5, 4503599627370498.0}};
    for (const auto& [number, result] : table)
        EXPECT_EQ(nearestEven(number), result) << number;
}

} // namespace
} // namespace tamarok::convert
