#pragma once

#include <exception>
#include <string_view>

#include "windows_headers.h"

#include "tamarok/error.h"

/// Errors between the library and its callers. An error number of the runtime, 1 to 65535, is the HRESULT 0x800A0000
/// plus the number; a provider's number is an HRESULT already. Source and description go along.
namespace tamarok::com {

HRESULT resultOf(std::int32_t number) noexcept;

/// Returns the number of a failed call: the runtime's one where the system has a result code for it, such as 438 for
/// DISP_E_MEMBERNOTFOUND; otherwise the result code.
std::int32_t numberOf(HRESULT result) noexcept;

/// Returns the exception that a handler has caught as an Error. To be called inside a handler.
Error currentError();

/// Leaves source and description of an error for the caller of an interface, and returns its HRESULT.
HRESULT report(const Error& error) noexcept;

/// Writes an error where IDispatch::Invoke gives it, if the caller asked for it, and returns the result of Invoke.
HRESULT fill(EXCEPINFO* info, const Error& error) noexcept;

/// Makes the error of a failed call.
/// @param info  what IDispatch::Invoke gave with it, whose texts are freed; nullptr if none
/// @param what  what was called, for the description where the callee gives none
Error errorOf(HRESULT result, EXCEPINFO* info, std::string_view what);

/// Throws the error of a failed call, with what the object left for its caller.
void check(HRESULT result, std::string_view what);

/// Runs an operation of an interface; an exception becomes its HRESULT.
template <class Operation>
HRESULT guarded(const Operation& operation) noexcept
{
    try {
        return operation();
    } catch (...) {
        return report(currentError());
    }
}

} // namespace tamarok::com
