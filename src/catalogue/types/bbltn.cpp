#include "types/define_type.h"

namespace tamarok::catalogue::types {
namespace {

// BBLTN: columns, joins and labels are still to be described.
constexpr ListDescription description{
    .key = "BBLTN",
    .base = "BB_LEISTUNGS_KOPF INNER JOIN #BB_LEISTUNGS_KOPF ON BB_LEISTUNGS_KOPF.ID = #BB_LEISTUNGS_KOPF.ID",
    .label = 25750,
};

} // namespace

constinit const ListType bbltn = defineType<description>();

} // namespace tamarok::catalogue::types
