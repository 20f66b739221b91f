#pragma once

#include <string_view>
#include <vector>

#include "areas/inventory.h"
#include "timber_profile.h"

/// Lots of timber sales by bid with their lines and bids, as they are drawn before they are written.
namespace tamarok::database::bids {

/// BB_T_KZ_ZUSCHLAG.ID; 0 as long as the sale is not decided.
enum class Award : std::int32_t { open, given, refused, reserved, withdrawn };

/// A measured line: one valuable log, or several alike.
struct Line {
    const profile::Species* species = nullptr;
    std::string_view assortment, assortmentGroup; ///< HOLZSORTE.HS, BB_TSM_SOGMV.SHORT
    std::string_view quality, qualityGroup;       ///< GUETEKLASSE.GKL, BB_TSM_GUGMV1.SHORT
    std::int32_t diameter = 0;                    ///< in cm
    double length = 0.0;                          ///< in m
    std::int32_t pieces = 1;
    double volume = 0.0;  ///< in cubic metres
    double reserve = 0.0; ///< euro per cubic metre
    double amount = 0.0;  ///< reserve price in euro
};

/// A bid; the first of a lot is the highest.
struct Bid {
    std::int32_t bidder = 0;
    double price = 0.0;  ///< euro per cubic metre
    double amount = 0.0; ///< euro for the lot
    Award award = Award::open;
};

struct Lot {
    std::int32_t number = 0; ///< 0 for timber that is not divided into lots yet
    std::vector<Line> lines;
    std::vector<Bid> bids;
    std::int32_t pieces = 0;
    double volume = 0.0;
    double reserve = 0.0; ///< euro
    bool isSold = false;  ///< to the first bid
};

/// Returns the lots of a sale. @param decided  whether the highest bids have got their award
std::vector<Lot> drawLots(Random& random, std::int32_t bidders, bool decided);

/// The value of `key` in a table of pairs, empty if there is none.
template <class Table>
std::string_view valueOf(const Table& table, std::string_view key)
{
    for (const auto& [name, value] : table)
        if (name == key) return value;
    return {};
}

/// Registers buyers of timber as bidders and returns their number: they have the IDs from 1 on. Errors: provider
/// failures.
std::int32_t writeBidders(ado::Connection& connection, const ReferenceOptions& options);

} // namespace tamarok::database::bids
