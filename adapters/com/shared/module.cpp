#include "module.h"

#include <atomic>

#include "failures.h"

namespace tamarok::com::module {

namespace {

/// The one count of the process that COM asks a DLL for.
std::atomic<long>& holders() noexcept
{
    static std::atomic<long> count{0};
    return count;
}

} // namespace

void hold() noexcept
{
    holders().fetch_add(1, std::memory_order_relaxed);
}

void release() noexcept
{
    holders().fetch_sub(1, std::memory_order_release);
}

bool isHeld() noexcept
{
    return holders().load(std::memory_order_acquire) != 0;
}

std::wstring path()
{
    HMODULE handle = nullptr;
    // Any address of this file will do; the function's own needs no further variable.
    const auto* const here = static_cast<const wchar_t*>(static_cast<const void*>(&holders()));
    if (GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT, here,
                           &handle) == 0)
        throw Error{resultOf(-1), "The DLL does not find its own file."};
    std::wstring name(MAX_PATH, L'\0');
    for (;;) {
        const DWORD length = GetModuleFileNameW(handle, name.data(), static_cast<DWORD>(name.size()));
        if (length < name.size()) {
            name.resize(length);
            return name;
        }
        name.resize(name.size() * 2);
    }
}

} // namespace tamarok::com::module
