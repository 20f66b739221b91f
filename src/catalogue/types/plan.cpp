#include "types/define_type.h"

namespace tamarok::catalogue::types {
namespace {

// PLAN: columns, joins and labels are still to be described.
constexpr ListDescription description{
    .key = "PLAN",
    .base = "PLAN_KOPF",
    .label = 30000,
};

} // namespace

constinit const ListType plan = defineType<description>();

} // namespace tamarok::catalogue::types
