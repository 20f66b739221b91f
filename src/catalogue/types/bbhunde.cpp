#include "types/define_type.h"

namespace tamarok::catalogue::types {
namespace {

// BBHUNDE: columns, joins and labels are still to be described.
constexpr ListDescription description{
    .key = "BBHUNDE",
    .base = "BB_JAGDHUNDE",
    .label = 24500,
};

} // namespace

constinit const ListType bbhunde = defineType<description>();

} // namespace tamarok::catalogue::types
