#include "types/define_type.h"

namespace tamarok::catalogue::types {
namespace {

using enum Aggregate;
using enum Kind;

// The deduction list over the temporary table ABSCHLAG_TEMP. It has operations of its own and no key.
constexpr ListDescription description{
    .key = "",
    .base = "ABSCHLAG_TEMP",
    .columns =
        {
            {1, 0, text, "ABSCHLAG_TEMP.STATISTIK"},
            {2, 0, text, "ABSCHLAG_TEMP.BEZEICH"},
            {3, 0, twoDecimals, "ABSCHLAG_TEMP.WERT_TEXT", sum},
            {4, 0, text, "ABSCHLAG_TEMP.R_NAME"},
            {5, 0, twoDecimals, "ABSCHLAG_TEMP.PREIS", sum},
            {31, 0, text, "ABSCHLAG_TEMP.R_KUNDE"},
            {101, 0, text, "ABSCHLAG_TEMP.A1_NAME"},
            {102, 0, text, "ABSCHLAG_TEMP.A2_NAME"},
            {103, 0, text, "ABSCHLAG_TEMP.A3_NAME"},
            {104, 0, text, "ABSCHLAG_TEMP.A4_NAME"},
            {105, 0, text, "ABSCHLAG_TEMP.A5_NAME"},
            {106, 0, text, "ABSCHLAG_TEMP.A6_NAME"},
            {107, 0, text, "ABSCHLAG_TEMP.A7_NAME"},
            {108, 0, text, "ABSCHLAG_TEMP.A8_NAME"},
            {109, 0, text, "ABSCHLAG_TEMP.A1_KUNDE"},
            {110, 0, text, "ABSCHLAG_TEMP.A2_KUNDE"},
            {111, 0, text, "ABSCHLAG_TEMP.A3_KUNDE"},
            {112, 0, text, "ABSCHLAG_TEMP.A4_KUNDE"},
            {113, 0, text, "ABSCHLAG_TEMP.A5_KUNDE"},
            {114, 0, text, "ABSCHLAG_TEMP.A6_KUNDE"},
            {115, 0, text, "ABSCHLAG_TEMP.A7_KUNDE"},
            {116, 0, text, "ABSCHLAG_TEMP.A8_KUNDE"},
        },
};

} // namespace

constinit const ListType deductions = defineType<description>();

} // namespace tamarok::catalogue::types
