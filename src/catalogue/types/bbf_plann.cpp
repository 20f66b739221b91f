#include "types/bbf_rows.h"
#include "types/define_type.h"

namespace tamarok::catalogue::types {
namespace {

// BBF_PLANN: planned work orders, one row per head.
constexpr ListDescription description{
    .key = "BBF_PLANN",
    .base = "ARBEITSAUFTRAG_KOPF_PLANN",
    .label = 23000,
    .valueFilter = ValueFilter::unchecked,
    .columns = bbf_rows::columns,
    .joins = bbf_rows::joins,
    .choices =
        {
            {"BBF_PLANN", "1, 2, 82, 23, 28, 24, 9, 7, 4, 3, 5, 6, 8, 11, 12, 10, 14, 19, 15-18, 20, 22, 25-27, 29, 30, 44-47, 64, 74, 32, 31, 38, 33, 35, 34, 49, 36, 37, 42, 39, 41, 40, 43, 51-60"},
            {"BBF_PLANN", "48, 65, 80, 81, 66, 61, 67, 68, 70-72, 62, 63, 75-77, 83-86"},
            {"BBF_PLANN", "78, 79", "SACHSEN"},
        },
};

} // namespace

constinit const ListType bbf_plann = defineType<description>();

} // namespace tamarok::catalogue::types
