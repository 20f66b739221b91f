#include "types/define_type.h"

namespace tamarok::catalogue::types {
namespace {

// MVLOSE: columns, joins and labels are still to be described.
constexpr ListDescription description{
    .key = "MVLOSE",
    .base = "BB_MV_VERKAUFSZIEL",
    .label = 29500,
};

} // namespace

constinit const ListType mvlose = defineType<description>();

} // namespace tamarok::catalogue::types
