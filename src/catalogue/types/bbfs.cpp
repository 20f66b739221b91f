#include "types/define_type.h"

namespace tamarok::catalogue::types {
namespace {

// BBFS: columns, joins and labels are still to be described.
constexpr ListDescription description{
    .key = "BBFS",
    .base = "LOHNERFASSUNG_KOPF",
    .label = 24000,
};

} // namespace

constinit const ListType bbfs = defineType<description>();

} // namespace tamarok::catalogue::types
