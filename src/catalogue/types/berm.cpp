#include "types/define_type.h"

namespace tamarok::catalogue::types {
namespace {

// BERM: columns, joins and labels are still to be described.
constexpr ListDescription description{
    .key = "BERM",
    .base = "BEREITSTELLUNG_KOPF",
    .label = 28500,
};

} // namespace

constinit const ListType berm = defineType<description>();

} // namespace tamarok::catalogue::types
