#pragma once

#include "area_keys.h"

/// The parts of the area of stores. Each writes records for one list type and its positions. Errors: provider failures.
namespace tamarok::database {

void writeDocumentBook(ado::Connection& connection, const ReferenceOptions& options);
void writeDistributionKeys(ado::Connection& connection, const ReferenceOptions& options);
void writeStock(ado::Connection& connection, const ReferenceOptions& options);

} // namespace tamarok::database
