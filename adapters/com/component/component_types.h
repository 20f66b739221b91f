#pragma once

// The dual interfaces and the record of the type library, as the compiler of the interface description writes them.
#include "windows_headers.h"
// The system's headers come first.
#include "Tamarok_Comm.h"
