#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "tamarok/ado.h"
#include "tamarok/object.h"
#include "tamarok/tmkvar.h"
#include "tamarok/variant.h"

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

    /// The tail of a condition, to be put behind a column that holds a level's id: the levels at the
    /// node `Level` groups above.
    /// @param ID_Access_Levels  a number (0 gives "IS NULL"), the text "@ID_ACCESS_LEVELS" in any case,
    ///        or a text with "SELECT"; pasted as it stands
    /// @param Level    number of two-digit groups to cut from the end of the code
    /// @param Exactly  text read as a Boolean: the node itself, or everything on that depth below it
    /// Error 13 for texts that cannot be read so.
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

    // Options, table OPTIONEN, written by the procedure tmk_OPTIONEN_INS, which makes the row where
    // there is none. The procedure takes the value as text; an empty text means no value.
    // Errors: 91 without a language service, failures of the procedure, 13 for a value without a
    // text form.

    /// A whole number; Null writes no value.
    void SetOptionenNumber(const TmkVar& tmkVar, std::string_view property, const Variant& value) const;
    /// A number, written with a point whatever the regional settings are.
    void SetOptionenDouble(const TmkVar& tmkVar, std::string_view property, double value) const;
    /// A text of at most 100 characters; Null writes no value.
    void SetOptionenText(const TmkVar& tmkVar, std::string_view property, const Variant& value) const;
    /// A date in the regional short form; Null writes no value.
    void SetOptionenDate(const TmkVar& tmkVar, std::string_view property, const Variant& value) const;

    // Timber measurement. Diameters in cm, lengths in m, volumes in m³, bark in cm or percent by the
    // mode "%" or "cm" (exactly; any other text deducts none). Entry texts are read under the regional
    // settings; a non-empty text that is no number is Error 13. pi is 3.1416. Patterns round halves
    // away from zero.

    /// Volume of a line of round wood: d² · 3.1416 · L / 40000 per piece, less bark (percent off the
    /// volume, cm off the diameter), rounded half to even to KUBATURPLACE decimals, times the pieces.
    /// @param rbtFolgestuck  a follow-on piece counts as one piece unless `boolMantel`
    /// @return the volume under `strFormatKubatur`; 0 where a text is empty
    /// Errors: 5 for KUBATURPLACE below 0 or above 22, 6 where the volume is too large, 13.
    std::string CalculateRundKubatur(std::string_view txtStk, std::string_view txtDurch, std::string_view txtLange,
                                     std::string_view txtRinde2, bool rbtFolgestuck, std::string_view txtModus,
                                     bool boolMantel, std::string_view strFormatKubatur,
                                     std::int16_t KUBATURPLACE) const;

    /// Volume of stacked wood: stacked measure times factor; 0 for a factor of 0 or below.
    std::string CalculateSchichtKubatur(std::string_view UFakt_Tmp, std::string_view RM_Tmp,
                                        std::string_view strFormatKubatur) const;

    /// Volume of poles: factor per hundred pieces times pieces; 0 where either is 0 or below.
    std::string CalculateStangKubatur(std::string_view UFakt_Tmp, std::string_view Stuck_Tmp,
                                      std::string_view strFormatKubatur) const;

    /// The strength class of a diameter, by the bounds of table STKL; outside all classes the one with
    /// the greatest lower bound. "" where there is none.
    /// @param txtStkl  the class as entered, returned where `bolNot_Calc_STKL`
    /// @param txtDM    diameter; what is no number counts as 0, so also bark
    /// @param STKL_Berechnung_Rindenabzug, bolCalculation  together choose the diameter and the bounds:
    ///        bark comes off only without the first and with the second; the second pair of bounds is
    ///        searched only with the first and without the second
    /// @param Stkl_ID  comma list of the STKL.ID that the assortment allows, "" for all
    /// Errors: 5 for bark above 100 percent, failures of the database.
    std::string MakeStkl(std::string_view txtStkl, std::string_view txtDM, std::string_view txtModus,
                         std::string_view txtRinde2Log, const ado::ConnectionRef& dbAdo,
                         bool STKL_Berechnung_Rindenabzug, bool bolCalculation, bool bolNot_Calc_STKL,
                         std::string_view Stkl_ID) const;

    /// The bark deduction of a log under "0.00", in the unit `Modus_tmp`. Computed (`bolCalculation`), it
    /// is interpolated between the two support points around the diameter in table RINDENABZUG, in
    /// the row of the species that expires soonest among those valid on the day; a deduction in the
    /// other unit is converted by the area of the cross-section. Otherwise it is `Rinde`.
    /// @param strOptionen  "-1" any bark table, "0" table 0 or none, else a table number
    /// @param strlistDate  day as "dd.mm.yyyy", "" for today
    /// Errors: 5 for more than 100 percent, 6, 13, failures of the database.
    std::string CalculateRinde(const TmkVar& tmkVar, std::string_view Rinde, std::string_view HA_tmp,
                               std::string_view Modus_tmp, std::string_view tmpDurch, bool bolCalculation,
                               std::string_view strOptionen, std::string_view strlistDate) const;

    /// Sets the volume class of the selected logs by their mean piece volume, lines of kind 2 and 3 by
    /// that of their group. @param selectID_LOG key list or subselect for IN (...)
    /// @param OnlyReturnSQL  return the statement and run nothing; whole groups count then
    std::string CalculateKubaturKlasse(const ado::ConnectionRef& dbAdo, std::string_view selectID_LOG,
                                       bool OnlyReturnSQL) const;

    /// Copies logs to LOGS_HISTORY. @param tmpWhere condition without WHERE
    std::string Set_Logs_Archiv(std::string_view tmpWhere, const ado::ConnectionRef& dbAdo, bool OnlyReturnSQL) const;

    /// For the edition SACHSEN: how a pair of assortment and unit converts (TSM_MENGECALC.CALC), 0 where
    /// it does not, and for any other edition.
    /// @param arrMengeCalc  the caller's cache; Empty, it is filled with all pairs
    /// Errors: 6 for a value beyond 16 bits, 13 where the cache is no array, failures of the database.
    std::int16_t MengeCalc(const TmkVar& tmkVar, Variant& arrMengeCalc, std::string_view ID_HolzSorte,
                           std::string_view ID_WarenEinheit) const;
};

} // namespace tamarok
