#include "types/define_type.h"

namespace tamarok::catalogue::types {
namespace {

// BBWAL: columns, joins and labels are still to be described.
constexpr ListDescription description{
    .key = "BBWAL",
    .base = "BB_WALDARBEITERLOHN_KOPF",
    .label = 27750,
};

} // namespace

constinit const ListType bbwal = defineType<description>();

} // namespace tamarok::catalogue::types
