#pragma once

/// The headers of the driver manager unixODBC.

#include <sql.h>
#include <sqlext.h>
#include <sqltypes.h>
#include <sqlucode.h>
