#include "types/define_type.h"

namespace tamarok::catalogue::types {
namespace {

// BBFAK: columns, joins and labels are still to be described.
constexpr ListDescription description{
    .key = "BBFAK",
    .base = "BB_FAKTURA_KOPF",
    .label = 23500,
};

} // namespace

constinit const ListType bbfak = defineType<description>();

} // namespace tamarok::catalogue::types
