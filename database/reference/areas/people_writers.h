#pragma once

#include "tamarok_database/reference_options.h"

#include "tamarok/ado.h"

/// The writers of the area. Each fills its own tables. Errors: provider failures.
namespace tamarok::database::people {

/// Adds users up to `options.records`. They are disabled and have no rights, since nobody signs in as one.
void writeUsers(ado::Connection& connection, const ReferenceOptions& options);

/// Fills the further columns of the partners that are there.
void writePartners(ado::Connection& connection, const ReferenceOptions& options);

/// Writes forest locations, contracts and sales of partners, and their free fields.
void writeForestOwners(ado::Connection& connection, const ReferenceOptions& options);

/// Completes the machine logs that are there and adds others up to `options.records`.
void writeMachines(ado::Connection& connection, const ReferenceOptions& options);

/// Completes the groups of partners that are there and adds others up to `options.records`.
void writePartnerGroups(ado::Connection& connection, const ReferenceOptions& options);

/// Writes months of wage entry with their entries.
void writeWageEntry(ado::Connection& connection, const ReferenceOptions& options);

/// Writes records of services, and the months of forest workers' wages that book them.
void writeServicesAndWages(ado::Connection& connection, const ReferenceOptions& options);

/// Writes what is paid over the years: the wages of the wage groups, the rates of the wage types that have their own,
/// the groups of the workers, and the wages of the machines' drivers.
void writeWageRates(ado::Connection& connection, const ReferenceOptions& options);

} // namespace tamarok::database::people
