#pragma once

struct sqlite3;

/// The guard of joins over texts.
///
/// For a join without an index SQLite builds one for the statement, and beside it a Bloom filter of the hashes of its
/// keys. SQLite 3.40 hashes a text by its length. Texts that are equal by the collation but differ in trailing blanks
/// or in the number of bytes then miss each other, and the join loses rows.
namespace tamarok::embedded {

/// Switches the Bloom filters of a connection off.
void switchOffJoinFilters(sqlite3* database);

/// Runs a join of texts that differ in case and trailing blanks. The collation must have been registered.
/// Error 0x80004005, which names the version of SQLite, if the join loses rows.
void requireCompleteTextJoins(sqlite3* database);

} // namespace tamarok::embedded
