#include "types/define_type.h"

namespace tamarok::catalogue::types {
namespace {

// TRANSPORT: transports. Columns, joins and labels are still to be described.
constexpr ListDescription description{
    .key = "TRANSPORT",
    .base = "TRANSPORTLOGISTIK_KOPF",
    .label = 31000,
};

} // namespace

constinit const ListType transport = defineType<description>();

} // namespace tamarok::catalogue::types
