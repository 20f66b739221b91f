#include "binder.h"
#include "class_tables.h"

#include "tamarok/comm_set.h"

namespace tamarok::component {

namespace {

using C = Comm_Set;

// clang-format off
constexpr std::array operations{
    operation<&C::Set_UnknownModelCmb>(1, "Set_UnknownModelCmb", "&TmkVar, &cmbObj", "Adds the choice of a model that is not saved to a combo box."),
    operation<&C::Set_StrVal>(2, "Set_StrVal", "value", "Text as an SQL literal, NULL where it is empty."),
    operation<&C::Set_NumVal>(3, "Set_NumVal", "value", "Number text for SQL, NULL where it is empty."),
    operation<&C::Set_StrVal2>(4, "Set_StrVal2", "value, [wald]", "Condition on a column: equal to a text, or IS NULL."),
    operation<&C::Set_Number>(5, "Set_Number", "column, value, table, sqlWhere, db_ADO_dll, par_strThousantSep_dll", "Updates a column with a number text."),
    operation<&C::Set_Number2>(6, "Set_Number2", "&column, value, table, sqlWhere, db_ADO_dll, par_strThousantSep_dll", "Updates a column with a number or Null."),
    operation<&C::Set_Text>(7, "Set_Text", "column, value, table, sqlWhere, db_ADO_dll", "Updates a column with a text; NULL for an empty one."),
    operation<&C::Set_Text2>(8, "Set_Text2", "column, value, table, sqlWhere, db_ADO_dll, par_strThousantSep_dll", "Updates a text column with a number's text; Null writes NULL."),
    operation<&C::Set_Text3>(9, "Set_Text3", "column, value, table, sqlWhere, db_ADO_dll, par_strThousantSep_dll", "Updates a column with a value's regional text; Null writes NULL."),
    operation<&C::Set_Boolean>(10, "Set_Boolean", "column, value, table, sqlWhere, db_ADO_dll", "Updates a column with a truth value."),
    operation<&C::Select_Text>(11, "Select_Text", "[ControlActive]", "Selects the whole text of a control."),
    operation<&C::Set_Separator>(12, "Set_Separator", "value, glDecSep", "Number text made to follow a decimal separator."),
    operation<&C::SetOptionenNumber>(13, "SetOptionenNumber", "&TmkVar, property, value", "Stores a whole number as an option."),
    operation<&C::SetOptionenDouble>(14, "SetOptionenDouble", "&TmkVar, property, value", "Stores a number as an option."),
    operation<&C::SetOptionenText>(15, "SetOptionenText", "&TmkVar, property, value", "Stores a text as an option."),
    operation<&C::SetOptionenDate>(16, "SetOptionenDate", "&TmkVar, property, &value", "Stores a date as an option."),
    operation<&C::MakeStkl>(17, "MakeStkl", "txtStkl, txtDM, txtModus, txtRinde2Log, dbAdo, STKL_Berechnung_Rindenabzug, bolCalculation, bolNot_Calc_STKL, Stkl_ID", "Strength class of a diameter."),
    operation<&C::CalculateRundKubatur>(18, "CalculateRundKubatur", "txtStk, txtDurch, txtLange, txtRinde2, rbtFolgestuck, txtModus, boolMantel, strFormatKubatur, KUBATURPLACE", "Volume of round timber."),
    operation<&C::CalculateRinde>(19, "CalculateRinde", "&TmkVar, Rinde, HA_tmp, Modus_tmp, tmpDurch, bolCalculation, strOptionen, strlistDate", "Bark deduction of a diameter."),
    operation<&C::CalculateSchichtKubatur>(20, "CalculateSchichtKubatur", "UFakt_Tmp, RM_Tmp, strFormatKubatur", "Volume of stacked timber."),
    operation<&C::CalculateStangKubatur>(21, "CalculateStangKubatur", "UFakt_Tmp, Stuck_Tmp, strFormatKubatur", "Volume of poles."),
    operation<&C::CalculateKubaturKlasse>(22, "CalculateKubaturKlasse", "&dbAdo, selectID_LOG, OnlyReturnSQL", "Sets the volume class of logs, or gives the statement."),
    operation<&C::FillObject>(23, "FillObject", "dbAdo, Obj, strSQL", "Adds the rows of a statement to a box."),
    operation<&C::CreateSQL>(24, "CreateSQL", "&TmkVar, Typ, strWhere", "Statement of a base selection."),
    operation<&C::Set_Logs_Archiv>(25, "Set_Logs_Archiv", "tmpWhere, dbAdo, OnlyReturnSQL", "Copies logs to their history, or gives the statement."),
    operation<&C::CreateSQL_ACCESS_LEVELS>(26, "CreateSQL_ACCESS_LEVELS", "&TmkVar, ID_Access_Levels, Level, Exactly", "Condition on access levels."),
    operation<&C::OrderColumnListview>(27, "OrderColumnListview", "&TmkVar, ColumnHeader, &ListView1, OnlyActualize", "Sorts a list view by a column after a click on its header."),
    operation<&C::MengeCalc>(28, "MengeCalc", "&TmkVar, &arrMengeCalc, ID_HolzSorte, ID_WarenEinheit", "How a pair of assortment and unit converts."),
};
// clang-format on
static_assert(slotsAscend(operations));

} // namespace

constinit const ClassInfo commSet{"Comm_Set", "Writing of values and options.", operations, makeClass<C>};

} // namespace tamarok::component
