#pragma once

/// The headers of the driver manager of Windows. They use types of <windows.h>, and name the functions for both widths
/// by macros; the functions for wide characters are always called by their own names.

// clang-format off: the order matters
#include <sql.h>
#include <sqlext.h>
#include <sqltypes.h>
#include <sqlucode.h>
#include <windows.h>
// clang-format on
