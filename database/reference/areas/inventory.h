#pragma once

#include <map>
#include <string>
#include <string_view>

#include "areas/area_keys.h"

/// The parts of the area of inventory, sales by bid and cost accounting, and what they share.
namespace tamarok::database {

/// Each writes the records of one list type, with their positions. Errors: provider failures.
void writeStandingTimber(ado::Connection& connection, const ReferenceOptions& options);
void writeSalesByBid(ado::Connection& connection, const ReferenceOptions& options);
void writeTimberExchange(ado::Connection& connection, const ReferenceOptions& options);
void writeCostTransfers(ado::Connection& connection, const ReferenceOptions& options);
void writeKeyFigures(ado::Connection& connection, const ReferenceOptions& options);

/// Pi as all timber formulas have it. Required by the contract: a more exact value gives other volumes.
inline constexpr double timberPi = 3.1416;

/// IDs by the code of a key, in the order of the codes.
using Codes = std::map<std::string, std::int32_t, std::less<>>;

/// Returns the codes of a query that selects a code and an ID. Errors: provider failures.
Codes codesOf(ado::Connection& connection, std::string_view query);

/// Returns the ID of a code, or Null for one that is not there.
Variant idOf(const Codes& codes, std::string_view code);

/// Rounds to thousandths, half away from zero: volumes in cubic metres.
double thousandth(double value);

/// Returns the volume of a log in cubic metres, rounded to thousandths. @param diameter in cm, @param length in m
double logVolume(double diameter, double length);

/// Returns the code of the strength class (STKL.STKL) of a diameter in cm, as of logs measured without bark.
std::string_view strengthClassOf(double diameter);

/// Returns a time of day on 1 January 1900, the day on which columns of times keep it.
/// @param first, last  hours between which it lies
Date drawTime(Random& random, std::int32_t first, std::int32_t last, bool withSeconds = false);

/// Returns the name of a document: prefix, two digits of its year and its padded number, such as "ST-24-00017".
std::string documentNumber(std::string_view prefix, Date day, std::int32_t number);

} // namespace tamarok::database
