#include "types/define_type.h"

namespace tamarok::catalogue::types {
namespace {

// BBZV: columns, joins and labels are still to be described.
constexpr ListDescription description{
    .key = "BBZV",
    .base = "BB_AUFTRAG_KOPF",
    .label = 28250,
};

} // namespace

constinit const ListType bbzv = defineType<description>();

} // namespace tamarok::catalogue::types
