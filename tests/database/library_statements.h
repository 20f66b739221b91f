#pragma once

#include <vector>

#include "fixed_statements.h"

/// What the library composes and sends on a reference database with business records; see also fixed_statements.h.
namespace tamarok::database::test {

/// The statements of the base selections, with the fields that their own tests try them with.
std::vector<FixedStatement> selectionStatements(const ado::ConnectionRef& sample);

/// The statements that fill a list view: with all columns of a type, and with each one alone, together with what names
/// the record of a row. The log list has `logStatements`.
std::vector<FixedStatement> listStatements(const ado::ConnectionRef& sample);

/// Each column of the log list, in detail and aggregated, and all columns in one list; of the invoices A1 and A8 where
/// the text differs.
std::vector<FixedStatement> logStatements(const ado::ConnectionRef& sample);

/// What the operations of locks, rights, options and timber send, in the order in which they send it: later statements
/// rest on what earlier ones have written. Changes the sample.
std::vector<FixedStatement> operationStatements(const ado::ConnectionRef& sample);

} // namespace tamarok::database::test
