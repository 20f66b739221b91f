#include "tamarok/comm_set.h"
#include "tamarok/convert.h"
#include "tamarok/loc_service.h"
#include "tamarok/platform.h"

namespace tamarok {

namespace {

/// The value kinds of tmk_OPTIONEN_INS.
enum class OptionKind : std::int32_t { Text = 1, Number = 2, Double = 3, Date = 4 };

constexpr std::int32_t nameSize = 30;
constexpr std::int32_t valueSize = 50;
constexpr std::int32_t textValueSize = 100;

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

/// The value as a text concatenation takes it: Null is the empty text.
std::string concatenated(const Variant& value)
{
    return value.isNull() ? std::string{} : convert::toText(value);
}

} // namespace

void Comm_Set::SetOptionenNumber(const TmkVar& tmkVar, std::string_view property, const Variant& value) const
{
    insertOption(tmkVar, property, OptionKind::Number, concatenated(value));
}

void Comm_Set::SetOptionenDouble(const TmkVar& tmkVar, std::string_view property, double value) const
{
    insertOption(tmkVar, property, OptionKind::Double, convert::toSqlNumber(value, Platform::current().regional));
}

void Comm_Set::SetOptionenText(const TmkVar& tmkVar, std::string_view property, const Variant& value) const
{
    insertOption(tmkVar, property, OptionKind::Text, concatenated(value));
}

void Comm_Set::SetOptionenDate(const TmkVar& tmkVar, std::string_view property, const Variant& value) const
{
    insertOption(tmkVar, property, OptionKind::Date, concatenated(value));
}

} // namespace tamarok
