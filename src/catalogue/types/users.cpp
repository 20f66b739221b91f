#include "types/define_type.h"

namespace tamarok::catalogue::types {
namespace {

using enum Kind;

// USERS: a row is a user of the application. The flags are numbered properties without names of their own; B055 lends
// the user's rights to the deputy. No join multiplies rows.
constexpr ListDescription description{
    .key = "USERS",
    .base = "USERS",
    .label = 31250,
    .columns =
        {
            {1, 31251, whole, "(CASE WHEN B001 = 1 THEN 1 ELSE 0 END)"},
            {2, 31252, whole, "(CASE WHEN B002 = 1 THEN 1 ELSE 0 END)"},
            {3, 31253, whole, "(CASE WHEN B003 = 1 THEN 1 ELSE 0 END)"},
            {4, 31254, whole, "(CASE WHEN B004 = 1 THEN 1 ELSE 0 END)"},
            {5, 31255, whole, "(CASE WHEN B005 = 1 THEN 1 ELSE 0 END)"},
            {6, 31256, whole, "(CASE WHEN B006 = 1 THEN 1 ELSE 0 END)"},
            {7, 31257, whole, "(CASE WHEN B007 = 1 THEN 1 ELSE 0 END)"},
            {8, 31258, whole, "(CASE WHEN B008 = 1 THEN 1 ELSE 0 END)"},
            {9, 31259, whole, "(CASE WHEN B009 = 1 THEN 1 ELSE 0 END)"},
            {10, 31260, whole, "(CASE WHEN B010 = 1 THEN 1 ELSE 0 END)"},
            {11, 31261, whole, "(CASE WHEN B011 = 1 THEN 1 ELSE 0 END)"},
            {12, 31262, whole, "(CASE WHEN B012 = 1 THEN 1 ELSE 0 END)"},
            {13, 31263, whole, "(CASE WHEN B013 = 1 THEN 1 ELSE 0 END)"},
            {14, 31264, whole, "(CASE WHEN B014 = 1 THEN 1 ELSE 0 END)"},
            {15, 31265, whole, "(CASE WHEN B015 = 1 THEN 1 ELSE 0 END)"},
            {16, 31266, whole, "(CASE WHEN B016 = 1 THEN 1 ELSE 0 END)"},
            {17, 31267, whole, "(CASE WHEN B017 = 1 THEN 1 ELSE 0 END)"},
            {18, 31268, whole, "(CASE WHEN B018 = 1 THEN 1 ELSE 0 END)"},
            {19, 31269, whole, "(CASE WHEN B019 = 1 THEN 1 ELSE 0 END)"},
            {20, 31270, whole, "(CASE WHEN B020 = 1 THEN 1 ELSE 0 END)"},
            {21, 31271, whole, "(CASE WHEN B021 = 1 THEN 1 ELSE 0 END)"},
            {22, 31272, whole, "(CASE WHEN B022 = 1 THEN 1 ELSE 0 END)"},
            {23, 31273, whole, "(CASE WHEN B023 = 1 THEN 1 ELSE 0 END)"},
            {24, 31274, whole, "(CASE WHEN B024 = 1 THEN 1 ELSE 0 END)"},
            {25, 31275, whole, "(CASE WHEN B025 = 1 THEN 1 ELSE 0 END)"},
            {26, 31276, whole, "(CASE WHEN B026 = 1 THEN 1 ELSE 0 END)"},
            {27, 31277, whole, "(CASE WHEN B027 = 1 THEN 1 ELSE 0 END)"},
            {28, 31278, whole, "(CASE WHEN B028 = 1 THEN 1 ELSE 0 END)"},
            {29, 31279, whole, "(CASE WHEN B029 = 1 THEN 1 ELSE 0 END)"},
            {30, 31280, whole, "(CASE WHEN B030 = 1 THEN 1 ELSE 0 END)"},
            {31, 31281, whole, "(CASE WHEN B031 = 1 THEN 1 ELSE 0 END)"},
            {32, 31282, whole, "(CASE WHEN B032 = 1 THEN 1 ELSE 0 END)"},
            {33, 31283, whole, "(CASE WHEN B033 = 1 THEN 1 ELSE 0 END)"},
            {34, 31284, whole, "(CASE WHEN B034 = 1 THEN 1 ELSE 0 END)"},
            {35, 31285, whole, "(CASE WHEN B035 = 1 THEN 1 ELSE 0 END)"},
            {36, 31286, whole, "(CASE WHEN B036 = 1 THEN 1 ELSE 0 END)"},
            {37, 31287, whole, "(CASE WHEN B037 = 1 THEN 1 ELSE 0 END)"},
            {38, 31288, whole, "(CASE WHEN B038 = 1 THEN 1 ELSE 0 END)"},
            {39, 31289, whole, "(CASE WHEN B039 = 1 THEN 1 ELSE 0 END)"},
            {40, 31290, whole, "(CASE WHEN B040 = 1 THEN 1 ELSE 0 END)"},
            {41, 31291, whole, "(CASE WHEN B041 = 1 THEN 1 ELSE 0 END)"},
            {42, 31292, whole, "(CASE WHEN B042 = 1 THEN 1 ELSE 0 END)"},
            {43, 31293, whole, "(CASE WHEN B043 = 1 THEN 1 ELSE 0 END)"},
            {44, 31294, whole, "(CASE WHEN B044 = 1 THEN 1 ELSE 0 END)"},
            {45, 31295, whole, "(CASE WHEN B045 = 1 THEN 1 ELSE 0 END)"},
            {46, 31296, whole, "(CASE WHEN B046 = 1 THEN 1 ELSE 0 END)"},
            {47, 31297, whole, "(CASE WHEN B047 = 1 THEN 1 ELSE 0 END)"},
            {48, 31298, whole, "(CASE WHEN B048 = 1 THEN 1 ELSE 0 END)"},
            {49, 31299, whole, "(CASE WHEN B049 = 1 THEN 1 ELSE 0 END)"},
            {50, 31300, whole, "(CASE WHEN B050 = 1 THEN 1 ELSE 0 END)"},
            {51, 31301, whole, "(CASE WHEN B051 = 1 THEN 1 ELSE 0 END)"},
            {52, 31302, whole, "(CASE WHEN B052 = 1 THEN 1 ELSE 0 END)"},
            {53, 31303, whole, "(CASE WHEN B053 = 1 THEN 1 ELSE 0 END)"},
            {54, 31304, whole, "(CASE WHEN B054 = 1 THEN 1 ELSE 0 END)"},
            {55, 31305, whole, "(CASE WHEN B055 = 1 THEN 1 ELSE 0 END)"},
            {56, 31306, whole, "(CASE WHEN B056 = 1 THEN 1 ELSE 0 END)"},
            {57, 31307, whole, "(CASE WHEN B057 = 1 THEN 1 ELSE 0 END)"},
            {58, 31308, whole, "(CASE WHEN B058 = 1 THEN 1 ELSE 0 END)"},
            {59, 31309, whole, "(CASE WHEN B059 = 1 THEN 1 ELSE 0 END)"},
            {60, 31310, whole, "(CASE WHEN B060 = 1 THEN 1 ELSE 0 END)"},
            {1000, 31311, text, "USERS.NAME"},
            {1001, 31312, text, "USERS.LONGNAME"},
        },
    .joins =
        {
            {"1-60", "", " LEFT JOIN USERS_PROPERTY ON USERS_PROPERTY.ID_USERS = USERS.ID"},
        },
    .choices =
        {
            {"USERS", "1000-1001, 1-60"},
        },
};

} // namespace

constinit const ListType users = defineType<description>();

} // namespace tamarok::catalogue::types
