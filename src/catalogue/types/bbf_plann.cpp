#include "types/define_type.h"

namespace tamarok::catalogue::types {
namespace {

// BBF_PLANN: planned work orders. Columns, joins and labels are still to be described.
constexpr ListDescription description{
    .key = "BBF_PLANN",
    .base = "ARBEITSAUFTRAG_KOPF_PLANN",
    .label = 23000,
    .valueFilter = ValueFilter::unchecked,
};

} // namespace

constinit const ListType bbf_plann = defineType<description>();

} // namespace tamarok::catalogue::types
