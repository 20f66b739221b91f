#include "database/delivery_fields.h"

#include <array>

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

double documentTotal(Source s)
{
    double total = 0.0;
    const std::size_t version = s.document->version;
    for (const TimberList& list : s.delivery.lists)
        for (const LogLine& line : list.lines)
            total += line.price[version] * line.amount[version];
    return total;
}

/// Cubic metres a unit of the measured quantity.
double unitFactor(Source s)
{
    switch (s.delivery.kind->measure) {
    case profile::Measure::Stacked:
    case profile::Measure::Firewood:
    case profile::Measure::Chips: return s.line->stackedFactor;
    case profile::Measure::Weight: return s.line->species->airDryWeight;
    case profile::Measure::Poles: return s.line->pieceFactor.value_or(0.0) / 100.0;
    case profile::Measure::Logs:
    case profile::Measure::Mill:
    case profile::Measure::Lots:
    case profile::Measure::Tariff: break;
    }
    return 1.0;
}

/// The mill delivers its lines without factors.
bool hasFactors(Source s)
{
    return s.delivery.kind->measure != profile::Measure::Mill;
}

template <std::size_t Slot>
Variant relation(Source s)
{
    return orNull(s.list->relations[Slot]);
}

bool isOldDelivery(Source s)
{
    return !s.delivery.documents.empty() && s.delivery.documents.front().closed;
}

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
    RowField{"RINDEPROZENT", DataType::SmallInt, [](Source s) { return Variant{s.list->bark.mode}; }},
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
             [](Source s) { return s.delivery.railway ? textOrNull("Waggon") : Variant{Null{}}; }},
};

constexpr std::array lines{
    RowField{"BLNR", DataType::Integer, [](Source s) { return Variant{s.line->number}; }},
    RowField{"HA", DataType::VarWChar, [](Source s) { return Variant{s.line->species->code}; }},
    RowField{"HS", DataType::VarWChar, [](Source s) { return textOrNull(s.line->assortment); }},
    RowField{"GKL", DataType::VarWChar, [](Source s) { return textOrNull(s.line->quality); }},
    RowField{"STKL", DataType::VarWChar,
             [](Source s) {
                 return s.line->strength ? Variant{s.keys.strengthClasses()[*s.line->strength].code} : Variant{Null{}};
             }},
    RowField{"KKLASSE", DataType::VarWChar, [](Source s) { return textOrNull(s.line->volumeClass); }},
    RowField{"LAENGE", DataType::Double, [](Source s) { return orNull(s.line->length); }},
    RowField{"DURCH", DataType::Double, [](Source s) { return orNull(s.line->diameter); }},
    RowField{"STK", DataType::Integer, [](Source s) { return orNull(s.line->pieces); }},
    RowField{"KUBATUR", DataType::Double, [](Source s) { return Variant{s.line->volume}; }},
    RowField{"RINDE_WERT", DataType::Double, [](Source s) { return Variant{s.line->bark}; }},
    RowField{"MENGE", DataType::Double, [](Source s) { return Variant{s.line->quantity}; }},
    RowField{"MENGEANDERUNG", DataType::Boolean, [](Source s) { return Variant{s.line->quantityChanged}; }},
    RowField{"UFAKT", DataType::Double, [](Source s) { return Variant{unitFactor(s)}; }},
    RowField{"UFAKT_RM", DataType::Double,
             [](Source s) { return hasFactors(s) ? Variant{s.line->stackedFactor} : Variant{Null{}}; }},
    RowField{"UFAKT_ATO", DataType::Double,
             [](Source s) { return hasFactors(s) ? Variant{s.line->species->dryWeight} : Variant{Null{}}; }},
    RowField{"UFAKT_LUT", DataType::Double,
             [](Source s) { return hasFactors(s) ? Variant{s.line->species->airDryWeight} : Variant{Null{}}; }},
    RowField{"UFAKT_STK", DataType::Double, [](Source s) { return orNull(s.line->pieceFactor); }},
    RowField{"TROCKENPROZENT", DataType::Double, [](Source s) { return orNull(s.line->dryPercent); }},
    RowField{"ENERGIE_MWH", DataType::Double, [](Source s) { return orNull(s.line->energy); }},
    RowField{"LKW_BRUTTO", DataType::Double, [](Source s) { return orNull(s.line->lorryGross); }},
    RowField{"LKW_TARA", DataType::Double, [](Source s) { return orNull(s.line->lorryTare); }},
    RowField{"FARBE", DataType::VarWChar, [](Source s) { return textOrNull(s.line->colour); }},
    RowField{"ZUSTXT", DataType::VarWChar, [](Source s) { return textOrNull(s.line->note); }},
};

constexpr std::array documents{
    RowField{"R_NAME", DataType::VarWChar, [](Source s) { return Variant{s.document->name}; }},
    RowField{"VER_TYPE", DataType::VarWChar, [](Source s) { return Variant{profile::versions[s.document->version]}; }},
    RowField{"INVDATE", DataType::Date, [](Source s) { return Variant{s.document->date}; }},
    RowField{"ZAHLDATUM", DataType::Date, [](Source s) { return orNull(s.document->paid); }},
    RowField{"DATE1", DataType::Date, [](Source s) { return Variant{Date{s.document->date.days + 30.0}}; }},
    RowField{"DATE2", DataType::Date, [](Source s) { return Variant{s.delivery.lists.back().date}; }},
    RowField{"KOPF1", DataType::VarWChar,
             [](Source s) { return Variant{"Lieferung " + s.delivery.lists.front().name}; }},
    RowField{"KOPF2", DataType::VarWChar,
             [](Source s) { return textOrNull(s.document->contract.empty() ? "" : "laut Vertrag"); }},
    RowField{
        "KOPF6", DataType::VarWChar,
        [](Source s) {
            return textOrNull(s.delivery.railway ? "frei Waggon" : s.delivery.lorry ? "frei Werk" : "frei Waldstraße");
        }},
    RowField{"NUMM1", DataType::Double, [](Source s) { return Variant{documentTotal(s)}; }},
    RowField{"NUMM2", DataType::Double, [](Source s) { return Variant{static_cast<double>(s.delivery.lists.size())}; }},
    RowField{"VERTRAG", DataType::VarWChar, [](Source s) { return textOrNull(s.document->contract); }},
    RowField{"HULNR", DataType::VarWChar,
             [](Source s) {
                 return s.delivery.number % 10 == 0 ? Variant{"H-" + std::to_string(s.delivery.number / 10)}
                                                    : Variant{Null{}};
             }},
    RowField{"RART_ID", DataType::Integer,
             [](Source s) {
                 return Variant{s.document->version == 0 ? 1 : s.document->version == 5 ? 2 : 5};
             }},
    RowField{"BUCHNR_ID", DataType::Integer, [](Source s) { return Variant{s.document->bookingNumber}; }},
    RowField{"KAPITEL_ID", DataType::Integer, [](Source s) { return Variant{s.document->chapter}; }},
    RowField{"TITEL_ID", DataType::Integer, [](Source s) { return Variant{s.document->title}; }},
    RowField{"MANDANTEN_ID", DataType::Integer, [](Source s) { return Variant{s.delivery.lists.front().owner}; }},
    RowField{"KUNDEN_ID", DataType::Integer, [](Source s) { return Variant{s.document->partner}; }},
    RowField{"ID_ANLASSART", DataType::Integer,
             [](Source s) {
                 return Variant{!s.document->contract.empty() ? 4 : s.delivery.lists.front().calamity.empty() ? 1 : 5};
             }},
    RowField{"GESPERRT", DataType::Boolean, [](Source s) { return Variant{s.document->closed}; }},
    RowField{"ID_USER", DataType::Integer, [](Source s) { return Variant{s.delivery.lists.front().user}; }},
    RowField{"ID_ACCESS_LEVELS", DataType::Integer, [](Source s) { return Variant{s.delivery.lists.front().level}; }},
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
std::span<const RowField> lineFields() noexcept
{
    return lines;
}
std::span<const RowField> documentFields() noexcept
{
    return documents;
}

std::vector<BulkInsert::Column> columnsOf(std::initializer_list<std::span<const RowField>> groups)
{
    std::vector<BulkInsert::Column> columns;
    for (const auto group : groups)
        for (const RowField& field : group)
            columns.push_back({field.name, field.type});
    return columns;
}

void setFields(BulkInsert& row, std::size_t first, std::span<const RowField> fields, const RowSource& source)
{
    for (const RowField& field : fields)
        row[first++] = field.value(source);
}

Variant textOrNull(std::string_view text)
{
    return text.empty() ? Variant{Null{}} : Variant{text};
}

} // namespace tamarok::database
