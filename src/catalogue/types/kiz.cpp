#include "types/define_type.h"

namespace tamarok::catalogue::types {
namespace {

// KIZ: columns, joins and labels are still to be described.
constexpr ListDescription description{
    .key = "KIZ",
    .base = "KLR",
    .label = 29000,
};

} // namespace

constinit const ListType kiz = defineType<description>();

} // namespace tamarok::catalogue::types
