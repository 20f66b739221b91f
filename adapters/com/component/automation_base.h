#pragma once

// What the generated header of the dual interfaces includes for automation_base.idl.
#include "windows_headers.h"
