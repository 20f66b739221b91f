#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "timber_profile.h"

#include "tamarok/date.h"

namespace tamarok::database {

inline constexpr std::size_t versionCount = profile::versions.size();

/// One measured line of a timber list. An empty text is Null.
struct LogLine {
    std::int32_t number = 0;
    const profile::Species* species = nullptr;
    std::string_view assortment;
    std::string_view quality;
    std::optional<std::size_t> strength; ///< ordinal of the strength class
    std::string_view volumeClass;
    std::optional<double> length;   ///< metres
    std::optional<double> diameter; ///< centimetres
    std::optional<std::int32_t> pieces;
    double volume = 0.0;                         ///< cubic metres
    double bark = 0.0;                           ///< in the unit of the list's bark rule
    double quantity = 0.0;                       ///< in the unit of the list
    bool isQuantityChanged = false;              ///< the invoiced quantity differs from the measured one
    double stackedFactor = 0.0;                  ///< cubic metres per stacked cubic metre
    std::optional<double> pieceFactor;           ///< cubic metres per 100 pieces
    std::optional<double> dryPercent;            ///< dry matter in percent of the weight
    std::optional<double> energy;                ///< megawatt hours
    std::optional<double> lorryGross, lorryTare; ///< tons
    std::string_view colour;
    std::string_view note;
    std::array<double, versionCount> price{};           ///< by version, in the document's currency and unit
    std::array<double, versionCount> settledQuantity{}; ///< by version, in the document's unit
};

/// Unit of a bark deduction, with the value of LOGS.RINDEPROZENT.
enum class BarkUnit : std::int16_t { Centimetres = 0, Percent = 1, None = 2 };

/// Bark deduction of a list.
struct BarkRule {
    std::int32_t key = 1; ///< RINDENKENNZ.ID_RINDENKENNZ
    BarkUnit unit = BarkUnit::None;
};

/// A timber list: the lines measured at one place on one day.
struct TimberList {
    std::string name;
    Date date;
    std::int32_t place = 0;
    std::int32_t level = 0; ///< organisation level of the place
    std::int32_t user = 0;
    std::int32_t owner = 0; ///< PERSONAL.ID_PERSONAL of the forest owner
    std::int16_t listKind = 1;
    std::string_view felling;
    std::string_view calamity;
    std::string_view assortment; ///< HOLZSORTE.HS of most lines
    const profile::Species* mainSpecies = nullptr;
    const profile::Species* secondSpecies = nullptr;
    double diameterShift = 0.0; ///< centimetres added to the species' mean diameter
    BarkRule bark;
    std::array<std::optional<std::int32_t>, 10> relations; ///< RELTABLE.ID by list
    std::optional<std::int32_t> workOrder, workOrderItem, plannedOrder;
    std::optional<std::int32_t> product, object, method, project, order;
    std::optional<std::int32_t> saleKind;
    std::int32_t pile = 0;
    std::vector<LogLine> lines;
};

/// An invoice or settlement of a delivery.
struct Document {
    std::size_t version = profile::invoiceVersion; ///< index into profile::versions
    std::string name;
    std::int32_t partner = 0;          ///< PERSONAL.ID_PERSONAL
    std::string_view contract;         ///< VERTRAEGE.VERTRAG_NAME, empty without contract
    std::int32_t unit = 1;             ///< WARENEINHEIT.EINHEIT_ID of the quantities
    bool isInEuro = true;              ///< otherwise in the national currency
    std::optional<double> guideFigure; ///< percent of the guide price
    Date date;
    std::optional<Date> paid;
    std::int32_t bookingNumber = 1, chapter = 1, title = 1; ///< BUCHNR_ID, HH_KAPITEL.ID, HH_TITEL.ID
    bool isClosed = false;                                  ///< older than a year
};

/// An article on an invoice besides the timber.
struct Article {
    std::string_view number, text;
    double quantity = 0.0, price = 0.0; ///< price per piece
    double discount = 0.0, tax = 20.0;  ///< percent
    std::string origin;                 ///< mark of a piece of game, empty for other articles
};

/// Timber lists that are sold together, with their documents and transport.
struct Delivery {
    std::int64_t number = 0; ///< from 1
    const profile::Kind* kind = nullptr;
    std::vector<TimberList> lists;
    std::vector<Document> documents; ///< none while the delivery is not invoiced
    std::vector<Article> articles;
    bool hasSurcharges = false; ///< its logs have additional prices
    bool goesByRail = false;    ///< loaded from the lorry onto a wagon
    bool goesByLorry = false;   ///< has a delivery note
    bool isProvided = false;    ///< made ready for collection as a lot
};

} // namespace tamarok::database
