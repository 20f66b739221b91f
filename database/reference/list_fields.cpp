#include <array>

#include "row_fields.h"

namespace tamarok::database {
namespace {

using ado::DataType;
using Source = const RowSource&;

double totalVolume(const TimberList& list)
{
    double total = 0.0;
    for (const LogLine& line : list.lines)
        total += line.volume;
    return total;
}

bool isOldDelivery(Source s)
{
    return !s.delivery.documents.empty() && s.delivery.documents.front().isClosed;
}

/// Returns RELTABLE.ID of the relation list in that slot, or Null.
template <std::size_t Slot>
Variant relation(Source s)
{
    return orNull(s.list->relations[Slot]);
}

/// LISTENKOPF: one row per timber list.
constexpr std::array listHeads{
    RowField{"LISTE", DataType::VarWChar, [](Source s) { return Variant{s.list->name}; }},
    RowField{"TEXT1", DataType::VarWChar, [](Source s) { return textOrNull(s.delivery.kind->method); }},
    RowField{"TEXT2", DataType::VarWChar, [](Source s) { return textOrNull(s.list->mainSpecies->code); }},
    RowField{"TEXT3", DataType::VarWChar, [](Source s) { return textOrNull(s.list->assortment); }},
    RowField{"TEXT4", DataType::VarWChar,
             [](Source s) { return textOrNull(s.list->calamity.empty() ? "" : "Schadholz"); }},
    RowField{"NUMBER1", DataType::Double, [](Source s) { return Variant{static_cast<double>(s.list->lines.size())}; }},
    RowField{"NUMBER2", DataType::Double, [](Source s) { return Variant{totalVolume(*s.list)}; }},
    RowField{"NUMBER3", DataType::Double, [](Source s) { return Variant{static_cast<double>(s.delivery.number)}; }},
    RowField{"DATE1", DataType::Date, [](Source s) { return Variant{s.list->date}; }},
    RowField{"DATE2", DataType::Date, [](Source s) { return Variant{Date{s.list->date.days + 3.0}}; }},
    RowField{"FWJ", DataType::SmallInt,
             [](Source s) { return Variant{static_cast<std::int16_t>(toCivil(s.list->date).year)}; }},
    RowField{"GESPERRT", DataType::Boolean, [](Source s) { return Variant{!s.delivery.documents.empty()}; }},
    RowField{"GESPERRTLISTE", DataType::Boolean, [](Source s) { return Variant{isOldDelivery(s)}; }},
    RowField{"LISTENKOPFZUSTXT", DataType::LongVarWChar,
             [](Source s) { return textOrNull(s.list->pile % 9 == 0 ? "Abfuhr nur bei trockenem Wetter" : ""); }},
    RowField{"ID_USER", DataType::Integer, [](Source s) { return Variant{s.list->user}; }},
    RowField{"ID_ACCESS_LEVELS", DataType::Integer, [](Source s) { return Variant{s.list->level}; }},
};

/// LOGS: the columns that all lines of a list share.
constexpr std::array lists{
    RowField{"LISTE", DataType::VarWChar, [](Source s) { return Variant{s.list->name}; }},
    RowField{"LISTDATUM", DataType::Date, [](Source s) { return Variant{s.list->date}; }},
    RowField{"LISTZUSTXT", DataType::VarWChar,
             [](Source s) { return textOrNull(s.list->pile % 7 == 0 ? "Nachlieferung" : ""); }},
    RowField{"LISTENART", DataType::SmallInt, [](Source s) { return Variant{s.list->listKind}; }},
    RowField{"LOS", DataType::VarWChar, [](Source s) { return Variant{"D" + std::to_string(s.delivery.number)}; }},
    RowField{"DSART", DataType::SmallInt, [](Source s) { return Variant{s.delivery.kind->dsart}; }},
    RowField{"KLST", DataType::SmallInt, [](Source s) { return Variant{s.delivery.kind->klst}; }},
    RowField{"ID_MASSEINHEIT", DataType::Integer, [](Source s) { return Variant{s.delivery.kind->unit}; }},
    RowField{"MEFVERF", DataType::VarWChar, [](Source s) { return textOrNull(s.delivery.kind->method); }},
    RowField{"ID_RINDENKENNZ", DataType::Integer, [](Source s) { return Variant{s.list->bark.key}; }},
    RowField{"RINDEPROZENT", DataType::SmallInt,
             [](Source s) { return Variant{static_cast<std::int16_t>(s.list->bark.unit)}; }},
    RowField{"ID_WALDORT", DataType::Integer, [](Source s) { return Variant{s.list->place}; }},
    RowField{"NA", DataType::VarWChar, [](Source s) { return textOrNull(s.list->felling); }},
    RowField{"KA", DataType::VarWChar, [](Source s) { return textOrNull(s.list->calamity); }},
    RowField{"POLTNR", DataType::Integer, [](Source s) { return Variant{s.list->pile}; }},
    RowField{"MANDANTEN_ID", DataType::Integer, [](Source s) { return Variant{s.list->owner}; }},
    RowField{"RELTABLE1", DataType::Integer, relation<0>},
    RowField{"RELTABLE2", DataType::Integer, relation<1>},
    RowField{"RELTABLE3", DataType::Integer, relation<2>},
    RowField{"RELTABLE4", DataType::Integer, relation<3>},
    RowField{"RELTABLE5", DataType::Integer, relation<4>},
    RowField{"RELTABLE6", DataType::Integer, relation<5>},
    RowField{"RELTABLE7", DataType::Integer, relation<6>},
    RowField{"RELTABLE8", DataType::Integer, relation<7>},
    RowField{"RELTABLE9", DataType::Integer, relation<8>},
    RowField{"RELTABLE10", DataType::Integer, relation<9>},
    RowField{"ARBEITSAUFTRAG_KOPF_ID", DataType::Integer, [](Source s) { return orNull(s.list->workOrder); }},
    RowField{"AA_ID", DataType::Integer, [](Source s) { return orNull(s.list->workOrderItem); }},
    RowField{"PLAN_ID", DataType::Integer, [](Source s) { return orNull(s.list->plannedOrder); }},
    RowField{"ID_PRODUKT_KLR", DataType::Integer, [](Source s) { return orNull(s.list->product); }},
    RowField{"ID_OBJEKT_KLR", DataType::Integer, [](Source s) { return orNull(s.list->object); }},
    RowField{"ID_VERFAHREN_KLR", DataType::Integer, [](Source s) { return orNull(s.list->method); }},
    RowField{"ID_BB_T_PROJEKT_PLANUNG_KLR", DataType::Integer, [](Source s) { return orNull(s.list->project); }},
    RowField{"ID_BB_T_AUFTRAGS_PLANUNG_KLR", DataType::Integer, [](Source s) { return orNull(s.list->order); }},
    RowField{"ID_VERKAUFSART", DataType::Integer, [](Source s) { return orNull(s.list->saleKind); }},
    RowField{"ID_TRANSPORTLOGISTIK", DataType::Integer,
             [](Source s) { return s.deliveryNote == 0 ? Variant{Null{}} : Variant{s.deliveryNote}; }},
    RowField{"WAGNR", DataType::VarWChar,
             [](Source s) { return s.delivery.goesByRail ? textOrNull("Waggon") : Variant{Null{}}; }},
};

} // namespace

std::span<const RowField> listHeadFields() noexcept
{
    return listHeads;
}

std::span<const RowField> listFields() noexcept
{
    return lists;
}

} // namespace tamarok::database
