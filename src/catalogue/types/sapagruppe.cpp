#include "types/define_type.h"

namespace tamarok::catalogue::types {
namespace {

// SAPAGRUPPE: columns, joins and labels are still to be described.
constexpr ListDescription description{
    .key = "SAPAGRUPPE",
    .base = "PA_GRUPPE",
    .label = 30500,
};

} // namespace

constinit const ListType sapagruppe = defineType<description>();

} // namespace tamarok::catalogue::types
