#pragma once

#include "hunting_keys.h"

/// The parts of the area of hunting, in the order in which they are written: later parts refer to earlier ones.
namespace tamarok::database {

/// Each writes records for one list type and its positions. Errors: provider failures.
void writeHuntingDistricts(ado::Connection& connection, const ReferenceOptions& options);
void writeObjects(ado::Connection& connection, const ReferenceOptions& options);
void writeLogBooks(ado::Connection& connection, const ReferenceOptions& options);
void writeCullPlans(ado::Connection& connection, const ReferenceOptions& options, const HuntingKeys& keys);
void writeGame(ado::Connection& connection, const ReferenceOptions& options, const HuntingKeys& keys);
void writeSmallGame(ado::Connection& connection, const ReferenceOptions& options, const HuntingKeys& keys);
void writeHuntingDogs(ado::Connection& connection, const ReferenceOptions& options, const HuntingKeys& keys);

} // namespace tamarok::database
