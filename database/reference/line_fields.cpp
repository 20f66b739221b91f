#include <array>

#include "row_fields.h"

namespace tamarok::database {
namespace {

using ado::DataType;
using Source = const RowSource&;

/// Cubic metres per unit of the measured quantity.
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

/// Lines measured at the mill have no conversion factors.
bool hasFactors(Source s)
{
    return s.delivery.kind->measure != profile::Measure::Mill;
}

Variant factorOrNull(Source s, double factor)
{
    return hasFactors(s) ? Variant{factor} : Variant{Null{}};
}

Variant strengthClassOrNull(Source s)
{
    if (!s.line->strength) return Null{};
    return s.keys.strengthClasses()[*s.line->strength].code;
}

/// LOGS: the columns that each line has for itself.
constexpr std::array lines{
    RowField{"BLNR", DataType::Integer, [](Source s) { return Variant{s.line->number}; }},
    RowField{"HA", DataType::VarWChar, [](Source s) { return Variant{s.line->species->code}; }},
    RowField{"HS", DataType::VarWChar, [](Source s) { return textOrNull(s.line->assortment); }},
    RowField{"GKL", DataType::VarWChar, [](Source s) { return textOrNull(s.line->quality); }},
    RowField{"STKL", DataType::VarWChar, strengthClassOrNull},
    RowField{"KKLASSE", DataType::VarWChar, [](Source s) { return textOrNull(s.line->volumeClass); }},
    RowField{"LAENGE", DataType::Double, [](Source s) { return orNull(s.line->length); }},
    RowField{"DURCH", DataType::Double, [](Source s) { return orNull(s.line->diameter); }},
    RowField{"STK", DataType::Integer, [](Source s) { return orNull(s.line->pieces); }},
    RowField{"KUBATUR", DataType::Double, [](Source s) { return Variant{s.line->volume}; }},
    RowField{"RINDE_WERT", DataType::Double, [](Source s) { return Variant{s.line->bark}; }},
    RowField{"MENGE", DataType::Double, [](Source s) { return Variant{s.line->quantity}; }},
    RowField{"MENGEANDERUNG", DataType::Boolean, [](Source s) { return Variant{s.line->isQuantityChanged}; }},
    RowField{"UFAKT", DataType::Double, [](Source s) { return Variant{unitFactor(s)}; }},
    RowField{"UFAKT_RM", DataType::Double, [](Source s) { return factorOrNull(s, s.line->stackedFactor); }},
    RowField{"UFAKT_ATO", DataType::Double, [](Source s) { return factorOrNull(s, s.line->species->dryWeight); }},
    RowField{"UFAKT_LUT", DataType::Double, [](Source s) { return factorOrNull(s, s.line->species->airDryWeight); }},
    RowField{"UFAKT_STK", DataType::Double, [](Source s) { return orNull(s.line->pieceFactor); }},
    RowField{"TROCKENPROZENT", DataType::Double, [](Source s) { return orNull(s.line->dryPercent); }},
    RowField{"ENERGIE_MWH", DataType::Double, [](Source s) { return orNull(s.line->energy); }},
    RowField{"LKW_BRUTTO", DataType::Double, [](Source s) { return orNull(s.line->lorryGross); }},
    RowField{"LKW_TARA", DataType::Double, [](Source s) { return orNull(s.line->lorryTare); }},
    RowField{"FARBE", DataType::VarWChar, [](Source s) { return textOrNull(s.line->colour); }},
    RowField{"ZUSTXT", DataType::VarWChar, [](Source s) { return textOrNull(s.line->note); }},
};

/// LOGS_RECH_PRICE: additional prices of a log.
constexpr std::array surcharges{
    RowField{"ID_LOG", DataType::Integer, [](Source s) { return Variant{s.log}; }},
    RowField{"R_PREIS_1", DataType::Double, [](Source) { return Variant{0.5}; }},
    RowField{"R_PREIS_2", DataType::Double,
             [](Source s) { return s.line->bark > 0.0 ? Variant{0.25} : Variant{Null{}}; }},
    RowField{"A1_PREIS_1", DataType::Double,
             [](Source s) { return s.line->number % 2 == 0 ? Variant{0.1} : Variant{Null{}}; }},
};

/// BEREITSTELLUNG_LOGS: the lot to which a log belongs.
constexpr std::array provisionLogs{
    RowField{"ID_LOGS", DataType::Integer, [](Source s) { return Variant{s.log}; }},
    RowField{"ID_BEREITSTELLUNG_KOPF", DataType::Integer, [](Source s) { return Variant{s.provision}; }},
};

} // namespace

std::span<const RowField> lineFields() noexcept
{
    return lines;
}

std::span<const RowField> surchargeFields() noexcept
{
    return surcharges;
}

std::span<const RowField> provisionLogFields() noexcept
{
    return provisionLogs;
}

} // namespace tamarok::database
