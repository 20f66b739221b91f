#include "ado/first_row.h"
#include "dialect/sql_template.h"

#include "tamarok/comm_get.h"
#include "tamarok/comm_set.h"
#include "tamarok/comm_sql.h"
#include "tamarok/convert.h"
#include "tamarok/platform.h"
#include "tamarok/text.h"

namespace tamarok {

namespace {

// Required by the contract: numbers are found without regard to the case of the property's name, texts and
// dates under the exact name alone. Do not correct.

std::string selectExactOption(std::string_view column, std::string_view property)
{
    return std::string{"SELECT "}.append(column).append(" FROM OPTIONEN WHERE PROPERTY_ID = '").append(property) + "'";
}

/// @param property  the name in upper case
std::string selectOptionAnyCase(std::string_view column, std::string_view property)
{
    return std::string{"SELECT "}
               .append(column)
               .append(" FROM OPTIONEN WHERE UPPER(PROPERTY_ID) = '")
               .append(property) +
           "'";
}

/// The date of a property without a row or value.
Date defaultDate(const TmkVar& session, std::string_view property)
{
    return text::toUpper(text::trim(property)) == "DATE_TO" ? Platform::today() : session.DateFromDefault;
}

} // namespace

std::int32_t Comm_Get::GetOptionenNumber(const TmkVar& tmkVar, std::string_view property) const
{
    const std::string name = text::toUpper(property);
    const auto value = ado::readFirstValue(tmkVar.db_ADO, selectOptionAnyCase("NUMBER_VALUE", name));
    // Required by the contract: this one property gets no row, if its name is given in upper case. Do not correct.
    if (!value && property != "DBCURSORLOCATION") {
        Comm_Set{}.SetOptionenNumber(tmkVar, name, std::int16_t{0});
    }
    return value && !value->isNull() ? convert::toLong(*value) : 0;
}

double Comm_Get::GetOptionenDouble(const TmkVar& tmkVar, std::string_view property) const
{
    const std::string name = text::toUpper(property);
    const std::string column = dialect::fill("{ISNULL}(DOUBLE_VALUE,0)", dialect::of(tmkVar));
    const auto value = ado::readFirstValue(tmkVar.db_ADO, selectOptionAnyCase(column, name));
    if (!value) {
        Comm_Set{}.SetOptionenDouble(tmkVar, name, 0.0);
    }
    return value ? convert::toDouble(*value) : 0.0;
}

std::string Comm_Get::GetOptionenText(const TmkVar& tmkVar, std::string_view property) const
{
    const auto value = ado::readFirstValue(tmkVar.db_ADO, selectExactOption("TEXT_VALUE", property));
    // Required by the contract: a miss writes an empty text under the upper-case name. Reading "abc" thus clears the
    // text of ABC. Do not correct.
    if (!value) {
        Comm_Set{}.SetOptionenText(tmkVar, text::toUpper(property), "");
    }
    return value ? ado::fieldText(*value) : std::string{};
}

Date Comm_Get::GetOptionenDate(const TmkVar& tmkVar, std::string_view property) const
{
    const Date byDefault = defaultDate(tmkVar, property);
    const auto value = ado::readFirstValue(tmkVar.db_ADO, selectExactOption("DATE_VALUE", property));
    // Required by the contract: a date's row gets the name as given, the others' the name in upper case. Do
    // not correct.
    if (!value) {
        Comm_Set{}.SetOptionenDate(tmkVar, property, "");
    }
    return value && !value->isNull() ? convert::toDate(*value) : byDefault;
}

std::string Comm_Get::GetKonfNumber(const ado::ConnectionRef& dbAdo, std::string_view property,
                                    std::int16_t intDefault) const
{
    const std::string name = text::toUpper(property);
    const auto value = ado::readFirstValue(
        dbAdo,
        "SELECT NUMBER_VALUE FROM FORMS_CONFIG WHERE FORM_ID = 'F_STAMMEINKONF' AND PROPERTY_ID = '" + name + "'",
        ado::LockType::Unspecified);
    if (value) {
        return convert::toText(*value);
    }
    std::string number = convert::toText(Variant{intDefault});
    ado::require(dbAdo).Execute(
        "INSERT INTO FORMS_CONFIG (FORM_ID, PROPERTY_ID, NUMBER_VALUE) VALUES ('F_STAMMEINKONF', '" + name + "'," +
        number + ")");
    return number;
}

std::int16_t Comm_SQL::OPTIONEN_glbModel(const TmkVar& tmkVar) const
{
    constexpr std::string_view sqlTemplate =
        "SELECT * FROM (SELECT {ISNULL}((SELECT {ORACLE?:TOP 1 }NUMBER_VALUE FROM OPTIONEN WHERE PROPERTY_ID = "
        "'CHANGE_MODELS'{ORACLE?  AND rownum=1:}),1) AS NUM_VALUE{ORACLE? FROM DUAL:}) A";

    // The statement always gives a row.
    Variant value;
    ado::readExisting(tmkVar.db_ADO, dialect::fill(sqlTemplate, dialect::of(tmkVar)),
                      [&](const ado::FieldCollection& fields) { value = fields.Item("NUM_VALUE").Value(); });
    return convert::toInteger(value);
}

} // namespace tamarok
