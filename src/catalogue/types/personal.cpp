#include "types/define_type.h"

namespace tamarok::catalogue::types {
namespace {

// PERSONAL: business partners. Columns, joins and labels are still to be described.
constexpr ListDescription description{
    .key = "PERSONAL",
    .base = "PERSONAL",
    .label = 29750,
};

} // namespace

constinit const ListType personal = defineType<description>();

} // namespace tamarok::catalogue::types
