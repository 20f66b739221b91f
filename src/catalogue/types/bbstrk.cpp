#include "types/define_type.h"

namespace tamarok::catalogue::types {
namespace {

// BBSTRK: columns, joins and labels are still to be described.
constexpr ListDescription description{
    .key = "BBSTRK",
    .base = "BB_STRECKE_NIEDER",
    .label = 26750,
};

} // namespace

constinit const ListType bbstrk = defineType<description>();

} // namespace tamarok::catalogue::types
