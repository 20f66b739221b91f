#include "binder.h"
#include "class_tables.h"

#include "tamarok/comm_csel.h"

namespace tamarok::component {

namespace {

using C = Comm_CSel;

// clang-format off
constexpr std::array operations{
    operation<&C::SetListIndex2>(1, "SetListIndex2", "&Combo, intIndex", "Selects the entry of a box that has a number."),
    operation<&C::GetColumnAbs>(2, "GetColumnAbs", "ID", "SQL expression of a column of the deduction list."),
    operation<&C::GetNameAbs>(3, "GetNameAbs", "&ID, value, strLeer, dbAdo", "What a deduction list shows for a value."),
    operation<&C::GetGroupByClause2Abs>(4, "GetGroupByClause2Abs", "&ID", "Group expression of a column in an aggregated deduction list; empty for a measure."),
    operation<&C::GetFormatAbs>(5, "GetFormatAbs", "&ID", "Display format of a column of the deduction list."),
    operation<&C::GetColumn>(6, "GetColumn", "ID, strVer_type, &TmkVar", "SQL expression of a column of the log list."),
    operation<&C::GetColumnTyp>(7, "GetColumnTyp", "Typ, ID, Agregate, InGroupBy, &TmkVar", "SQL expression of a column of any other list type."),
    operation<&C::GetFrom>(8, "GetFrom", "Typ, ID, strFrom, strVer_type, &TmkVar", "FROM body extended by the joins that a column needs."),
    operation<&C::GetValue>(9, "GetValue", "value, strLeer", "A value as text, another text for Null."),
    operation<&C::IsStrAbs>(10, "IsStrAbs", "&ID, &value", "A value of the deduction list as an SQL literal."),
    operation<&C::GetFormat>(11, "GetFormat", "Typ, &ID, &TmkVar", "Display format of a column."),
    operation<&C::GetFormatExcel>(12, "GetFormatExcel", "Typ, &ID, &TmkVar", "Format of a column in a spreadsheet."),
    operation<&C::IsStr>(13, "IsStr", "Typ, ID, value, &TmkVar", "Condition that a column has a value, without the column."),
    operation<&C::GetGroupByClause>(14, "GetGroupByClause", "ID, strVer_type, &TmkVar", "Group expression of a column in a detail list."),
    operation<&C::GetOrderByClause>(15, "GetOrderByClause", "ID, strVer_type, &TmkVar", "Order expression of a column in a detail list."),
    operation<&C::GetGroupByClauseAbs>(16, "GetGroupByClauseAbs", "ID", "Group expression of a column in a detail list of deductions."),
    operation<&C::GetGroupByClause2>(17, "GetGroupByClause2", "ID, strVer_type, &TmkVar", "Group expression of a column in an aggregate list; empty for a measure."),
    operation<&C::GetOrderByClause2>(18, "GetOrderByClause2", "ID, strVer_type, &TmkVar", "Order expression of a column in an aggregate list; empty for a measure."),
    operation<&C::GetSelectClause2>(19, "GetSelectClause2", "ID, strVer_type, &TmkVar", "Select expression of a column in an aggregate list; a measure is summed."),
    operation<&C::GetSelectClause2Abs>(20, "GetSelectClause2Abs", "ID", "Select expression of a column in an aggregated deduction list."),
    operation<&C::InsertToStr>(21, "InsertToStr", "str, value", "Comma list with a value appended."),
    operation<&C::InsertToStr2>(22, "InsertToStr2", "str, value, strVer_type", "Column list with a value added once."),
    operation<&C::InsertToWhere>(23, "InsertToWhere", "str, value", "WHERE text with a condition added once."),
    operation<&C::CorrectStrSelect>(24, "CorrectStrSelect", "Typ, &ID, &strSelect_vbtab, Colum_Id_Is_0, strVer_type, &TmkVar, strWhere, strFrom, GroupBy", "SELECT list of a list's columns."),
    operation<&C::InsertToWhereAbs>(25, "InsertToWhereAbs", "str, value", "WHERE text, given as any value, with a condition added once."),
    operation<&C::RemoveString>(26, "RemoveString", "strFrom, strRemov", "Text without any occurrence of another one."),
    operation<&C::IsStr2Abs>(27, "IsStr2Abs", "&ID, &value", "Condition that a column of the deduction list has a value."),
    operation<&C::KonvSelektionID>(28, "KonvSelektionID", "Parameter, ID", "Column id of today for a number in an older selection parameter."),
    operation<&C::SplitClause>(29, "SplitClause", "tmpSelektion, &strFrom, &strWhere", "Divides a clause text into its FROM and WHERE bodies."),
    operation<&C::AddComboTyp>(30, "AddComboTyp", "Typ, &Combo, &TmkVar, bolShort", "Fills the box in which a user chooses the columns of a list."),
    operation<&C::AddComboTyp_1>(31, "AddComboTyp_1", "Typ, &Combo, &TmkVar, bolShort", "The part of AddComboTyp for its first group of keys."),
    operation<&C::AddComboTyp_2>(32, "AddComboTyp_2", "Typ, &Combo, &TmkVar, bolShort", "The part of AddComboTyp for its second group of keys."),
    operation<&C::ComboList_String>(33, "ComboList_String", "ItemData_ID, Typ, &TmkVar", "Label of a column of the log list."),
    operation<&C::Valid>(34, "Valid", "&TmkVar, bolMessage, strSQL, &txtValid, &txtLabel1, ColLabel1, &txtLabel2, ColLabel2", "Whether a code exists; its row key and labels go into the controls."),
    operation<&C::ValidMulti>(35, "ValidMulti", "&TmkVar, bolMessage, strSQL, &txtValid, &ColValid, &txtLabel1, ColLabel1", "Whether each code of a comma list exists."),
    operation<&C::MengeSQL>(36, "MengeSQL", "&TmkVar, InFaktura, Prefix, Einheit_ID, strFormatMenge", "SQL expression of a log's quantity in another unit."),
    operation<&C::FillListview>(37, "FillListview", "&TmkVar, &strVer_type, strTypListView, &ListView1, tmpSelektion", "Runs the statement of a list and fills a list view."),
    operation<&C::OrderBy>(38, "OrderBy", "Kod, &strOrderBy", "ORDER BY clause of a column list, ascending or descending."),
    operation<&C::LoadColString>(39, "LoadColString", "Id_Strings, &TmkVar, bolShort", "Labels by their numbers, as a collection."),
};
// clang-format on
static_assert(slotsAscend(operations));

} // namespace

constinit const ClassInfo commCSel{"Comm_CSel", "Columns of lists and the SQL that lists are made of.", operations,
                                   makeClass<C>};

} // namespace tamarok::component
