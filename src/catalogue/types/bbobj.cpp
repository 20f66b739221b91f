#include "types/define_type.h"

namespace tamarok::catalogue::types {
namespace {

// BBOBJ: columns, joins and labels are still to be described.
constexpr ListDescription description{
    .key = "BBOBJ",
    .base = "BB_T_OBJEKTE",
    .label = 26250,
};

} // namespace

constinit const ListType bbobj = defineType<description>();

} // namespace tamarok::catalogue::types
