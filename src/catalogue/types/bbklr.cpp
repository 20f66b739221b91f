#include "types/define_type.h"

namespace tamarok::catalogue::types {
namespace {

// BBKLR: columns, joins and labels are still to be described.
constexpr ListDescription description{
    .key = "BBKLR",
    .base = "BB_BELEGE_KOPF",
    .label = 25250,
};

} // namespace

constinit const ListType bbklr = defineType<description>();

} // namespace tamarok::catalogue::types
