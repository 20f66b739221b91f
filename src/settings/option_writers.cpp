#include "ado/first_row.h"

#include "tamarok/comm_set.h"
#include "tamarok/convert.h"
#include "tamarok/loc_service.h"
#include "tamarok/platform.h"

namespace tamarok {

namespace {

/// Tells the procedure which column of OPTIONEN takes the value.
enum class OptionKind : std::int32_t { Text = 1, Number = 2, Double = 3, Date = 4 };

// Sizes of the procedure's parameters in characters.
constexpr std::int32_t nameSize = 30;
constexpr std::int32_t valueSize = 50;
constexpr std::int32_t textValueSize = 100;

/// Calls the procedure tmk_OPTIONEN_INS, which inserts or updates one property.
/// @param value  the value as text; "" for no value
void insertOption(const TmkVar& session, std::string_view property, OptionKind kind, std::string value)
{
    using ado::DataType;
    using ado::ParameterDirection;

    ado::Command command;
    const std::int32_t size = kind == OptionKind::Text ? textValueSize : valueSize;
    auto& parameters = command.Parameters();
    parameters.push_back(command.CreateParameter("", DataType::VarChar, ParameterDirection::Input, nameSize, property));
    parameters.push_back(
        command.CreateParameter("", DataType::BigInt, ParameterDirection::Input, 0, static_cast<std::int32_t>(kind)));
    parameters.push_back(
        command.CreateParameter("", DataType::VarChar, ParameterDirection::Input, size, std::move(value)));
    Platform::locService()->RunProcedure(session, "tmk_OPTIONEN_INS", command);
}

} // namespace

void Comm_Set::SetOptionenNumber(const TmkVar& tmkVar, std::string_view property, const Variant& value) const
{
    insertOption(tmkVar, property, OptionKind::Number, ado::fieldText(value));
}

void Comm_Set::SetOptionenDouble(const TmkVar& tmkVar, std::string_view property, double value) const
{
    insertOption(tmkVar, property, OptionKind::Double, convert::toSqlNumber(value, Platform::current().regional));
}

void Comm_Set::SetOptionenText(const TmkVar& tmkVar, std::string_view property, const Variant& value) const
{
    insertOption(tmkVar, property, OptionKind::Text, ado::fieldText(value));
}

void Comm_Set::SetOptionenDate(const TmkVar& tmkVar, std::string_view property, const Variant& value) const
{
    // Required by the contract: the text is the regional short date, not that of TransDate. Do not correct.
    insertOption(tmkVar, property, OptionKind::Date, ado::fieldText(value));
}

} // namespace tamarok
