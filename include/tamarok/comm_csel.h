#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>

#include "tamarok/ado.h"
#include "tamarok/collection.h"
#include "tamarok/tmkvar.h"
#include "tamarok/variant.h"

#pragma GCC visibility push(default)

namespace tamarok {

/// The columns of lists, and the SQL that lists consist of. A column is known by its list type and an id;
/// applications store ids, never SQL. The class has no state.
///
/// Common parameters:
///   Typ          list type, one of 41 keys such as "LOG" (logs) or "ARTIKEL" (article positions)
///   ID           column id within the type; an id without a row gives "", never an error
///   strVer_type  version key, which names a settlement of a log: R for the main invoice, A1 to A8 for the
///                further ones. It is inserted verbatim.
///   tmkVar       session: its connection, dialect and language. Not changed.
/// Operations on columns pass on the failures of the database and of the language service.
///
/// The texts of a list with the columns 36 (volume) and 23 (species), grouped:
///   from   = GetFrom("LOG", 36, "", "R", session), then GetFrom("LOG", 23, from, "R", session)
///   select = CorrectStrSelect("LOG", ids, tabbed, "0", "R", session, where, from, true)
///   group  = InsertToStr2("", GetGroupByClause2(23, "R", session), "R"), and so on for each column
class Comm_CSel {
public:
    // Expressions of columns

    /// Returns the SQL expression of a column of the log list (ids 1 to 1041), without alias:
    /// GetColumn(36, "R", session) is "LOGS.KUBATUR".
    /// Reads two options from the database for a price in base currency (202, 261 to 268) and for columns built
    /// on one (280 to 288), and the national currency for 65.
    std::string GetColumn(std::int16_t ID, std::string_view strVer_type, const TmkVar& tmkVar) const;

    /// Returns the SQL expression of a column of any other list type; "" for "LOG" and for an unknown type.
    /// GetColumnTyp("ARTIKEL", 465, true, false, session) is "SUM(NN_POSITIONEN.MENGE)".
    /// @param Typ        compared without regard to case
    /// @param Agregate   the list is aggregated: a measure is summed
    /// @param InGroupBy  the expression is for GROUP BY: an aggregated measure gives ""
    std::string GetColumnTyp(std::string_view Typ, std::int16_t ID, bool Agregate, bool InGroupBy,
                             const TmkVar& tmkVar) const;

    /// Returns a column of the deduction list, table ABSCHLAG_TEMP: GetColumnAbs(5) is "ABSCHLAG_TEMP.PREIS".
    std::string GetColumnAbs(std::int16_t ID) const;

    // FROM

    /// Returns a FROM body with the joins that a column needs, those of its prerequisites first. A join that
    /// the body contains already, spelled alike, is not added again.
    /// Shows "Error In GetFrom" if strFrom begins with FROM, and continues.
    /// @param Typ      compared without regard to case; an unknown type adds nothing
    /// @param strFrom  body without the word FROM; an empty body is opened with the type's base tables
    std::string GetFrom(std::string_view Typ, std::int16_t ID, std::string_view strFrom, std::string_view strVer_type,
                        const TmkVar& tmkVar) const;

    // Expressions of a column of the log list in each clause. The version key is converted to upper case.

    /// Returns the group expression of a column in a detail list: the column itself.
    std::string GetGroupByClause(std::int16_t ID, std::string_view strVer_type, const TmkVar& tmkVar) const;
    /// Returns the order expression of a column in a detail list: the column itself.
    std::string GetOrderByClause(std::int16_t ID, std::string_view strVer_type, const TmkVar& tmkVar) const;

    /// Returns the group expression of a column in an aggregate list: "" for a measure, and for 975, which
    /// is an aggregate itself.
    std::string GetGroupByClause2(std::int16_t ID, std::string_view strVer_type, const TmkVar& tmkVar) const;
    /// Returns the order expression of a column in an aggregate list: the group expression.
    std::string GetOrderByClause2(std::int16_t ID, std::string_view strVer_type, const TmkVar& tmkVar) const;
    /// Returns the select expression of a column in an aggregate list: a measure inside SUM(), any other
    /// column as it is.
    std::string GetSelectClause2(std::int16_t ID, std::string_view strVer_type, const TmkVar& tmkVar) const;

    // The same for the deduction list, whose measures are 3 and 5.

    /// Returns the group expression of a column in a detail list of deductions: the column itself.
    std::string GetGroupByClauseAbs(std::int16_t ID) const;
    /// Returns the group expression of a column in an aggregate list of deductions, "" for a measure.
    std::string GetGroupByClause2Abs(std::int16_t ID) const;
    /// Returns the select expression of a column in an aggregate list of deductions: a measure inside SUM().
    std::string GetSelectClause2Abs(std::int16_t ID) const;

    // Display formats and conditions on values. Formats are patterns of numbers and dates (format.h): "" is a text,
    // "dd.mm.yyyy" a day, "0.00" a number with two decimals.

    /// Returns the format in which a column is shown: "dd.mm.yyyy" for GetFormat("LOG", 2, session).
    /// @param Typ  compared without regard to case; "MBUCH_SCH" has the formats of the machine books, "MSCH"
    /// An id without a row gives "0" for LOG and "" for any other type. The timber quantities of LOG (240 to 248)
    /// read the option KUBATURPLACE: that many decimals, two for 0.
    std::string GetFormat(std::string_view Typ, std::int16_t ID, const TmkVar& tmkVar) const;

    /// Returns the format of a column in a spreadsheet: GetFormat with "@" for a text and "d/m/yyyy" for a day; "@"
    /// for id 0.
    std::string GetFormatExcel(std::string_view Typ, std::int16_t ID, const TmkVar& tmkVar) const;

    /// Returns what follows a column's expression in a condition that its value is `value`: " = 'X'", " = 5",
    /// " IS NULL " for Null. Quotes in the value are not doubled.
    /// A date is written by Comm_Conv::TransDate in the format of tmkVar.strDateFormat, a number with a decimal point.
    /// LOG and ARTIKEL give " IS NULL " for a number column and a value that is no number; the other types insert it.
    /// ARTIKEL shows a message for an id without a row and returns "". VERTRAG, WAREN, RJ and unknown types are not
    /// filtered: "".
    /// @param Typ  compared without regard to case
    /// Errors: 13 for a value without a text form.
    std::string IsStr(std::string_view Typ, std::int16_t ID, const Variant& value, const TmkVar& tmkVar) const;

    /// Returns a value as text, `strLeer` for Null.
    std::string GetValue(const Variant& value, std::string_view strLeer) const;

    // The same for the deduction list.

    /// Returns "0.00" for the measures 3 and 5, "" for any other id.
    std::string GetFormatAbs(std::int16_t ID) const;

    /// Returns what a deduction list shows for a value: the value itself, `strLeer` for Null. For id 32 the value names
    /// an invoice, whose date is read from HEADERRECH; `strLeer` if there is none.
    Variant GetNameAbs(std::int16_t ID, const Variant& value, std::string_view strLeer,
                       const ado::ConnectionRef& dbAdo) const;

    /// Returns a value as an SQL literal: between quotes for the texts 1, 2, 4, 30 to 32 and 101 to 117, else as it is.
    /// Errors: 94 for Null.
    std::string IsStrAbs(std::int16_t ID, const Variant& value) const;

    /// Returns what follows a column's expression in a condition: " IS NULL " for Null, " = '...'" for the texts of
    /// IsStrAbs; "" for any other id, since a deduction list is filtered by its texts only.
    std::string IsStr2Abs(std::int16_t ID, const Variant& value) const;

    // Choice lists: the boxes in which a user chooses the columns of a list. The text of an entry is a label of table
    // STRINGS in the session's language, its ItemData the column id.

    /// Empties a box and fills it with the entries of a key such as "BBVS" or "LOG", by one statement for all labels.
    /// Entries of an edition come only for exactly that TmkVar::strCustomer. An unknown key leaves the box empty.
    /// A label without a row in STRINGS gives the entry "<Null>"; in the boxes of the log list ("LOG", "HIZ") it
    /// ends the list.
    /// @param Typ       a key of choice lists; case counts
    /// @param Combo     has the members Clear, AddItem, NewIndex and ItemData
    /// @param bolShort  short forms of the labels, where there are any; not for the log list
    /// Errors: those of the database and of the box; the box then holds what was added before.
    void AddComboTyp(std::string_view Typ, Object& Combo, const TmkVar& tmkVar, bool bolShort) const;
    /// The part of AddComboTyp for 21 keys, from "USERS" to "BBZV_HIZ". Does not empty the box.
    void AddComboTyp_1(std::string_view Typ, Object& Combo, const TmkVar& tmkVar, bool bolShort) const;
    /// The part of AddComboTyp for 17 keys, from "BBSTRK" to "STEH". Does not empty the box.
    void AddComboTyp_2(std::string_view Typ, Object& Combo, const TmkVar& tmkVar, bool bolShort) const;

    /// Reads labels in the session's language by one statement: the customer's own wording, else the text.
    /// @param Id_Strings  label numbers separated by commas; inserted verbatim
    /// @param bolShort    the short form comes first
    /// @return the texts in alphabetical order, each under its number as key; a number without a row is missing
    std::shared_ptr<Collection> LoadColString(std::string_view Id_Strings, const TmkVar& tmkVar, bool bolShort) const;

    /// Returns the label of a column of the log list as its box shows it; "" for a column that it does not offer.
    /// @param Typ  "LOG" or "HIZ"; case counts
    /// Errors: 5 for a label without a row in STRINGS; those of the database.
    std::string ComboList_String(std::int32_t ItemData_ID, std::string_view Typ, const TmkVar& tmkVar) const;

    /// Selects the first entry of a box whose ItemData is `intIndex`; without one the selection stays.
    /// @param Combo  has the members ListCount, ItemData and ListIndex
    void SetListIndex2(Object& Combo, std::int16_t intIndex) const;

    /// Converts the number of a column in an older selection parameter to the column's id of today.
    /// @param Parameter  name of the parameter; the case does not matter, and of some names only the beginning counts
    /// @return the id; 0 for an unknown parameter or number
    std::int16_t KonvSelektionID(std::string_view Parameter, std::int16_t ID) const;

    // Texts of clauses. None of these operations escapes single quotes or reads the database.

    /// Returns `str` with `value` appended after ", "; either may be empty. Duplicates are not removed.
    std::string InsertToStr(std::string_view str, std::string_view value) const;

    /// Returns a comma list of group or order expressions with `value` added unless a part is equal to it:
    /// InsertToStr2("a.x, b.y", "B.Y", "") is "A.X,B.Y".
    /// Trims the parts, removes brackets, and converts a text without a single quote to upper case. Replaces
    /// the window expression over NN_POSITIONEN.NN_ID in `value` by that column. Commas in parentheses do not
    /// separate parts. Shows "ERROR in Sub InsertToStr2" if `str` begins with "FROM ", and continues.
    /// @param str          the list; converted to text
    /// @param strVer_type  accepted, not used
    /// Errors: 94 if `str` is Null, 13 if it has no text form, 6 if it has more than 32,767 characters.
    std::string InsertToStr2(const Variant& str, std::string_view value, std::string_view strVer_type) const;

    /// Returns a WHERE text with the condition `value` added after " AND " unless `str` contains it, compared
    /// without regard to case; either may be empty.
    /// Required by the contract: a condition that is part of another one counts as present, as "A = 1" is of
    /// "A = 11".
    std::string InsertToWhere(std::string_view str, std::string_view value) const;
    /// InsertToWhere for a `str` of any type, which is converted to text.
    /// Errors: 94 if `str` is Null, 13 if it has no text form.
    std::string InsertToWhereAbs(const Variant& str, std::string_view value) const;

    /// Returns the SELECT list of the columns `ID`, in their order, separated by ", ".
    /// @param Typ              "LOG" or "ARTIKEL", in upper case; the columns of any other type are fillers
    /// @param ID               at most 32,767 ids; an id without a row is a filler
    /// @param strSelect_vbtab  the expressions of real columns are appended to it, separated by tabs
    /// @param Colum_Id_Is_0    text of a filler; "" omits fillers
    /// @param strWhere,strFrom the list's clauses, with or without the words WHERE and FROM, for the columns
    ///                         that compare a row with the whole list (203 of LOG, 156 of ARTIKEL)
    /// @param GroupBy          the list is aggregated: measures are summed, averages weighted
    /// Column 156 of ARTIKEL reads its total from the database.
    /// Errors: 6 for more than 32,767 ids, 11 if the total of column 156 is 0.
    std::string CorrectStrSelect(std::string_view Typ, std::span<const std::int16_t> ID, std::string& strSelect_vbtab,
                                 std::string_view Colum_Id_Is_0, std::string_view strVer_type, const TmkVar& tmkVar,
                                 std::string_view strWhere, std::string_view strFrom, bool GroupBy) const;

    /// Returns `strFrom` without any occurrence of `strRemov`, including those that a removal creates. Case
    /// counts. Error 5 if `strRemov` is empty.
    std::string RemoveString(std::string_view strFrom, std::string_view strRemov) const;

    /// Divides "FROM ... WHERE ..." at the first " WHERE " outside parentheses and trims both parts.
    /// @param tmpSelektion  a blank text leaves both results unchanged; a text without FROM empties both
    /// @param strFrom       out: the FROM body, without the word; may be the text that is divided
    /// @param strWhere      out: the condition, "" if there is none
    /// Error 6 for a text of more than 32,767 characters.
    void SplitClause(std::string_view tmpSelektion, std::string& strFrom, std::string& strWhere) const;

    /// Returns " ORDER BY " and the list, or "" for an empty list:
    /// OrderBy("1", "A,ISNULL(B,0)") is " ORDER BY A DESC,ISNULL(B,0) DESC".
    /// @param Kod  "1" for descending order of every key, anything else for ascending order
    /// Error 6 for a descending list of more than 32,767 characters.
    std::string OrderBy(std::string_view Kod, std::string_view strOrderBy) const;

    /// Returns the SQL expression of a stored log's quantity in another unit, for a list over LOGS and LOGS_RECH.
    /// @param InFaktura       true: the quantity alone; false: a settlement with a name of its own
    ///                        (`Prefix` + "_NAME") keeps its own quantity
    /// @param Prefix          version key of the settlement
    /// @param Einheit_ID      WARENEINHEIT.EINHEIT_ID of the wanted unit
    /// @param strFormatMenge  number pattern; its length less 2 is the number of decimals (edition SACHSEN only)
    std::string MengeSQL(const TmkVar& tmkVar, bool InFaktura, std::string_view Prefix, std::string_view Einheit_ID,
                         std::string_view strFormatMenge) const;

    // Lists on the screen. Implementation: src/lists.

    /// Composes and runs the statement of a list and fills a list view: one item for each row, the columns of the
    /// headers as texts, and a key that names the record. From the fifth character on, the `Key` of a header is the
    /// id of its column. A view without headers is only emptied.
    ///
    /// - The key of an item is its row number, "R" and the value of the type's key field, as in "3R4711"
    ///   (Comm_Get::Get_Key returns 4711); "W" for WAREN; "P" and the value alone for VERTRAG, so that a second row of
    ///   a contract fails. A type without key field gives its last column instead, which is not shown.
    /// - Types with a tag field, such as BBHAB, get it as `Tag` of the item.
    /// - Null shows as TmkVar::strEmptyText in the first column and as one blank in the others.
    /// - Columns with a format are aligned right, except the first one.
    /// - WAREN follows the sorting of the view; ARTIKEL adds conditions of its own and the option ORDERBY.
    ///
    /// @param strVer_type     version key, as above
    /// @param strTypListView  list type, compared without regard to case for columns and exactly for the key fields;
    ///                        "BRUTTOSCH" is BBFS with the worker in the key
    /// @param ListView1       has the members ListItems, ColumnHeaders, Sorted, SortKey, SortOrder and
    ///                        Parent.MousePointer, which shows the hourglass (11) meanwhile
    /// @param tmpSelektion    "FROM ... WHERE ..." of the selection
    /// Errors: those of the database, of the view (35602 for a key that occurs twice) and of values that do not
    /// convert; the hourglass then remains.
    void FillListview(const TmkVar& tmkVar, std::string_view strVer_type, std::string_view strTypListView,
                      Object& ListView1, std::string_view tmpSelektion) const;

    // Checks of code fields. Implementation: src/lists.

    /// Looks up what a user typed into a code field. The key of the row goes into the field's `Tag`, columns of the row
    /// into the labels.
    /// Without a row an empty field is valid: its labels and its Tag are emptied. A wrong text is shown message 223 and
    /// gets the focus if `bolMessage`; otherwise field, Tag and labels are emptied.
    /// @param strSQL     statement of the check; its first column is the row key
    /// @param txtValid   the field, with Text, Tag and SetFocus; Nothing: a missing row is false and nothing is written
    /// @param txtLabel1  label with a property `text`; not used if ColLabel1 is ""
    /// @param ColLabel1  column of the statement that the label shows, "" for none
    /// @return false for a text without a row
    /// Errors: those of the database and of the controls; a failing SetFocus is ignored.
    bool Valid(const TmkVar& tmkVar, bool bolMessage, std::string_view strSQL, const ObjectRef& txtValid,
               const ObjectRef& txtLabel1, std::string_view ColLabel1, const ObjectRef& txtLabel2,
               std::string_view ColLabel2) const;

    /// Checks each code of a list separated by ",". Codes, keys and label texts, each joined by ",", go into the field,
    /// its `Tag` and the label. The first wrong code ends the check; keys and label are then emptied, the message is
    /// shown and the field gets the focus if `bolMessage`, and is emptied otherwise.
    /// @param ColValid  code column of the statement; the code is inserted verbatim between quotes
    /// @return false for a wrong code
    /// Errors: as for Valid, and those of SetFocus.
    bool ValidMulti(const TmkVar& tmkVar, bool bolMessage, std::string_view strSQL, const ObjectRef& txtValid,
                    std::string_view ColValid, const ObjectRef& txtLabel1, std::string_view ColLabel1) const;
};

} // namespace tamarok

#pragma GCC visibility pop
