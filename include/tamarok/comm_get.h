#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "tamarok/ado.h"
#include "tamarok/date.h"
#include "tamarok/object.h"
#include "tamarok/tmkvar.h"
#include "tamarok/variant.h"

#pragma GCC visibility push(default)

namespace tamarok {

/// Reads values: fields, single values of tables, options of the installation. Filters the input of text
/// boxes. The class has no state.
class Comm_Get {
public:
    // Value readers. They differ in what they return for Null. An object, such as a Field, counts as its default
    // value. Texts convert under the regional settings unless stated otherwise.
    // Errors: 13 for a value that does not convert, 6 outside the range of the type, 91 for an empty object
    // reference, 438 for an object without default value, 3021 and 3704 of a field.

    /// Returns the value as text, without the blanks at both ends. Null gives one blank, so that a list cell
    /// is not empty. The text of an rvalue (`Fields().Item(0).Value()`) is moved, not copied.
    /// @param NoSpaces  Null gives ""
    /// @param NoTrim    keeps the blanks at both ends
    std::string Get_String(Variant value, bool NoSpaces = false, bool NoTrim = false) const;
    /// Returns the number as text with ".", independent of the regional settings; a text must be such a number
    /// too. Null gives one blank.
    std::string Get_Number(const Variant& value) const;
    /// Returns the value as a number; Null gives 0.
    double Get_Number_N(const Variant& value) const;
    /// Returns the value as a date. Error 94 for Null.
    Date Get_Date_N(const Variant& value) const;
    /// Returns the value as a date; Null gives today without time.
    Date Get_Datum(const Variant& value) const;
    /// Returns the value as text with its blanks; Null gives "".
    std::string Get_Val(const Variant& value) const;
    /// Returns the part of a list or tree key after its first "R": "R123" gives "123", "AR7" gives "7". A key
    /// without "R" is returned whole. A key of at most one character gives "".
    std::string Get_Key(std::string_view strValue) const;
    /// Returns a column of the current row as text. Null and blanks give ""; TRUE, WAHR and VRAI in any case
    /// give "TRUE". Errors: 3265 for an unknown column, 3021 without current row, 3704.
    std::string Get_Text(std::string_view column, ado::Recordset& tmpRecordSet) const;

    // Look-ups of one value. Each operation runs one query. Arguments are inserted into the SQL verbatim,
    // without escaping. Errors: 91 without connection, failures of the database.

    /// Returns the text that belongs to a foreign key: appends the value of `column` in the current row of
    /// `primaryRS` to `strSQL` and returns the first column of the first row. Without a row and for Null
    /// returns ""; for a Null key also, without running the query.
    /// @param strSQL  statement that ends where the key must stand, such as "... WHERE ID = "
    std::string Get_RelatedText(std::string_view column, std::string_view strSQL, ado::Recordset& primaryRS,
                                const ado::ConnectionRef& db_ADO_dll) const;
    /// Returns one value as Get_String does: one blank for Null. Returns "" without a row.
    /// @param column    column or expression
    /// @param sqlWhere  condition; an empty text means no condition, blanks are a condition that the database
    ///        refuses. On Oracle `ROWNUM = 1 AND` precedes it, so a condition with OR needs brackets.
    std::string Get_FieldValue(const TmkVar& tmkVar, std::string_view column, std::string_view table,
                               std::string_view sqlWhere) const;
    /// Returns one value as a number, 0 for Null and without a row.
    /// @param sqlWhere  condition as for Get_FieldValue, but blanks mean no condition
    double Get_FieldValueN(const TmkVar& tmkVar, std::string_view column, std::string_view table,
                           std::string_view sqlWhere) const;
    /// Returns the number of characters that a form accepts for a column: the defined size of a text or date
    /// column, 11 for a floating-point column, 0 (no limit) for any other type.
    std::int32_t Get_FieldSize(std::string_view table, std::string_view column, const TmkVar& tmkVar) const;

    /// Returns the label of a field of a master-data table in the session's language: GetColName("GKL_LANG", session)
    /// is the text of label 1177. "" for an unknown field.
    /// @param strField  bare name of the field; the case does not matter. TFIELD and NFIELD take any number.
    /// Errors: 6 for a field number whose label exceeds 16 bits, failures of the database.
    std::string GetColName(std::string_view strField, const TmkVar& tmkVar) const;

    // Input filters. They read and set the properties of the control by name. A refused key becomes 0. Keys 8
    // (Backspace) and 13 (Enter) pass unless stated otherwise. Error 438 for a control without a needed
    // property.

    /// Accepts digits.
    /// @param KeyAscii   the key; set to 0 if it is refused
    /// @param blnDecSep  accepts one decimal separator
    /// @param bolNegativ accepts a minus as first character, and no key before a minus
    /// @return the key, as in `KeyAscii`
    std::int16_t OnlyNumbers(std::int16_t& KeyAscii, bool blnDecSep, Object& ActiveControl, bool bolNegativ) const;
    /// Accepts a key if the text of the box remains a number of the pattern `strFormat`: "0000.00" has room for
    /// four whole digits and two decimals, "-000.0" also accepts a minus.
    ///
    /// - Sets the DataFormat of the box to the pattern.
    /// - "." and "," both become the decimal separator of the machine.
    /// - Inserts "0" before a separator that has no digit before it.
    /// - Backspace does not delete the separator while decimals follow it.
    /// - Deletes the selection before it judges a digit, sign or separator.
    /// - Ignores a control that is no TextBox. A locked box accepts Enter only.
    void OnlyNumbersKeyPress(std::int16_t& KeyAscii, Object& ActiveControl, const std::string& strFormat) const;
    /// Checks the box when the focus leaves it: clears a text that is no number or has more digits than the
    /// pattern, and formats any other by the pattern.
    ///
    /// - A pattern without a leading "-" removes every "-" of the text.
    /// - A pattern without "." cuts the text at its first ".".
    ///
    /// @param strFormat  pattern; "" is replaced by the DataFormat of the box. Does nothing if that is empty too
    /// Errors: 13, and an unchanged text, if removing or cutting leaves no number.
    void OnlyNumbersLostFocus(Object& ActiveControl, std::string& strFormat) const;
    /// Accepts a key of a date typed as two, two and four digits separated by ".". Checks the shape, not the
    /// date: "99.99.9999" passes. A part that is too long already is not limited further.
    /// @return the key, 0 if it is refused
    std::int16_t OnlyDate(std::int16_t KeyAscii, Object& ActiveControl) const;

    // Options, table OPTIONEN. A property without a row has a default value; reading it calls the procedure
    // tmk_OPTIONEN_INS, which makes a row with an empty value. The name is inserted into SQL verbatim. The procedure
    // compares names exactly, so that a miss never touches the row of a name that differs in case or blanks.
    // Errors: 13 for a value that does not convert, 91 without a connection or, where a row is to be made,
    // without a language service, failures of the database.

    /// Returns a whole number; 0 by default and for Null. The case of `property` does not matter.
    /// Required by the contract: no row is made for a property given exactly as "DBCURSORLOCATION".
    /// Error 6 beyond 32 bits.
    std::int32_t GetOptionenNumber(const TmkVar& tmkVar, std::string_view property) const;
    /// Returns a number; 0 by default and for Null. The case of `property` does not matter.
    double GetOptionenDouble(const TmkVar& tmkVar, std::string_view property) const;
    /// Returns a text; "" by default and for Null. `property` is compared as given.
    /// Required by the contract: a miss writes an empty text under the upper-case name, so that reading "abc" clears
    /// the text of ABC.
    std::string GetOptionenText(const TmkVar& tmkVar, std::string_view property) const;
    /// Returns a date. `property` is compared as given. The default, also for Null, is today for "DATE_TO" (with
    /// blanks around it and in any case) and TmkVar::DateFromDefault for any other property.
    Date GetOptionenDate(const TmkVar& tmkVar, std::string_view property) const;

    /// Returns a setting of the form F_STAMMEINKONF as text, from table FORMS_CONFIG. A setting without a row gets
    /// a row with `intDefault`, which is then the result.
    /// @param property  inserted into SQL in upper case
    /// Errors: 94 for a row that holds Null, 91 without a connection, failures of the database.
    std::string GetKonfNumber(const ado::ConnectionRef& dbAdo, std::string_view property,
                              std::int16_t intDefault) const;

    // Look-ups of timber measurement. The keys are inserted into SQL verbatim, and each operation runs at most
    // two queries. Errors: 91 without a connection, failures of the database.

    /// Tells whether the bark of this bark key is computed; false for "" and for an unknown key.
    bool GetCalculationRinden(std::string_view rinden, const ado::ConnectionRef& dbAdo) const;
    /// Tells whether the strength class of this assortment is NOT derived from the diameter; true for "", false for
    /// an unknown or disabled assortment.
    bool GetCalculationSTKL(std::string_view txtHS, const ado::ConnectionRef& dbAdo) const;
    /// Returns the comma list of the STKL.ID that the assortment allows; "" for all, for "" and for an unknown or
    /// disabled assortment.
    std::string GetCalculationSTKL_ID(std::string_view txtHS, const ado::ConnectionRef& dbAdo) const;

    /// Returns a conversion factor of a measured line: that of the first rule of U_FAKT, by ORDERBY, whose
    /// conditions are all Null or hold. If no rule fits and `bolOnlyHS` is set, it is the assortment's own.
    /// @param strObject  a "TextBox", whose number is the result if nothing fits (0 for any other object); or an
    ///        "F_UFakt", whose four factor properties are set while the result stays 0
    /// @param strField   column of the factor: ATO_UFA (absolutely dry weight), LUT_UFA (air-dry weight), RM_UFA
    ///        (stacked m³) or STK100_UFA (hundred pieces)
    /// @param intDsart   measure kind; the texts behind it are codes of master data
    /// @param dLange     length, m; the bounds of a rule are inclusive
    /// Errors: 3265 for an unknown column, failures of the object's properties and of the database.
    double GetHolzTabValue(const TmkVar& tmkVar, const ObjectRef& strObject, std::string_view strField,
                           std::int16_t intDsart, std::string_view strHa, std::string_view strHS,
                           std::string_view strMenge, std::string_view strGkl, std::string_view strStkl, bool bolOnlyHS,
                           std::string_view strRindenkennz, double dLange) const;

    // Wage rates, models, numbers and names of documents. Implementation: src/settings.

    /// Returns a statement that gives the unit (NAME) and the rate (SATZ) of a wage type in a month. The rate comes
    /// from the history of the wage type if that has its own (SLA = 1), otherwise from the machine book, or from the
    /// wage group of the person. For SQL Server only. Runs nothing.
    /// @param Jahr, monat        year and month that count
    /// @param ID_Maschinenbuch   0 for the wage group of `ID_Personal`
    /// Error 6 if `Jahr` * 100 + `monat` exceeds 32 bits.
    std::string getSatzLohnerfassung(std::int32_t ID_Lohnarten, std::int32_t Jahr, std::int32_t monat,
                                     std::int32_t ID_Personal, std::int32_t ID_Maschinenbuch) const;

    /// Returns the id of the default model of a relation: the user's own first, then that of the access level, then the
    /// fixed one. 0 if there is none. On Oracle the database chooses among several.
    /// @param strModelRelation  inserted verbatim; ABSCHLAG, ABSCHLAG1 to ABSCHLAG8 and the same with "_A" have several
    ///                          rows for a model, of which the first counts
    /// @param NotWhere          finds models of any user and access level
    /// Errors: 6 for an access level of the session above 32767, those of the database.
    std::int32_t GetStandardModel(const TmkVar& tmkVar, std::string_view strModelRelation, bool NotWhere) const;

    /// Returns the name of a report in the session's language: "HV 11z  ..." for "HV 11Z".
    /// @param strListe  code of the report; the case counts
    /// An unknown code shows "Error in F_BBFPrint_BB_HV.Get_Print_Name" and gives "".
    std::string Get_Print_Name(const TmkVar& tmkVar, std::string_view strListe) const;

    /// Returns the next free number of a series: the last one counted up as a text, so that it may hold letters, a
    /// prefix or a year. "A99" gives "B00", "2024-009" gives "2024-010", no number gives "1".
    /// Two users who ask at the same time get the same number: nothing is reserved. Any character but digits and the
    /// letters A to Z and a to z is passed over. For the customer ALF the first number of a list, and of a provision
    /// (type 0), is made of the number of the level's forest office and the year, and ends in "01".
    /// @param SpecialType  1: the number of a list; `strSQL` is then the id of an access level, 0 for none
    /// @param strSQL       statement whose first column is the last number
    /// Errors: 13 and 6 for an access level that is no number, those of the database.
    std::string GetNewNumber(std::int16_t SpecialType, const TmkVar& tmkVar, std::string_view strSQL) const;
};

} // namespace tamarok

#pragma GCC visibility pop
