#include "types/define_type.h"

namespace tamarok::catalogue::types {
namespace {

// BBLAG: columns, joins and labels are still to be described.
constexpr ListDescription description{
    .key = "BBLAG",
    .base = "BB_BELEGE_LAGER",
    .label = 25500,
};

} // namespace

constinit const ListType bblag = defineType<description>();

} // namespace tamarok::catalogue::types
