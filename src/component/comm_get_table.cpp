#include "binder.h"
#include "class_tables.h"

#include "tamarok/comm_get.h"

namespace tamarok::component {

namespace {

using C = Comm_Get;

// clang-format off
constexpr std::array operations{
    operation<&C::Get_String>(1, "Get_String", "value, [NoSpaces], [NoTrim]", "Text of a value; one blank or nothing for Null."),
    operation<&C::Get_Number>(2, "Get_Number", "value", "Number text of a value, with a point; one blank for Null."),
    operation<&C::Get_Number_N>(3, "Get_Number_N", "value", "Number of a value; 0 for Null."),
    operation<&C::Get_Date_N>(4, "Get_Date_N", "value", "Date of a value; Null is an error."),
    operation<&C::Get_Datum>(5, "Get_Datum", "value", "Date of a value; today for Null."),
    operation<&C::Get_Val>(6, "Get_Val", "value", "Text of a value as it stands; empty for Null."),
    operation<&C::Get_Key>(7, "Get_Key", "strValue", "Number part of a list key."),
    operation<&C::Get_Text>(8, "Get_Text", "column, tmpRecordSet", "Text of a column of a recordset's row."),
    operation<&C::Get_RelatedText>(9, "Get_RelatedText", "column, strSQL, primaryRS, db_ADO_dll", "Text that a key in a recordset's row stands for."),
    operation<&C::Get_FieldValue>(10, "Get_FieldValue", "&TmkVar, column, table, sqlWhere", "Text of a column of a table's first row."),
    operation<&C::Get_FieldValueN>(11, "Get_FieldValueN", "&TmkVar, column, table, sqlWhere", "Number of a column of a table's first row."),
    operation<&C::Get_FieldSize>(12, "Get_FieldSize", "table, column, &TmkVar", "Number of characters that a column takes."),
    operation<&C::GetColName>(13, "GetColName", "strField, &TmkVar", "Label of a field of a master-data table."),
    operation<&C::GetOptionenNumber>(14, "GetOptionenNumber", "&TmkVar, property", "Whole number of an option; 0 by default."),
    operation<&C::GetOptionenDouble>(15, "GetOptionenDouble", "&TmkVar, property", "Number of an option; 0 by default."),
    operation<&C::GetOptionenText>(16, "GetOptionenText", "&TmkVar, property", "Text of an option; empty by default."),
    operation<&C::GetOptionenDate>(17, "GetOptionenDate", "&TmkVar, property", "Date of an option, with a default of its own."),
    operation<&C::GetCalculationRinden>(18, "GetCalculationRinden", "rinden, dbAdo", "Whether the bark of a bark key is computed."),
    operation<&C::GetCalculationSTKL>(19, "GetCalculationSTKL", "txtHS, dbAdo", "Whether the strength class of an assortment is not computed."),
    operation<&C::GetCalculationSTKL_ID>(20, "GetCalculationSTKL_ID", "txtHS, dbAdo", "Keys of the strength classes that an assortment allows."),
    operation<&C::GetHolzTabValue>(21, "GetHolzTabValue", "&TmkVar, strObject, strField, intDsart, strHa, strHS, strMenge, strGkl, strStkl, bolOnlyHS, strRindenkennz, dLange", "Conversion factor of a measured line."),
    operation<&C::OnlyNumbers>(22, "OnlyNumbers", "&KeyAscii, blnDecSep, &ActiveControl, bolNegativ", "Lets only number keys pass."),
    operation<&C::OnlyNumbersLostFocus>(23, "OnlyNumbersLostFocus", "&ActiveControl, [&strFormat]", "Puts a left number field in order."),
    operation<&C::OnlyNumbersKeyPress>(24, "OnlyNumbersKeyPress", "&KeyAscii, &ActiveControl, &strFormat", "Lets only keys pass that a number pattern has room for."),
    operation<&C::OnlyDate>(25, "OnlyDate", "KeyAscii, &ActiveControl", "Lets only date keys pass."),
    operation<&C::GetKonfNumber>(26, "GetKonfNumber", "&dbAdo, property, intDefault", "Setting of the master-data form as text."),
    operation<&C::getSatzLohnerfassung>(27, "getSatzLohnerfassung", "ID_Lohnarten, &Jahr, &monat, &ID_Personal, &ID_Maschinenbuch", "Statement for the unit and rate of a wage type in a month."),
    operation<&C::GetStandardModel>(28, "GetStandardModel", "&TmkVar, strModelRelation, NotWhere", "Id of the default model of a relation; 0 for none."),
    operation<&C::Get_Print_Name>(29, "Get_Print_Name", "&TmkVar, strListe", "Name of a report."),
    operation<&C::GetNewNumber>(30, "GetNewNumber", "SpecialType, &TmkVar, strSQL", "Next number of a series."),
};
// clang-format on
static_assert(slotsAscend(operations));

} // namespace

constinit const ClassInfo commGet{"Comm_Get", "Reading of values and options.", operations, makeClass<C>};

} // namespace tamarok::component
