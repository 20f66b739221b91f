#include "types/define_type.h"

namespace tamarok::catalogue::types {
namespace {

// AKAT: columns, joins and labels are still to be described.
constexpr ListDescription description{
    .key = "AKAT",
    .base = "BB_T_AUFTRAGS_PLANUNG",
    .label = 22250,
};

} // namespace

constinit const ListType akat = defineType<description>();

} // namespace tamarok::catalogue::types
