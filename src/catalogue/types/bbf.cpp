#include "types/bbf_rows.h"
#include "types/define_type.h"

namespace tamarok::catalogue::types {
namespace {

// BBF: work orders, one row per head.
constexpr ListDescription description{
    .key = "BBF",
    .base = "ARBEITSAUFTRAG_KOPF",
    .label = 22750,
    .valueFilter = ValueFilter::unchecked,
    .columns = bbf_rows::columns,
    .joins = bbf_rows::joins,
};

} // namespace

constinit const ListType bbf = defineType<description>();

} // namespace tamarok::catalogue::types
