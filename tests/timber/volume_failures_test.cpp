#include <gtest/gtest.h>
#include <string>

#include "support/errors.h"
#include "support/platforms.h"

#include "tamarok/comm_set.h"
#include "tamarok/error.h"

namespace tamarok {
namespace {

using test::expectError;
using test::platformOf;

class VolumeFailures : public ::testing::Test {
protected:
    std::string round(const char* pieces, const char* diameter, const char* length, const char* bark, const char* mode,
                      std::int16_t places = 2) const
    {
        return set.CalculateRundKubatur(pieces, diameter, length, bark, false, mode, false, "0.00", places);
    }

    Comm_Set set;
    PlatformScope scope{platformOf("en-GB")};
};

TEST_F(VolumeFailures, WhatIsNoNumberIsNamedWithItsField)
{
    expectError(errors::typeMismatch, "\"ten\" in field txtStk", [&] { round("ten", "30", "5", "0", "cm"); });
    expectError(errors::typeMismatch, "\"3o\" in field txtDurch", [&] { round("1", "3o", "5", "0", "cm"); });
    expectError(errors::typeMismatch, "\" \" in field txtLange", [&] { round("1", "30", " ", "0", "cm"); });
    expectError(errors::typeMismatch, "\"5%\" in field txtRinde2", [&] { round("1", "30", "5", "5%", "%"); });
    expectError(errors::typeMismatch, "field txtRinde2", [&] { round("1", "30", "5", "x", "cm"); });
    expectError(errors::typeMismatch, "\"x\" in field RM_Tmp", [&] { set.CalculateSchichtKubatur("0.7", "x", "0"); });
    expectError(errors::typeMismatch, "\"x\" in field UFakt_Tmp", [&] { set.CalculateSchichtKubatur("x", "2", "0"); });
    expectError(errors::typeMismatch, "\"x\" in field UFakt_Tmp", [&] { set.CalculateStangKubatur("x", "2", "0"); });
    expectError(errors::typeMismatch, "\"x\" in field Stuck_Tmp", [&] { set.CalculateStangKubatur("2", "x", "0"); });
}

TEST_F(VolumeFailures, ThePiecesAreReadEvenWhereTheyDoNotCount)
{
    expectError(errors::typeMismatch, "txtStk",
                [&] { set.CalculateRundKubatur("x", "30", "5", "0", true, "cm", false, "0.00", 2); });
}

TEST_F(VolumeFailures, PlacesOutOfRangeAreAnInvalidArgument)
{
    expectError(errors::invalidArgument, "-1 decimals", [&] { round("1", "30", "5", "0", "cm", -1); });
    expectError(errors::invalidArgument, "23 decimals", [&] { round("1", "30", "5", "0", "cm", 23); });
    // What is no number comes first.
    expectError(errors::typeMismatch, "txtDurch", [&] { round("1", "x", "5", "0", "cm", -1); });
}

TEST_F(VolumeFailures, OverflowIsOneInEveryStep)
{
    expectError(errors::overflow, "too large", [&] { round("1", "1E200", "5", "0", "cm"); });
    expectError(errors::overflow, "too large", [&] { round("1", "1E200", "5", "0", ""); });
    // The difference of two infinite numbers and an infinite number times nothing are overflows too.
    expectError(errors::overflow, "too large", [&] { round("1", "1E200", "5", "10", "%"); });
    expectError(errors::overflow, "too large", [&] { round("1", "1E200", "0", "0", ""); });
    expectError(errors::overflow, "too large", [&] { round("1E300", "1000", "1E10", "0", ""); });
    // The volume has a place among the doubles; scaled for the rounding it has none, even if no piece counts.
    expectError(errors::overflow, "rounded to 22 decimals", [&] { round("1", "1E145", "1E10", "0", "", 22); });
    expectError(errors::overflow, "rounded to 22 decimals", [&] { round("0", "1E145", "1E10", "0", "", 22); });
    expectError(errors::overflow, "too large", [&] { set.CalculateSchichtKubatur("1E200", "1E200", "0"); });
    expectError(errors::overflow, "too large", [&] { set.CalculateStangKubatur("1E200", "1E200", "0"); });
}

TEST_F(VolumeFailures, ANumberBeyondTheDoublesIsNone)
{
    expectError(errors::typeMismatch, "1E999", [&] { round("1", "1E999", "5", "0", "cm"); });
}

} // namespace
} // namespace tamarok
