#include "types/define_type.h"

namespace tamarok::catalogue::types {
namespace {

using enum Kind;

// ACL: access levels.
constexpr ListDescription description{
    .key = "ACL",
    .base = "ACCESS_LEVELS",
    .label = 22000,
    .columns =
        {
            {1, 22001, text, "ACCESS_LEVELS.ACCESS_LEVELS"},
            {2, 22002, text, "ACCESS_LEVELS.NAME"},
            {3, 22003, text, "ACCESS_LEVELS.NAME_LANG"},
            {4, 22004, text, "ACCESS_LEVELS.FUNKTIONSBEREICH"},
        },
};

} // namespace

constinit const ListType acl = defineType<description>();

} // namespace tamarok::catalogue::types
