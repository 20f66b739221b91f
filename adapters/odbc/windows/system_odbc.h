#pragma once

/// The headers of the driver manager of Windows. They use types of <windows.h>, which comes first, and name the
/// functions for both widths by macros; the functions for wide characters are always called by their own names.

// clang-format off
#include <windows.h>
#include <sql.h>
#include <sqlext.h>
#include <sqltypes.h>
#include <sqlucode.h>
// clang-format on
