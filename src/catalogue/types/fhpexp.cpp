#include "types/define_type.h"

namespace tamarok::catalogue::types {
namespace {

// FHPEXP: columns, joins and labels are still to be described.
constexpr ListDescription description{
    .key = "FHPEXP",
    .base = "FHP_IMPORT",
    .label = 28750,
};

} // namespace

constinit const ListType fhpexp = defineType<description>();

} // namespace tamarok::catalogue::types
