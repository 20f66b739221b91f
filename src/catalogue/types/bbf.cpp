#include "types/define_type.h"

namespace tamarok::catalogue::types {
namespace {

// BBF: work orders. Columns, joins and labels are still to be described.
constexpr ListDescription description{
    .key = "BBF",
    .base = "ARBEITSAUFTRAG_KOPF",
    .label = 22750,
    .valueFilter = ValueFilter::unchecked,
};

} // namespace

constinit const ListType bbf = defineType<description>();

} // namespace tamarok::catalogue::types
