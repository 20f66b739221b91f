#pragma once

#include <string>

#include "windows_headers.h"

/// The DLL that this code is part of.
namespace tamarok::com::module {

/// Counts the live objects and the locks of the DLL, while which it must not be unloaded.
void hold() noexcept;
void release() noexcept;
bool isHeld() noexcept;

/// Returns the path of the DLL's file.
std::wstring path();

/// An object that the DLL must outlive.
class Held {
public:
    Held(const Held&) = delete;
    Held& operator=(const Held&) = delete;

protected:
    Held() noexcept { hold(); }
    ~Held() { release(); }
};

} // namespace tamarok::com::module
