#include "types/define_type.h"

namespace tamarok::catalogue::types {
namespace {

// BBFB: columns, joins and labels are still to be described.
constexpr ListDescription description{
    .key = "BBFB",
    .base = "SCH_BELEGE_KOPF",
    .label = 23750,
};

} // namespace

constinit const ListType bbfb = defineType<description>();

} // namespace tamarok::catalogue::types
