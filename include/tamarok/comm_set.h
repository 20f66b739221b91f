#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "tamarok/ado.h"
#include "tamarok/object.h"
#include "tamarok/tmkvar.h"
#include "tamarok/variant.h"

#pragma GCC visibility push(default)

namespace tamarok {

/// Writes values: SQL fragments, single columns, options of the installation. The class has no state.
class Comm_Set {
public:
    // Fragments of SQL text. None of these functions escapes single quotes.

    /// Returns the value in single quotes, NULL for "".
    std::string Set_StrVal(std::string_view value) const;
    /// Returns the value unchanged, NULL for "".
    std::string Set_NumVal(std::string_view value) const;
    /// Returns a condition: `wald`, which is the name of a column, and " = '...'", or " IS NULL" for "".
    std::string Set_StrVal2(std::string_view value, std::string_view wald = {}) const;

    // Writers of one column. Each runs one UPDATE. Names and the condition `sqlWhere` are inserted into the SQL
    // verbatim. An UPDATE that changes no row is a success. `par_strThousantSep_dll` is the thousands separator
    // to remove from a number text. An object, such as a Field, counts as its default value.
    // Errors: 91 without connection and for an empty object reference, 13 for a value that is no text, 438 for
    // an object without default value, 3709 for a closed connection, failures of the database.

    /// Writes a number text as number; "", blanks and exactly "0" write NULL.
    void Set_Number(std::string_view column, std::string_view value, std::string_view table, std::string_view sqlWhere,
                    const ado::ConnectionRef& db_ADO_dll, std::string_view par_strThousantSep_dll) const;
    /// Writes the regional text of a value as number; Null writes NULL. An empty text makes a statement that
    /// the database refuses.
    void Set_Number2(const std::string& column, const Variant& value, std::string_view table, std::string_view sqlWhere,
                     const ado::ConnectionRef& db_ADO_dll, std::string_view par_strThousantSep_dll) const;
    /// Writes a text and escapes its single quotes; "" writes NULL.
    void Set_Text(std::string_view column, std::string_view value, std::string_view table, std::string_view sqlWhere,
                  const ado::ConnectionRef& db_ADO_dll) const;
    /// Writes a number text into a text column: "," becomes ".", the thousands separator is removed, single
    /// quotes are not escaped; Null writes NULL.
    void Set_Text2(std::string_view column, const Variant& value, std::string_view table, std::string_view sqlWhere,
                   const ado::ConnectionRef& db_ADO_dll, std::string_view par_strThousantSep_dll) const;
    /// Writes the regional text of a value into a text column, without escaping single quotes; Null writes
    /// NULL. `par_strThousantSep_dll` is not used.
    void Set_Text3(std::string_view column, const Variant& value, std::string_view table, std::string_view sqlWhere,
                   const ado::ConnectionRef& db_ADO_dll, std::string_view par_strThousantSep_dll) const;
    /// Writes 1 for true, 0 for false.
    void Set_Boolean(std::string_view column, bool value, std::string_view table, std::string_view sqlWhere,
                     const ado::ConnectionRef& db_ADO_dll) const;

    /// Replaces the first "," of a number text by `glDecSep` ".", or the first "." by `glDecSep` ",". With any
    /// other `glDecSep` replaces the first character. Required by the contract. Do not correct.
    std::string Set_Separator(std::string_view value, std::string_view glDecSep) const;

    /// Selects the whole text of a ComboBox or TextBox. Ignores any other control and an empty reference.
    void Select_Text(const ObjectRef& ControlActive = {}) const;

    // Access levels.

    /// Returns the right-hand side of a predicate on a column that holds a level's id, such as "IS NULL" or
    /// "IN (SELECT ...)": the levels at the node `Level` groups above.
    /// @param ID_Access_Levels  a number (0 gives "IS NULL"), the text "@ID_ACCESS_LEVELS" in any case, or a
    ///        text with "SELECT"; inserted verbatim
    /// @param Level    0 to 255, number of two-digit groups to cut from the end of the level's code
    /// @param Exactly  text read as a Boolean: true gives the node itself, false everything at that depth
    ///        under the same prefix
    /// Errors: 13 for a level or a Boolean that cannot be read. No statement is sent.
    std::string CreateSQL_ACCESS_LEVELS(const TmkVar& tmkVar, std::string_view ID_Access_Levels, std::uint8_t Level,
                                        std::string_view Exactly) const;

    // Base selections.

    /// The statement that lists or checks the codes of a field of the application. It is composed, not run.
    /// @param Typ       key of the selection, compared exactly: "HOLZART_GRID" lists, "HOLZART_VALID" checks
    /// @param strWhere  fields separated by tabs, counted from 0, pasted as they stand: mostly the code to be
    ///        checked, a master key or a whole condition; "" is one empty field
    /// @return the statement in the dialect of bolOracle, "" for an unknown key
    /// Error 9 where the selection reads a field beyond the last.
    std::string CreateSQL(const TmkVar& tmkVar, std::string_view Typ, std::string_view strWhere) const;

    // Options, table OPTIONEN. Each operation calls the procedure tmk_OPTIONEN_INS, which inserts or updates the
    // row of exactly that name, case included. The procedure takes the value as text of at most 50 characters (100 for
    // a text); an empty text means no value. A property name has at most 30 characters. Errors: 91 without a language
    // service, 13 for a value without a text form, failures of the procedure.

    /// Writes a whole number as its regional text; Null writes no value.
    void SetOptionenNumber(const TmkVar& tmkVar, std::string_view property, const Variant& value) const;
    /// Writes a number with "." as decimal separator under every regional setting.
    void SetOptionenDouble(const TmkVar& tmkVar, std::string_view property, double value) const;
    /// Writes a text; Null writes no value.
    void SetOptionenText(const TmkVar& tmkVar, std::string_view property, const Variant& value) const;
    /// Writes a date in the regional short form; Null writes no value. The procedure reads the text by the regional
    /// settings of this machine: the embedded database takes them from the Platform, SQL Server is told the date order
    /// by the back end (database/schema/procedures/tmk_OPTIONEN_INS.sql).
    void SetOptionenDate(const TmkVar& tmkVar, std::string_view property, const Variant& value) const;

    // Timber measurement. Diameters in cm, lengths in m, volumes in m³, bark in percent with the mode "%" and in
    // cm with the mode "cm" (exactly; any other text deducts none). Entry texts are read under the regional
    // settings; a non-empty text that is no number is Error 13. pi is 3.1416. A number pattern rounds the
    // 15-digit decimal form with halves away from zero.

    /// Returns the volume of a line of round wood by Huber's formula, middle cross-section times length:
    /// d² · 3.1416 · L / 40000 per piece, less bark, which is percent of the volume or cm of the diameter. The
    /// piece is rounded half to even to KUBATURPLACE decimals and then multiplied by the pieces.
    /// @param txtStk         number of pieces
    /// @param txtDurch       diameter at the middle of the piece, cm  @param txtLange  length, m
    /// @param txtRinde2      bark, percent or cm by `txtModus`; above 100 percent the volume is negative
    /// @param rbtFolgestuck  a follow-on piece, which counts as one piece unless `boolMantel`
    /// @param KUBATURPLACE   decimals of the piece's volume, 0 to 22
    /// @return the volume under `strFormatKubatur`; 0 if one of the four texts is empty, bark included
    /// Errors: 5 for KUBATURPLACE out of range, 6 for a volume that is too large, 13.
    std::string CalculateRundKubatur(std::string_view txtStk, std::string_view txtDurch, std::string_view txtLange,
                                     std::string_view txtRinde2, bool rbtFolgestuck, std::string_view txtModus,
                                     bool boolMantel, std::string_view strFormatKubatur,
                                     std::int16_t KUBATURPLACE) const;

    /// Returns the volume of stacked wood under a pattern, the stacked measure times the factor. 0 for an empty
    /// text, a measure of 0, and a factor of 0 or below; a negative measure gives a negative volume.
    /// @param UFakt_Tmp  m³ of wood per stacked m³  @param RM_Tmp  stacked m³
    /// Errors: 6 for a volume that is too large, 13.
    std::string CalculateSchichtKubatur(std::string_view UFakt_Tmp, std::string_view RM_Tmp,
                                        std::string_view strFormatKubatur) const;

    /// Returns the volume of poles under a pattern, factor times pieces / 100. 0 for an empty text, and for a
    /// factor or a number of pieces of 0 or below.
    /// @param UFakt_Tmp  m³ per hundred pieces  @param Stuck_Tmp  number of pieces
    /// Errors: 6 for a volume that is too large, 13.
    std::string CalculateStangKubatur(std::string_view UFakt_Tmp, std::string_view Stuck_Tmp,
                                      std::string_view strFormatKubatur) const;

    /// Returns the strength class of a diameter by the inclusive bounds of table STKL, in one query. A diameter
    /// outside all classes takes the class with the greatest lower bound; "" if that is not allowed, or if the
    /// table is empty. The diameter is rounded to two decimals with halves away from zero.
    /// @param txtStkl  the class as entered, returned without a query if `bolNot_Calc_STKL`
    /// @param txtDM    diameter, cm; a text that is no number counts as 0
    /// @param txtModus, txtRinde2Log  unit and size of the bark; a size that is no number counts as 0. r percent
    ///        leave d · √(1 − r/100), the circle with r percent less area
    /// @param STKL_Berechnung_Rindenabzug, bolCalculation  bark is deducted only if the first is false and the
    ///        second true; the bounds DM_VON_OR and DM_BIS_OR are searched only if the first is true and the
    ///        second false, DM_VON and DM_BIS otherwise
    /// @param Stkl_ID  comma list of the STKL.ID that the assortment allows, "" for all; inserted verbatim
    /// Errors: 5 for bark above 100 percent, 6, failures of the database.
    std::string MakeStkl(std::string_view txtStkl, std::string_view txtDM, std::string_view txtModus,
                         std::string_view txtRinde2Log, const ado::ConnectionRef& dbAdo,
                         bool STKL_Berechnung_Rindenabzug, bool bolCalculation, bool bolNot_Calc_STKL,
                         std::string_view Stkl_ID) const;

    /// Returns the bark deduction of a log in the unit `Modus_tmp` under the pattern "0.00". If `bolCalculation`,
    /// the deduction is interpolated on a line between the two support points around the diameter, in the row
    /// of table RINDENABZUG of the species that expires first among those valid on the day. A deduction in
    /// the other unit is converted by the area of the cross-section d² · 3.1416 / 4. Without a row, a
    /// diameter, a species or a unit the computed deduction is 0. Otherwise the result is `Rinde`, and a text
    /// that is no number comes back unchanged.
    /// @param Rinde        deduction as typed  @param HA_tmp  code of the species  @param tmpDurch  diameter, cm
    /// @param Modus_tmp    unit of the result, "%" or "cm"
    /// @param strOptionen  "-1" any bark table, "0" table 0 or none, any other text the number of a table
    /// @param strlistDate  day of the measurement as "dd.mm.yyyy", "" for today
    /// Errors: 5 for a deduction above 100 percent, 6, 11 for a cross-section of 0, 13, failures of the database.
    std::string CalculateRinde(const TmkVar& tmkVar, std::string_view Rinde, std::string_view HA_tmp,
                               std::string_view Modus_tmp, std::string_view tmpDurch, bool bolCalculation,
                               std::string_view strOptionen, std::string_view strlistDate) const;

    /// Sets the volume class of the selected logs by their mean piece volume in m³ and table KUBATURKLASSE; lines
    /// of kind 2 and 3 by the mean of their group (list, sheet, measure kind). A line that has no class gets
    /// Null.
    /// @param selectID_LOG   key list or subquery, inserted into IN (...) verbatim
    /// @param OnlyReturnSQL  returns the statement and runs nothing; all lines of a group count then, otherwise
    ///        the selected ones alone
    /// @return the statement, or "" after it ran. Errors: 91, failures of the database
    std::string CalculateKubaturKlasse(const ado::ConnectionRef& dbAdo, std::string_view selectID_LOG,
                                       bool OnlyReturnSQL) const;

    /// Copies logs to LOGS_HISTORY, also those that are there already.
    /// @param tmpWhere       condition without WHERE, inserted verbatim
    /// @param OnlyReturnSQL  returns the statement and runs nothing
    /// @return the statement, or "" after it ran. Errors: 91, failures of the database
    std::string Set_Logs_Archiv(std::string_view tmpWhere, const ado::ConnectionRef& dbAdo, bool OnlyReturnSQL) const;

    /// Returns how a pair of assortment and unit converts (TSM_MENGECALC.CALC), for customer SACHSEN; 0 for a
    /// pair that does not convert, an empty key, and any other customer.
    /// @param arrMengeCalc  the caller's cache; if it is Empty, it is filled with all pairs
    /// @param ID_HolzSorte, ID_WarenEinheit  keys, compared as text
    /// Errors: 6 for a value beyond 16 bits, 13 for a cache that is no array, failures of the database.
    std::int16_t MengeCalc(const TmkVar& tmkVar, Variant& arrMengeCalc, std::string_view ID_HolzSorte,
                           std::string_view ID_WarenEinheit) const;

    // Lists on the screen. Implementation: src/lists.

    /// Sorts a list view by a column after a click on its header. The view compares texts, so the cells of a date
    /// column
    /// ("31.12.2024") are rewritten for the time of the sort, and those of a number column are padded on the left and
    /// stay so. A column of mixed cells is sorted as text. Empty cells and TmkVar::strEmptyText fit any column.
    /// The header shows "<<" for ascending and ">>" for descending order.
    /// @param ColumnHeader   the clicked header of `ListView1`
    /// @param ListView1      a view without items is left alone
    /// @param OnlyActualize  keeps the direction; otherwise it changes with each call
    /// Errors: those of the view.
    void OrderColumnListview(const TmkVar& tmkVar, Object& ColumnHeader, Object& ListView1, bool OnlyActualize) const;

    /// Adds the rows of a statement to a combo or list box. With two columns or more the text is the second one and
    /// the first one becomes the ItemData; with one column there is only the text.
    /// @param Obj  has the members AddItem, NewIndex and ItemData
    /// Errors: those of the database and of the box; what was added before stays.
    void FillObject(const ado::ConnectionRef& dbAdo, Object& Obj, std::string_view strSQL) const;

    // Models. Implementation: src/settings.

    /// Adds the choice of a model that is not saved (text 4454) to the end of a combo box and selects it.
    /// @param cmbObj  has the members AddItem, ListCount, ListIndex and Refresh
    void Set_UnknownModelCmb(const TmkVar& tmkVar, Object& cmbObj) const;
};

} // namespace tamarok

#pragma GCC visibility pop
