#include "types/define_type.h"

namespace tamarok::catalogue::types {
namespace {

// BBJB: columns, joins and labels are still to be described.
constexpr ListDescription description{
    .key = "BBJB",
    .base = "BB_JAGDBEZIRKE",
    .label = 25000,
};

} // namespace

constinit const ListType bbjb = defineType<description>();

} // namespace tamarok::catalogue::types
