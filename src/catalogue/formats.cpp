#include "column_kind.h"
#include "list_types.h"

#include "tamarok/comm_csel.h"
#include "tamarok/comm_get.h"
#include "tamarok/text.h"

// The display formats of columns.

namespace tamarok {

using catalogue::Column;
using catalogue::deductionList;
using catalogue::Kind;
using catalogue::ListType;
using catalogue::ruleOf;

namespace {

/// The list of machine books has a second key, by which forms ask for its formats and nothing else.
constexpr std::string_view machineBookKey = "MBUCH_SCH";

const ListType* findFormatType(std::string_view key)
{
    return text::equalsNoCase(key, machineBookKey) ? catalogue::findListType("MSCH") : catalogue::findListType(key);
}

/// "0." and as many zeros as the option KUBATURPLACE says, two for 0.
std::string quantityFormat(const TmkVar& session)
{
    const std::int32_t places = Comm_Get{}.GetOptionenNumber(session, "KUBATURPLACE");
    return "0." + std::string(static_cast<std::size_t>(places > 0 ? places : places == 0 ? 2 : 0), '0');
}

} // namespace

std::string Comm_CSel::GetFormat(std::string_view Typ, std::int16_t ID, const TmkVar& tmkVar) const
{
    const ListType* type = findFormatType(Typ);
    if (type == nullptr) return {};
    const Column* column = type->column(ID);
    // Required by the contract: a column that the log list does not have is shown as a whole number.
    if (column == nullptr) return type == &catalogue::logList() ? std::string{ruleOf(Kind::whole).format} : "";
    if (column->kind == Kind::quantity) return quantityFormat(tmkVar);
    return std::string{ruleOf(column->kind).format};
}

std::string Comm_CSel::GetFormatExcel(std::string_view Typ, std::int16_t ID, const TmkVar& tmkVar) const
{
    std::string format = ID == 0 ? std::string{} : GetFormat(Typ, ID, tmkVar);
    if (format.empty()) return "@";
    return format == catalogue::dayFormat ? "d/m/yyyy" : format;
}

std::string Comm_CSel::GetFormatAbs(std::int16_t ID) const
{
    const Column* column = deductionList().column(ID);
    return column == nullptr ? std::string{} : std::string{ruleOf(column->kind).format};
}

} // namespace tamarok
