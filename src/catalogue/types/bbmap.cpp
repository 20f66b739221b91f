#include "types/define_type.h"

namespace tamarok::catalogue::types {
namespace {

// BBMAP: columns, joins and labels are still to be described.
constexpr ListDescription description{
    .key = "BBMAP",
    .base = "BB_MAP_KOPF",
    .label = 26000,
};

} // namespace

constinit const ListType bbmap = defineType<description>();

} // namespace tamarok::catalogue::types
