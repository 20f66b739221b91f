#include "types/define_type.h"

namespace tamarok::catalogue::types {
namespace {

// BBVS: columns, joins and labels are still to be described.
constexpr ListDescription description{
    .key = "BBVS",
    .base = "BB_VERTEILSCHLUSSEL_KOPF",
    .label = 27500,
};

} // namespace

constinit const ListType bbvs = defineType<description>();

} // namespace tamarok::catalogue::types
