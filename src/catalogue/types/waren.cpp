#include "types/define_type.h"

namespace tamarok::catalogue::types {
namespace {

// WAREN: the catalogue of goods. Columns, joins and labels are still to be described.
constexpr ListDescription description{
    .key = "WAREN",
    .base = "WARENKATALOG",
    .label = 31750,
    .valueFilter = ValueFilter::none,
};

} // namespace

constinit const ListType waren = defineType<description>();

} // namespace tamarok::catalogue::types
