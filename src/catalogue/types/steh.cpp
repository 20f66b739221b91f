#include "types/define_type.h"

namespace tamarok::catalogue::types {
namespace {

// STEH: columns, joins and labels are still to be described.
constexpr ListDescription description{
    .key = "STEH",
    .base = "STEH_AUFNAHMEPROTOKOLL_KOPF",
    .label = 30750,
};

} // namespace

constinit const ListType steh = defineType<description>();

} // namespace tamarok::catalogue::types
