#pragma once

namespace tamarok::embedded {

class Database;

/// Brings a file of an older layout to the present one, completely or not at all. Layout 2 sorts expansions (ß) as
/// their letters (ss): the indexes over texts are sorted anew. A file opened for reading only is left as it is. Error
/// 2627 if two rows of the file have a unique key that differs in an expansion alone.
void updateLayout(Database& database);

} // namespace tamarok::embedded
