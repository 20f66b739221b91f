#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>

#include "areas/receipts_timber.h"
#include "record_insert.h"

#include "tamarok/date.h"

// The rows of harvest records with the columns in which their members stand. A member that names another table is its
// ID.
namespace tamarok::database {

/// A timber harvest record: a row of BB_HAB_KOPF.
struct HarvestRecord {
    std::string number, title, remark, surveyor, cancelReason;
    Date date, felledFrom, felledUntil, measured, released, cancelled;
    std::int32_t level = 0, year = 0, pieces = 0, listKind = 0;
    std::optional<double> easting, northing, volume;
    bool isReleased = false;
    std::int32_t owner = 0, costCentre = 0, order = 0, project = 0, object = 0, method = 0, mark = 0, measuring = 0;
    std::int32_t destination = 0, state = 0, yard = 0, place = 0;
};

inline constexpr std::array harvestRecordFields{
    RecordField<HarvestRecord>{"HAB_NUMMER", &HarvestRecord::number},
    RecordField<HarvestRecord>{"ID_ACCESS_LEVELS", &HarvestRecord::level},
    RecordField<HarvestRecord>{"HAB_DATUM", &HarvestRecord::date},
    RecordField<HarvestRecord>{"EINSCHLAG_VON", &HarvestRecord::felledFrom},
    RecordField<HarvestRecord>{"EINSCHLAG_BIS", &HarvestRecord::felledUntil},
    RecordField<HarvestRecord>{"AUFNAHMEDATUM", &HarvestRecord::measured},
    RecordField<HarvestRecord>{"FREIGABEDATUM", &HarvestRecord::released},
    RecordField<HarvestRecord>{"STORNODATUM", &HarvestRecord::cancelled},
    RecordField<HarvestRecord>{"STORNOGRUND", &HarvestRecord::cancelReason},
    RecordField<HarvestRecord>{"FWJ", &HarvestRecord::year},
    RecordField<HarvestRecord>{"BEZEICHNUNG", &HarvestRecord::title},
    RecordField<HarvestRecord>{"BEMERKUNG", &HarvestRecord::remark},
    RecordField<HarvestRecord>{"AUFNEHMER", &HarvestRecord::surveyor},
    RecordField<HarvestRecord>{"RECHTSWERT", &HarvestRecord::easting},
    RecordField<HarvestRecord>{"HOCHWERT", &HarvestRecord::northing},
    RecordField<HarvestRecord>{"MENGE", &HarvestRecord::volume},
    RecordField<HarvestRecord>{"STUCK", &HarvestRecord::pieces},
    RecordField<HarvestRecord>{"FREIGABE", &HarvestRecord::isReleased},
    RecordField<HarvestRecord>{"LISTENART", &HarvestRecord::listKind},
    RecordField<HarvestRecord>{"ID_WALDBESITZER", &HarvestRecord::owner},
    RecordField<HarvestRecord>{"ID_KOSTENSTELLE", &HarvestRecord::costCentre},
    RecordField<HarvestRecord>{"ID_BB_AUFTRAG_KOPF", &HarvestRecord::order},
    RecordField<HarvestRecord>{"ID_BB_T_PROJEKT_PLANUNG", &HarvestRecord::project},
    RecordField<HarvestRecord>{"ID_BB_T_OBJEKTE", &HarvestRecord::object},
    RecordField<HarvestRecord>{"ID_BB_T_LEI_ARBEITSVERFAHEREN", &HarvestRecord::method},
    RecordField<HarvestRecord>{"ID_BB_T_KZ_LEISTUNG", &HarvestRecord::mark},
    RecordField<HarvestRecord>{"ID_BB_T_MESSVERFAHREN", &HarvestRecord::measuring},
    RecordField<HarvestRecord>{"ID_BB_T_VERKAUFSZIEL", &HarvestRecord::destination},
    RecordField<HarvestRecord>{"ID_BB_T_HAB_STATUS", &HarvestRecord::state},
    RecordField<HarvestRecord>{"ID_HOLZPLATZ", &HarvestRecord::yard},
    RecordField<HarvestRecord>{"ID_WALDORT", &HarvestRecord::place},
};

/// A row of BB_HAB.
struct HarvestLine {
    const TimberProduct* product = nullptr;
    std::int32_t record = 0, number = 0, log = 0, diameter = 0, pieces = 0;
    std::string lot, pile, remark;
    std::optional<double> length, quantity, volume, issued;
    Date receivedOn, issuedOn, hauledOn;
    bool isBlocked = false;
    std::int32_t colour = 0, species = 0, assortment = 0, quality = 0, strength = 0, damage = 0, event = 0, unit = 0;
    std::int32_t receipt = 0, issue = 0, destination = 0, saleState = 0, bidSpecies = 0, bidAssortment = 0;
    std::int32_t bidStrength = 0, sale = 0, offer = 0;
};

inline constexpr std::array harvestLineFields{
    RecordField<HarvestLine>{"ID_BB_HAB_KOPF", &HarvestLine::record},
    RecordField<HarvestLine>{"POSITIONSNUMMER", &HarvestLine::number},
    RecordField<HarvestLine>{"LOS", &HarvestLine::lot},
    RecordField<HarvestLine>{"POLTERNUMMER", &HarvestLine::pile},
    RecordField<HarvestLine>{"STAMMNUMMER", &HarvestLine::log},
    RecordField<HarvestLine>{"LAENGE", &HarvestLine::length},
    RecordField<HarvestLine>{"DURCHMESSER", &HarvestLine::diameter},
    RecordField<HarvestLine>{"STUCK", &HarvestLine::pieces},
    RecordField<HarvestLine>{"MENGE", &HarvestLine::quantity},
    RecordField<HarvestLine>{"KUBATUR", &HarvestLine::volume},
    RecordField<HarvestLine>{"ZUGANGSDATUM", &HarvestLine::receivedOn},
    RecordField<HarvestLine>{"ABGANGSDATUM", &HarvestLine::issuedOn},
    RecordField<HarvestLine>{"ABFUHRDATUM", &HarvestLine::hauledOn},
    RecordField<HarvestLine>{"ABGANGSMENGE", &HarvestLine::issued},
    RecordField<HarvestLine>{"BEMERKUNG", &HarvestLine::remark},
    RecordField<HarvestLine>{"GESPERRT", &HarvestLine::isBlocked},
    RecordField<HarvestLine>{"ID_FARBE", &HarvestLine::colour},
    RecordField<HarvestLine>{"ID_HOLZART", &HarvestLine::species},
    RecordField<HarvestLine>{"ID_HOLZSORTE", &HarvestLine::assortment},
    RecordField<HarvestLine>{"ID_GUETEKLASSE", &HarvestLine::quality},
    RecordField<HarvestLine>{"ID_STKL", &HarvestLine::strength},
    RecordField<HarvestLine>{"ID_BB_T_HOLZSCHADEN", &HarvestLine::damage},
    RecordField<HarvestLine>{"ID_BB_T_ZUFALLIGES_EREIGNIS", &HarvestLine::event},
    RecordField<HarvestLine>{"ID_WARENEINHEIT", &HarvestLine::unit},
    RecordField<HarvestLine>{"ID_BB_T_ZUGANGSART", &HarvestLine::receipt},
    RecordField<HarvestLine>{"ID_BB_T_ABGANGSART", &HarvestLine::issue},
    RecordField<HarvestLine>{"ID_BB_T_VERKAUFSZIEL", &HarvestLine::destination},
    RecordField<HarvestLine>{"ID_BB_T_HOLZVERKAUFSSTATUS", &HarvestLine::saleState},
    RecordField<HarvestLine>{"ID_BB_TSM_BAGMV1", &HarvestLine::bidSpecies},
    RecordField<HarvestLine>{"ID_BB_TSM_SOGMV", &HarvestLine::bidAssortment},
    RecordField<HarvestLine>{"ID_BB_TSM_STKLGMV", &HarvestLine::bidStrength},
    RecordField<HarvestLine>{"ID_BB_HAB_FAKTURA", &HarvestLine::sale},
    RecordField<HarvestLine>{"ID_BB_HAB_FAKTURA_ANGEBOT", &HarvestLine::offer},
};

/// The measure that a harvest record carried out at one place: a row of BB_HAB_NATURALVOLLZUG.
struct HarvestNature {
    std::int32_t record = 0, place = 0, measure = 0, report = 0;
    Date date;
    std::optional<double> area, volume;
    std::string remark;
};

inline constexpr std::array harvestNatureFields{
    RecordField<HarvestNature>{"ID_BB_HAB_KOPF", &HarvestNature::record},
    RecordField<HarvestNature>{"DATUM", &HarvestNature::date},
    RecordField<HarvestNature>{"FLACHE", &HarvestNature::area},
    RecordField<HarvestNature>{"MENGE", &HarvestNature::volume},
    RecordField<HarvestNature>{"BEMERKUNG", &HarvestNature::remark},
    RecordField<HarvestNature>{"ID_WALDORT", &HarvestNature::place},
    RecordField<HarvestNature>{"ID_BB_T_VOLLZUGSMASSNAHME", &HarvestNature::measure},
    RecordField<HarvestNature>{"ID_BB_NATURALVOLLZUG_DSW", &HarvestNature::report},
};

} // namespace tamarok::database
