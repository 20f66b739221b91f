#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "tamarok/ado.h"
#include "tamarok/date.h"
#include "tamarok/object.h"
#include "tamarok/tmkvar.h"
#include "tamarok/variant.h"

namespace tamarok {

/// Reading of values: fields, small look-ups, options of the installation, and the filters of input
/// boxes. The class has no state.
class Comm_Get {
public:
    // Value readers. They differ in what they give for Null; choose by the default that is wanted. A
    // value may be an ADODB.Field, whose value then counts. A value that does not convert is Error 13.

    /// The value as text, blanks taken off both ends unless `NoTrim`. Null gives one blank, or "" with
    /// `NoSpaces`. The text of a value that is handed over (`Fields().Item(0).Value()`) is not copied.
    std::string Get_String(Variant value, bool NoSpaces = false, bool NoTrim = false) const;
    /// The number as plain text with "." whatever the regional settings are. Null gives one blank.
    std::string Get_Number(const Variant& value) const;
    /// The value as a number; Null gives 0.
    double Get_Number_N(const Variant& value) const;
    /// The value as a date; Error 94 for Null.
    Date Get_Date_N(const Variant& value) const;
    /// The value as a date; Null gives today.
    Date Get_Datum(const Variant& value) const;
    /// The value as text, untrimmed; Null gives "".
    std::string Get_Val(const Variant& value) const;
    /// What stands behind the first "R" of a list or tree key ("R123" gives "123"); without one the
    /// whole key, and "" for a key of at most one character.
    std::string Get_Key(std::string_view strValue) const;
    /// A column of the current row as text. Null and blanks give "", a spelling of true (TRUE, WAHR,
    /// VRAI in any case) gives "TRUE". Errors: 3265 unknown column, 3021 no current row.
    std::string Get_Text(std::string_view column, ado::Recordset& tmpRecordSet) const;

    // Look-ups of one value by the one read idiom. The texts are pasted as they stand; failures of
    // the database are passed on.

    /// The text behind a foreign key: the value of `column` in the current row of `primaryRS` is put
    /// behind `strSQL`, and the first column of the first row is the result. "" for a Null key (no
    /// statement is sent), for no row, and for Null.
    std::string Get_RelatedText(std::string_view column, std::string_view strSQL, ado::Recordset& primaryRS,
                                const ado::ConnectionRef& db_ADO_dll) const;
    /// One value as Get_String gives it; "" where there is no row.
    /// @param sqlWhere  condition; only "" is none. On Oracle the row limit binds before it.
    std::string Get_FieldValue(const TmkVar& tmkVar, std::string_view column, std::string_view table,
                               std::string_view sqlWhere) const;
    /// One value as a number; 0 for Null and where there is no row. @param sqlWhere blanks are none
    double Get_FieldValueN(const TmkVar& tmkVar, std::string_view column, std::string_view table,
                           std::string_view sqlWhere) const;
    /// How many characters a form lets a person type for a column: a text's or date's defined size, 11
    /// for a float, 0 (no limit) for anything else.
    std::int32_t Get_FieldSize(std::string_view table, std::string_view column, const TmkVar& tmkVar) const;

    // Input filters. They work with the control's run-time properties; a key is refused by setting it
    // to 0. Keys 8 (Backspace) and 13 (Enter) pass unless told otherwise. A control without a needed
    // property fails the call (438).

    /// Lets digits pass, one decimal separator with `blnDecSep`, and a sign in front with
    /// `bolNegativ`. @return the key, which is also written to `KeyAscii`
    std::int16_t OnlyNumbers(std::int16_t& KeyAscii, bool blnDecSep, Object& ActiveControl, bool bolNegativ) const;
    /// Lets pass what keeps the box a number of the pattern `strFormat` ("0000.00", "-000.0": room for
    /// whole digits, decimals, a sign). "." and "," both make the machine's separator; a separator
    /// typed first gets a "0" before it; a separator stays while decimals stand behind it. The pattern
    /// becomes the box's DataFormat. Deletes the selection when a key may enter. A control that is no
    /// TextBox is left alone; a locked one takes Enter only.
    void OnlyNumbersKeyPress(std::int16_t& KeyAscii, Object& ActiveControl, const std::string& strFormat) const;
    /// Tidies the box when it is left: clears what is no number or has no room in the pattern, and
    /// formats the rest. @param strFormat pattern, "" for the box's DataFormat
    void OnlyNumbersLostFocus(Object& ActiveControl, const std::string& strFormat = {}) const;
    /// Lets a date be typed as two, two and four digits with "." between; the shape only.
    /// @return the key, 0 where it is refused
    std::int16_t OnlyDate(std::int16_t KeyAscii, Object& ActiveControl) const;

    // Options, table OPTIONEN. A property without a row has a default value; reading it calls the procedure
    // tmk_OPTIONEN_INS, which makes a row with an empty value. The name is inserted into SQL verbatim.
    // Errors: 13 for a value that does not convert, 91 without a connection or, where a row is to be made,
    // without a language service, failures of the database.

    /// Returns a whole number; 0 by default and for Null. The case of `property` does not matter.
    /// Required by the contract: no row is made for a property given exactly as "DBCURSORLOCATION".
    /// Error 6 beyond 32 bits.
    std::int32_t GetOptionenNumber(const TmkVar& tmkVar, std::string_view property) const;
    /// Returns a number; 0 by default and for Null. The case of `property` does not matter.
    double GetOptionenDouble(const TmkVar& tmkVar, std::string_view property) const;
    /// Returns a text; "" by default and for Null. `property` is compared as given.
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
};

} // namespace tamarok
