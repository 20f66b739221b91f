#pragma once

#include "tamarok_embedded/procedures.h"

namespace tamarok::embedded {

/// tmk_OPTIONEN_INS @PROPERTY, @KIND, @VALUE: writes one property of OPTIONEN, in its row if there is
/// one of that name in any case, else in a new one. The kind selects the column: 1 TEXT_VALUE,
/// 2 NUMBER_VALUE, 3 DOUBLE_VALUE, 4 DATE_VALUE; the value is a text, and an empty one is stored as Null. Dates come as
/// the caller's regional short form: with points day first, with slashes in the connection's date order, ISO always. A
/// value that does not convert is an error (native 245, 8114, 241) and nothing is written.
Procedure optionenIns();

} // namespace tamarok::embedded
