#include "types/define_type.h"

namespace tamarok::catalogue::types {
namespace {

// MSCH: columns, joins and labels are still to be described.
constexpr ListDescription description{
    .key = "MSCH",
    .base = "SCH_MASCHINENBUCH",
    .label = 29250,
};

} // namespace

constinit const ListType msch = defineType<description>();

} // namespace tamarok::catalogue::types
