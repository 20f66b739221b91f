#include <array>
#include <string>

#include "row_fields.h"

namespace tamarok::database {
namespace {

using ado::DataType;
using Source = const RowSource&;

/// The wagons of TRANSPORTLOGISTIK_WAGGON in turn.
Variant wagonOrNull(Source s)
{
    if (!s.delivery.goesByRail) return Null{};
    return 1 + s.deliveryNote % s.keys.count("TRANSPORTLOGISTIK_WAGGON");
}

/// TRANSPORTLOGISTIK: one row per delivery note.
constexpr std::array deliveryNotes{
    RowField{"ID", DataType::Integer, [](Source s) { return Variant{s.deliveryNote}; }},
    RowField{"ID_TRANSPORTLOGISTIK_WAGGON", DataType::Integer, wagonOrNull},
    RowField{"EINGANGS_DATUM", DataType::Date,
             [](Source s) { return Variant{Date{s.delivery.lists.back().date.days + 2.0}}; }},
    RowField{"PID", DataType::Integer, [](Source s) { return Variant{s.deliveryNote * 10}; }},
    RowField{"POLTER", DataType::VarWChar, [](Source s) { return Variant{"Polter " + std::to_string(s.list->pile)}; }},
    RowField{"LKW_NR", DataType::VarWChar,
             [](Source s) { return Variant{"LKW " + std::to_string(100 + s.deliveryNote % 37)}; }},
    RowField{"BAHNHOF", DataType::VarWChar,
             [](Source s) { return textOrNull(s.delivery.goesByRail ? "Verladebahnhof Ost" : ""); }},
    RowField{"LIEFERSCHEIN_NR", DataType::VarWChar,
             [](Source s) { return Variant{"LS-" + std::to_string(s.deliveryNote)}; }},
    RowField{"STUCK", DataType::Integer,
             [](Source s) { return Variant{static_cast<std::int32_t>(s.list->lines.size())}; }},
};

/// BEREITSTELLUNG_KOPF: one row per lot, made out on the next day at nine in the morning (0.375 days).
constexpr std::array provisions{
    RowField{"ID", DataType::Integer, [](Source s) { return Variant{s.provision}; }},
    RowField{"BEREITSTELLUNGSNAME", DataType::VarWChar,
             [](Source s) { return Variant{"B-" + std::to_string(s.provision)}; }},
    RowField{"ERSTELLUNGSDATUM", DataType::Date,
             [](Source s) { return Variant{Date{s.delivery.lists.back().date.days + 1.375}}; }},
    RowField{"ID_PERSONAL", DataType::Integer, [](Source s) { return Variant{s.list->owner}; }},
    RowField{"ID_ACCESS_LEVELS", DataType::Integer, [](Source s) { return Variant{s.list->level}; }},
};

} // namespace

std::span<const RowField> deliveryNoteFields() noexcept
{
    return deliveryNotes;
}

std::span<const RowField> provisionFields() noexcept
{
    return provisions;
}

} // namespace tamarok::database
