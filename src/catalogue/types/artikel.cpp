#include "types/define_type.h"

namespace tamarok::catalogue::types {
namespace {

using enum Aggregate;
using enum Kind;
using enum Applies;

// ARTIKEL: article positions of invoices.
constexpr ListDescription description{
    .key = "ARTIKEL",
    .base = "NN_POSITIONEN",
    .label = 22500,
    .composesSelect = true,
    .valueFilter = ValueFilter::listed,
    .columns =
        {
            {459, 22501, whole, "ROW_NUMBER() OVER(ORDER BY NN_POSITIONEN.NN_ID ASC)", none, "NN_POSITIONEN.NN_ID"},
            {460, 22502, text, "NN_POSITIONEN.NUMMER"},
            {465, 22503, threeDecimals, "NN_POSITIONEN.MENGE", sum},
            {470, 22504, amount, "NN_POSITIONEN.EINHPREIS*NN_POSITIONEN.MENGE*(1-ISNULL(NN_POSITIONEN.RABATT,0)/100)", sum},
            {471, 22505, amount, "{ROW 767}*{ROW 470}/100", sum},
            {767, 22506, twoDecimals, "NN_POSITIONEN.MWST"},
            {769, 22507, amount, "ISNULL((SELECT SUM(NN.EINHPREIS*NN.MENGE*(1-ISNULL(NN.RABATT,0)/100)) from NN_POSITIONEN NN WHERE ISNULL(NN.WILDURS,'') = ISNULL(NN_POSITIONEN.NN_NAME,'')),0) + SUM({ROW 470})", none, "NN_POSITIONEN.NN_NAME"},
            {1017, 22508, text, "(CASE WHEN HEADERRECH.GESPERRT = 1 THEN '{TRUE}' ELSE '{FALSE}' END)"},
        },
    .selectExpressions =
        {
            // The net value per unit of quantity; Null for no quantity.
            {155, always, "{COLUMN?(CASE WHEN ISNULL({COLUMN},0) = 0 THEN NULL ELSE {COLUMN 470}/{COLUMN} END):}"},
            // The share of the net value in percent of the list's total.
            {156, always, "{PERCENT 470}"},
        },
};

} // namespace

constinit const ListType artikel = defineType<description>();

} // namespace tamarok::catalogue::types
