#include "binder.h"
#include "class_tables.h"

#include "tamarok/comm_conv.h"

namespace tamarok::component {

namespace {

using C = Comm_Conv;

// clang-format off
constexpr std::array operations{
    operation<&C::TransDate>(1, "TransDate", "strDate, strDateFormat", "Date text in the format of the database."),
    operation<&C::NoComma>(2, "NoComma", "strVar, strThousantSep_dll", "Number text for SQL, without thousands marks."),
    operation<&C::NoComma3>(3, "NoComma3", "&strVar", "Number text for SQL."),
    operation<&C::NoSpace>(4, "NoSpace", "&strValue", "Text without blanks."),
    operation<&C::AddBrackets>(5, "AddBrackets", "&rObjName", "Name of an object as SQL needs it."),
    operation<&C::AddSpaces>(6, "AddSpaces", "&rstring, &rnumber", "Text moved right by blanks."),
    operation<&C::NationalDate>(7, "NationalDate", "USDate", "Regional date text of month/day/year."),
    operation<&C::USDate>(8, "USDate", "NationalDate, dbAdo", "Date text in the order of option USDATE."),
    operation<&C::USDateA>(9, "USDateA", "NationalDate", "Regional date text as month/day/year."),
    operation<&C::ConvBoolSQLColumnToStr>(10, "ConvBoolSQLColumnToStr", "&TmkVar, strColumn, strLanguage", "Select expression that shows a 0/1 column as words."),
};
// clang-format on
static_assert(slotsAscend(operations));

} // namespace

constinit const ClassInfo commConv{"Comm_Conv", "Conversions between forms and SQL.", operations, makeClass<C>};

} // namespace tamarok::component
