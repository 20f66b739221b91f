#include "types/define_type.h"

namespace tamarok::catalogue::types {
namespace {

// BBUN: columns, joins and labels are still to be described.
constexpr ListDescription description{
    .key = "BBUN",
    .base = "BB_TAKL01_KLR",
    .label = 27250,
};

} // namespace

constinit const ListType bbun = defineType<description>();

} // namespace tamarok::catalogue::types
