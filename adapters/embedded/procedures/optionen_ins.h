#pragma once

#include "tamarok_embedded/procedures.h"

namespace tamarok::embedded {

/// tmk_OPTIONEN_INS @PROPERTY, @KIND, @VALUE: writes one property of OPTIONEN, in the row of exactly that name, case
/// and trailing blanks included, or else in a new one. The kind selects the column: 1 TEXT_VALUE, 2 NUMBER_VALUE, 3
/// DOUBLE_VALUE, 4 DATE_VALUE; the value is a text, and an empty one is stored as Null. A date comes as the caller's
/// regional short form and is read by the regional settings of the thread's Platform, those of the caller's machine; a
/// text that is no date there, such as "20240305", is read as by CAST. A value that does not convert is an error
/// (native 245, 8114, 241) and nothing is written.
Procedure optionenIns();

} // namespace tamarok::embedded
