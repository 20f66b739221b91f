#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "tamarok/tmkvar.h"
#include "tamarok/variant.h"

namespace tamarok {

/// Columns of lists and the SQL that lists are made of. A column is known by its list type and a
/// number; lists keep numbers, never SQL. The class has no state.
///
/// Common parameters:
///   Typ          list type, one of 41 keys such as "LOG" or "ARTIKEL"
///   ID           column id within the type; an id without a row gives the empty text, never an error
///   strVer_type  version key of a settlement: R for the main invoice, A1 to A8 for the further ones
///   tmkVar       the session: its connection, dialect and language
/// Operations that need the database or the language service pass their failures on.
class Comm_CSel {
public:
    // Expressions of columns

    /// SQL expression of a column of the log list (ids 1 to 1041), without alias. Reads options where
    /// the column is a price in base currency or built on one, and the national currency for 65.
    std::string GetColumn(std::int16_t ID, std::string_view strVer_type, const TmkVar& tmkVar) const;

    /// SQL expression of a column of any other list type; "LOG" and unknown types give "". Typ is
    /// compared without regard to case.
    /// @param Agregate   the list is aggregated: a measure comes inside its aggregate word
    /// @param InGroupBy  the expression is for GROUP BY: an aggregated measure gives ""
    std::string GetColumnTyp(std::string_view Typ, std::int16_t ID, bool Agregate, bool InGroupBy,
                             const TmkVar& tmkVar) const;

    /// Column of the deduction list, table ABSCHLAG_TEMP.
    std::string GetColumnAbs(std::int16_t ID) const;

    // FROM

    /// Extends a FROM body by the joins that a column needs, those of its prerequisites first. A
    /// join that stands in the body already is not added again.
    /// @param strFrom  body without the word FROM; an empty one is opened with the type's base text
    /// Shows "Error In GetFrom" where strFrom begins with FROM, and goes on. Typ is compared
    /// without regard to case; an unknown one adds nothing.
    std::string GetFrom(std::string_view Typ, std::int16_t ID, std::string_view strFrom, std::string_view strVer_type,
                        const TmkVar& tmkVar) const;

    // Expressions of a column in each clause

    /// Group expression in a detail list: the column, with the version key in upper case.
    std::string GetGroupByClause(std::int16_t ID, std::string_view strVer_type, const TmkVar& tmkVar) const;
    /// Order expression in a detail list: the group expression.
    std::string GetOrderByClause(std::int16_t ID, std::string_view strVer_type, const TmkVar& tmkVar) const;
    /// Group expression in a detail list of deductions.
    std::string GetGroupByClauseAbs(std::int16_t ID) const;

    /// Group expression in an aggregate list: "" for a measure and for 975, which is an aggregate itself.
    std::string GetGroupByClause2(std::int16_t ID, std::string_view strVer_type, const TmkVar& tmkVar) const;
    /// Order expression in an aggregate list: the group expression, "" for a measure.
    std::string GetOrderByClause2(std::int16_t ID, std::string_view strVer_type, const TmkVar& tmkVar) const;
    /// Select expression in an aggregate list: a measure inside SUM(), any other column plain.
    std::string GetSelectClause2(std::int16_t ID, std::string_view strVer_type, const TmkVar& tmkVar) const;

    /// The same two for the deduction list, whose measures are 3 and 5.
    std::string GetGroupByClause2Abs(std::int16_t ID) const;
    std::string GetSelectClause2Abs(std::int16_t ID) const;

    // Texts of clauses

    /// `str` with `value` appended behind ", "; either may be empty. No test for duplicates.
    std::string InsertToStr(std::string_view str, std::string_view value) const;

    /// Comma list of group or order expressions with `value` added where no part equals it. Blanks
    /// around parts and brackets go, and a text without a quote becomes upper case. A window
    /// expression over NN_POSITIONEN.NN_ID is replaced by that column. Commas in parentheses divide nothing.
    /// Shows "ERROR in Sub InsertToStr2" where `str` begins with "FROM ", and goes on.
    /// @param strVer_type  accepted, not used
    /// Errors: 94 where `str` is Null, 13 where it has no text form, 6 beyond 32,767 characters.
    std::string InsertToStr2(const Variant& str, std::string_view value, std::string_view strVer_type) const;

    /// WHERE text with the condition `value` added by " AND " unless it occurs in `str`, compared
    /// without regard to case. A condition that is a part of an existing one counts as present.
    std::string InsertToWhere(std::string_view str, std::string_view value) const;
    /// The same; `str` is converted to text. Errors: 94 where it is Null, 13 where it has no text form.
    std::string InsertToWhereAbs(const Variant& str, std::string_view value) const;

    /// The SELECT list of the columns `ID`, in their order. Composes the types "LOG" and "ARTIKEL",
    /// in upper case; columns of any other type, and ids without a row, are fillers.
    /// @param strSelect_vbtab  extended by the expressions of real columns, joined by tabs
    /// @param Colum_Id_Is_0    the filler's text; "" leaves fillers out
    /// @param strWhere,strFrom clauses of the list, with or without WHERE and FROM, for the columns
    ///                         that compare a row with the whole list (203 of LOG, 156 of ARTIKEL)
    /// @param GroupBy          the list is aggregated: measures are summed, averages weighted
    /// Errors: 6 for more than 32,767 ids, 11 where the total of ARTIKEL 156 is 0, failures of the
    /// database.
    std::string CorrectStrSelect(std::string_view Typ, std::span<const std::int16_t> ID, std::string& strSelect_vbtab,
                                 std::string_view Colum_Id_Is_0, std::string_view strVer_type, const TmkVar& tmkVar,
                                 std::string_view strWhere, std::string_view strFrom, bool GroupBy) const;

    /// `strFrom` without any occurrence of `strRemov`, also of those that a removal makes.
    /// Error 5 where `strRemov` is empty.
    std::string RemoveString(std::string_view strFrom, std::string_view strRemov) const;

    /// Divides "FROM ... WHERE ..." at the first " WHERE " outside parentheses. A blank text leaves
    /// both results as they are; a text without FROM empties both.
    /// Error 6 for a text of more than 32,767 characters.
    void SplitClause(std::string_view tmpSelektion, std::string& strFrom, std::string& strWhere) const;

    /// " ORDER BY " and the list, or "" for an empty list.
    /// @param Kod  "1" for descending order on every key, anything else for ascending order
    /// Error 6 for a descending list of more than 32,767 characters.
    std::string OrderBy(std::string_view Kod, std::string_view strOrderBy) const;

    /// The SQL expression of a stored log's quantity in another unit, for a list over LOGS and LOGS_RECH.
    /// @param InFaktura   true for the bare quantity; false lets an invoicing row with a name of its own
    ///        (`Prefix` + "_NAME") keep its own quantity
    /// @param Einheit_ID  WARENEINHEIT.EINHEIT_ID of the wanted unit
    /// @param strFormatMenge  number pattern; its length less 2 is the number of decimals (SACHSEN only)
    std::string MengeSQL(const TmkVar& tmkVar, bool InFaktura, std::string_view Prefix, std::string_view Einheit_ID,
                         std::string_view strFormatMenge) const;
};

} // namespace tamarok
