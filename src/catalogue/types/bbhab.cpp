#include "types/define_type.h"

namespace tamarok::catalogue::types {
namespace {

// BBHAB: columns, joins and labels are still to be described.
constexpr ListDescription description{
    .key = "BBHAB",
    .base = "BB_HAB_KOPF",
    .label = 24250,
};

} // namespace

constinit const ListType bbhab = defineType<description>();

} // namespace tamarok::catalogue::types
