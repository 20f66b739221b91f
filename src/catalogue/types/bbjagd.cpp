#include "types/define_type.h"

namespace tamarok::catalogue::types {
namespace {

// BBJAGD: columns, joins and labels are still to be described.
constexpr ListDescription description{
    .key = "BBJAGD",
    .base = "BB_ABSCHUSSPLAN_KOPF",
    .label = 24750,
};

} // namespace

constinit const ListType bbjagd = defineType<description>();

} // namespace tamarok::catalogue::types
