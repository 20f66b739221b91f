#include "types/define_type.h"

namespace tamarok::catalogue::types {
namespace {

// BBWILD: columns, joins and labels are still to be described.
constexpr ListDescription description{
    .key = "BBWILD",
    .base = "BB_WILDURSPRUNGS",
    .label = 28000,
};

} // namespace

constinit const ListType bbwild = defineType<description>();

} // namespace tamarok::catalogue::types
