#include "types/define_type.h"

namespace tamarok::catalogue::types {
namespace {

// BBTALK: columns, joins and labels are still to be described.
constexpr ListDescription description{
    .key = "BBTALK",
    .base = "BB_TAKL01_KLR",
    .label = 27000,
};

} // namespace

constinit const ListType bbtalk = defineType<description>();

} // namespace tamarok::catalogue::types
