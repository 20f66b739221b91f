#include "types/define_type.h"

namespace tamarok::catalogue::types {
namespace {

// RJ: the invoice journal. Columns, joins and labels are still to be described.
constexpr ListDescription description{
    .key = "RJ",
    .base = "HEADERRECH",
    .label = 30250,
    .valueFilter = ValueFilter::none,
};

} // namespace

constinit const ListType rj = defineType<description>();

} // namespace tamarok::catalogue::types
