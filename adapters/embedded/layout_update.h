#pragma once

namespace tamarok::embedded {

class Database;

/// Brings a file of an older layout to the present one, completely or not at all. Layout 2 sorts expansions (ß) as
/// their letters (ss): the indexes over texts are sorted anew. Errors: 2627 if two rows of
/// the file have a unique key that differs in an expansion alone; 5120 for a file opened for reading only, whose
/// indexes would find other rows than its tables hold.
void updateLayout(Database& database);

} // namespace tamarok::embedded
