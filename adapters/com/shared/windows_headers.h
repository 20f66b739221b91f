#pragma once

// The system's headers of COM automation, in the order and with the switches that they need.
#ifndef WIN32_LEAN_AND_MEAN
#define WIN32_LEAN_AND_MEAN
#endif
#ifndef NOMINMAX
#define NOMINMAX
#endif
#include <windows.h>
// The base header comes first.
#include <dispex.h>
#include <oaidl.h>
#include <objbase.h>
#include <ocidl.h>
#include <oleauto.h>

// The library has a class of this name; the system's functions are called by their full names.
#undef MessageBox
