#include "types/define_type.h"

namespace tamarok::catalogue::types {
namespace {

using enum Aggregate;
using enum Kind;

// FHPEXP: exchanged timber data. A row is an imported measurement record of FHP_IMPORT; one of its summary lines as soon as
// a column of FHP_SUPRO is shown; one of the stems of the line (FHP_ESTPRO). These two aliases bring several rows, in each
// of which the quantities and amounts of the level above repeat. FHP_KA is the contract of sale, FHP_KFR the carrier,
// FHP_KKU the customer and FHP_KLI the supplier to which the record refers. Ids are stored in lists and models: a number
// that is free is never used again for another column.
constexpr ListDescription description{
    .key = "FHPEXP",
    .base = "FHP_IMPORT",
    .label = 28750,
    .columns =
        {
            {1, 28751, text, "FHP_IMPORT.NUMMER"},
            {2, 28752, date, "FHP_IMPORT.IMPORTDATUM"},
            {3, 28753, time, "FHP_IMPORT.UHRZEIT"},
            {4, 28754, text, "FHP_IMPORT.DATEINAME"},
            {5, 28755, text, "FHP_IMPORT.VERSION"},
            {6, 28756, text, "FHP_IMPORT.PROTOKOLL_NR"},
            {7, 28757, date, "FHP_IMPORT.MESSDATUM"},
            {8, 28758, text, "FHP_IMPORT.LIEFERSCHEIN_NR"},
            {9, 28759, date, "FHP_IMPORT.LIEFERDATUM"},
            {10, 28760, whole, "FHP_IMPORT.FUHREN_NR"},
            {11, 28761, text, "FHP_IMPORT.KENNZEICHEN"},
            {12, 28762, twoDecimals, "FHP_IMPORT.GEWICHT_BRUTTO", sum},
            {13, 28763, twoDecimals, "FHP_IMPORT.GEWICHT_TARA", sum},
            {14, 28764, twoDecimals, "ROUND(FHP_IMPORT.GEWICHT_BRUTTO-FHP_IMPORT.GEWICHT_TARA,2)", sum},
            {15, 28765, whole, "FHP_IMPORT.ANZAHL_SATZE", sum},
            {16, 28766, whole, "FHP_IMPORT.STUCK", sum},
            {17, 28767, threeDecimals, "FHP_IMPORT.MENGE", sum},
            {18, 28768, amount, "FHP_IMPORT.BETRAG", sum},
            {19, 28769, text, "(CASE WHEN FHP_IMPORT.UBERNOMMEN = 1 THEN 'Ja' ELSE 'Nein' END)"},
            {20, 28770, date, "FHP_IMPORT.UBERNAHMEDATUM"},
            {21, 28771, text, "FHP_IMPORT.FEHLERTEXT"},
            {22, 28772, text, "FHP_IMPORT.BEMERKUNG"},
            // The keys of the record.
            {40, 28773, text, "FHP_KA.NUMMER"},
            {41, 28774, text, "FHP_KA.BEZEICHNUNG"},
            {42, 28775, date, "FHP_KA.DATUM_VON"},
            {43, 28776, date, "FHP_KA.DATUM_BIS"},
            {44, 28777, threeDecimals, "FHP_KA.MENGE", max},
            {50, 28778, text, "FHP_KFR.NUMMER"},
            {51, 28779, text, "FHP_KFR.NAME"},
            {52, 28780, text, "FHP_KFR.PLZ"},
            {53, 28781, text, "FHP_KFR.ORT"},
            {60, 28782, text, "FHP_KKU.NUMMER"},
            {61, 28783, text, "FHP_KKU.NAME"},
            {62, 28784, text, "FHP_KKU.PLZ"},
            {63, 28785, text, "FHP_KKU.ORT"},
            {64, 28786, text, "FHP_KKU.WERK"},
            {70, 28787, text, "FHP_KLI.NUMMER"},
            {71, 28788, text, "FHP_KLI.NAME"},
            {72, 28789, text, "FHP_KLI.PLZ"},
            {73, 28790, text, "FHP_KLI.ORT"},
            // Summary lines.
            {80, 28791, whole, "FHP_SUPRO.LAUFNUMMER"},
            {81, 28792, text, "FHP_SUPRO.HA"},
            {82, 28793, text, "FHP_SUPRO.HS"},
            {83, 28794, text, "FHP_SUPRO.GKL"},
            {84, 28795, text, "FHP_SUPRO.STKL"},
            {85, 28796, whole, "FHP_SUPRO.STUCK", sum},
            {86, 28797, threeDecimals, "FHP_SUPRO.MENGE_BRUTTO", sum},
            {87, 28798, threeDecimals, "FHP_SUPRO.RINDENABZUG", sum},
            {88, 28799, threeDecimals, "FHP_SUPRO.MENGE", sum},
            {89, 28800, twoDecimals, "FHP_SUPRO.PREIS"},
            {90, 28801, amount, "FHP_SUPRO.BETRAG", sum},
            // Stems of a line.
            {100, 28802, whole, "FHP_ESTPRO.STAMMNUMMER"},
            {101, 28803, twoDecimals, "FHP_ESTPRO.LANGE"},
            {102, 28804, whole, "FHP_ESTPRO.DURCHMESSER"},
            {103, 28805, whole, "FHP_ESTPRO.ZOPF"},
            {104, 28806, whole, "FHP_ESTPRO.RINDE"},
            {105, 28807, threeDecimals, "FHP_ESTPRO.MENGE", sum},
            {106, 28808, text, "FHP_ESTPRO.FEHLER"},
        },
    .joins =
        {
            {"40-44", "", " LEFT JOIN FHP_KA ON FHP_KA.ID = FHP_IMPORT.ID_FHP_KA"},
            {"50-53", "", " LEFT JOIN FHP_KFR ON FHP_KFR.ID = FHP_IMPORT.ID_FHP_KFR"},
            {"60-64", "", " LEFT JOIN FHP_KKU ON FHP_KKU.ID = FHP_IMPORT.ID_FHP_KKU"},
            {"70-73", "", " LEFT JOIN FHP_KLI ON FHP_KLI.ID = FHP_IMPORT.ID_FHP_KLI"},
            {"80-90", "", " LEFT JOIN FHP_SUPRO ON FHP_SUPRO.ID_FHP_IMPORT = FHP_IMPORT.ID"},
            {"100-106", "80", " LEFT JOIN FHP_ESTPRO ON FHP_ESTPRO.ID_FHP_SUPRO = FHP_SUPRO.ID"},
        },
    .choices =
        {
            {"FHPEXP", "1-22, 40-44, 50-53, 60-64, 70-73"},
            {"FHPIZ", "1-2, 6-9, 40-41, 51, 61, 64, 71, 80-90, 100-106"},
        },
};

} // namespace

constinit const ListType fhpexp = defineType<description>();

} // namespace tamarok::catalogue::types
