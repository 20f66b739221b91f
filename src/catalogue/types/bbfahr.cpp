#include "types/define_type.h"

namespace tamarok::catalogue::types {
namespace {

// BBFAHR: columns, joins and labels are still to be described.
constexpr ListDescription description{
    .key = "BBFAHR",
    .base = "BB_FAHRTENBUCH_KOPF",
    .label = 23250,
};

} // namespace

constinit const ListType bbfahr = defineType<description>();

} // namespace tamarok::catalogue::types
