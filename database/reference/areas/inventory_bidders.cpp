#include <algorithm>
#include <array>

#include "areas/inventory_bids.h"

namespace tamarok::database::bids {
namespace {

constexpr std::uint64_t bidderStream = 6'000'000'000'003;

constexpr std::array bidderColumns{
    textColumn("NUMMER"),        textColumn("NAME"),         textColumn("STRASSE"),
    textColumn("PLZ"),           textColumn("ORT"),          wholeColumn("ID_T_BUNDESLAND"),
    wholeColumn("ID_BB_T_LAND"), wholeColumn("ID_PERSONAL"), textColumn("TELEFON"),
    textColumn("EMAIL"),         numberColumn("BURGSCHAFT"), dayColumn("BURGSCHAFT_BIS"),
};

consteval std::size_t bidder(std::string_view name)
{
    return placeOf(bidderColumns, name);
}

/// The province (T_BUNDESLAND.SHORT) of an Austrian postcode by its first digit.
constexpr std::array<std::pair<std::string_view, std::string_view>, 4> provincesByPostcode{
    {{"3", "NÖ"}, {"4", "OÖ"}, {"6", "TI"}, {"8", "ST"}}};

} // namespace

std::int32_t writeBidders(ado::Connection& connection, const ReferenceOptions& options)
{
    constexpr std::size_t mostBidders = 60;
    const Codes provinces = codesOf(connection, "SELECT SHORT, ID FROM T_BUNDESLAND");
    const Codes countries = codesOf(connection, "SELECT SHORT, ID FROM BB_T_LAND");
    const auto partners =
        rowsOf(connection, "SELECT ID_PERSONAL, BEZEICHNUNG, STRASSE, PLZ, ORT, TELEFON, ISNULL(NATION,'') AS NATION, "
                           "LEFT(ISNULL(PLZ,''),1) AS REGION FROM PERSONAL WHERE GRUPPE IN ('Säge','Handel') "
                           "ORDER BY ID_PERSONAL");
    Random random{options.seed, bidderStream};
    BulkInsert row{connection, "BB_MV_BIETER", bidderColumns};
    const std::size_t count = std::min(mostBidders, partners.size());
    for (std::size_t i = 0; i < count; ++i) {
        const std::vector<Variant>& partner = partners[i * partners.size() / count];
        const std::string country = partner.at(6).asString();
        const auto number = static_cast<std::int32_t>(i + 1);
        row[bidder("NUMMER")] = "B" + paddedNumber(number, 4);
        row[bidder("ID_PERSONAL")] = partner.at(0);
        row[bidder("NAME")] = partner.at(1);
        row[bidder("STRASSE")] = partner.at(2);
        row[bidder("PLZ")] = partner.at(3);
        row[bidder("ORT")] = partner.at(4);
        row[bidder("TELEFON")] = partner.at(5);
        row[bidder("ID_BB_T_LAND")] = idOf(countries, country);
        row[bidder("ID_T_BUNDESLAND")] = Null{};
        if (country == "AT")
            row[bidder("ID_T_BUNDESLAND")] = idOf(provinces, valueOf(provincesByPostcode, partner.at(7).asString()));
        row[bidder("EMAIL")] = "holzeinkauf" + std::to_string(number) + "@example.com";
        row[bidder("BURGSCHAFT")] = random.between(1, 20) * 5000.0;
        row[bidder("BURGSCHAFT_BIS")] = Date{dayOf(options.baseDate).days + random.between(-400, 400)};
        row.insert();
    }
    return static_cast<std::int32_t>(count);
}

} // namespace tamarok::database::bids
