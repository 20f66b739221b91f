#include "types/define_type.h"

namespace tamarok::catalogue::types {
namespace {

// BBPLAN: columns, joins and labels are still to be described.
constexpr ListDescription description{
    .key = "BBPLAN",
    .base = "BB_PLAN_KOPF",
    .label = 26500,
};

} // namespace

constinit const ListType bbplan = defineType<description>();

} // namespace tamarok::catalogue::types
