#pragma once

#include <cstdint>

#include "tamarok_database/reference_options.h"

#include "tamarok/ado.h"
#include "tamarok/date.h"

/// The business records besides timber lists, one function for each area of the application. The head records of each
/// kind have the IDs 1 to `options.records`, so that areas refer to each other's heads in whatever order they run.
/// Key tables, texts and master data are there already. Each area draws from random streams of its own, so that a
/// change in one leaves the others' rows as they are.
namespace tamarok::database {

/// Of the billing records (BB_FAKTURA_KOPF) each fourth is an offer: those with the IDs 1, 5, 9 and so on. The others
/// are invoices.
constexpr bool isOfferRecord(std::int32_t id) noexcept
{
    return id % 4 == 1;
}

/// The date of a billing record: in the order of their IDs they are evenly spread over the three years of the data.
/// @param id  1 to `options.records`
inline Date dayOfBillingRecord(std::int32_t id, const ReferenceOptions& options) noexcept
{
    constexpr std::int32_t daysOfData = 3 * 365;
    const auto back = static_cast<std::int64_t>(options.records - id) * daysOfData / options.records;
    return Date{dayOf(options.baseDate).days - static_cast<double>(back)};
}

/// Writes hunting districts, plans, game and small game, dogs, vehicles and their objects. Errors: provider failures.
void writeHunting(ado::Connection& connection, const ReferenceOptions& options);

/// Writes surveys of standing timber, timber sales by bid, cost accounting and its imports. Errors: provider failures.
void writeInventory(ado::Connection& connection, const ReferenceOptions& options);

/// Adds organisational levels up to `options.records`. The last area, since the others choose among the given levels.
/// Errors: provider failures.
void writeLevels(ado::Connection& connection, const ReferenceOptions& options);

/// Writes partners' further data, hours and wages, machine books, users. Errors: provider failures.
void writePeople(ado::Connection& connection, const ReferenceOptions& options);

/// Writes work orders, plans, order catalogue, monthly plans and provision of timber. Errors: provider failures.
void writePlanning(ado::Connection& connection, const ReferenceOptions& options);

/// Writes timber harvest records and cost vouchers. Errors: provider failures.
void writeReceipts(ado::Connection& connection, const ReferenceOptions& options);

/// Writes articles, billing, contracts, transports and the invoice journal. Errors: provider failures.
void writeSales(ado::Connection& connection, const ReferenceOptions& options);

/// Writes stock movements, distribution keys and the document book. Errors: provider failures.
void writeStores(ado::Connection& connection, const ReferenceOptions& options);

} // namespace tamarok::database
