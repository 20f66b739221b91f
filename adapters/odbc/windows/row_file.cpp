#include "row_file.h"

#include <algorithm>
#include <filesystem>
#include <random>
#include <string>
#include <windows.h>

#include "failures.h"
#include "tamarok_windows/system_error.h"

namespace tamarok::odbc {

namespace {

HANDLE handleOf(std::intptr_t native) noexcept
{
    return reinterpret_cast<HANDLE>(native); // NOLINT(performance-no-int-to-ptr): a handle is a number
}

[[noreturn]] void fail(const std::string& what, const std::error_code& reason)
{
    throw Error{errors::deviceError, "The temporary file for rows cannot be " + what + ": " + reason.message() + ".",
                std::string{sourceName}};
}

OVERLAPPED placeOf(std::size_t position) noexcept
{
    constexpr unsigned halfBits = 32;
    OVERLAPPED place{};
    place.Offset = static_cast<DWORD>(position);
    place.OffsetHigh = static_cast<DWORD>(std::uint64_t{position} >> halfBits);
    return place;
}

DWORD limited(std::size_t size) noexcept
{
    constexpr std::size_t most = std::size_t{1} << 30U;
    return static_cast<DWORD>(std::min(size, most));
}

} // namespace

/// The file lies in the folder of this account for temporary files, is shared with nobody, and is deleted by the system
/// when its only handle is closed. A name that is taken is not used.
void RowFile::open()
{
    std::error_code problem;
    const std::filesystem::path folder = std::filesystem::temp_directory_path(problem);
    std::random_device random;
    constexpr int attempts = 10;
    for (int attempt = 0; attempt < attempts && !isOpen(); ++attempt) {
        const std::filesystem::path name = folder / ("tamarok-rows-" + std::to_string(random()));
        native_ = reinterpret_cast<std::intptr_t>(
            CreateFileW(name.c_str(), GENERIC_READ | GENERIC_WRITE, 0, nullptr, CREATE_NEW,
                        FILE_ATTRIBUTE_TEMPORARY | FILE_FLAG_DELETE_ON_CLOSE | FILE_FLAG_OPEN_REPARSE_POINT, nullptr));
        problem = windows::lastError();
        if (!isOpen() && problem != std::errc::file_exists) break;
    }
    if (!isOpen()) fail("made", problem);
}

void RowFile::close() noexcept
{
    if (isOpen()) CloseHandle(handleOf(native_));
    native_ = none;
}

std::size_t RowFile::readAt(std::size_t position, std::span<char> bytes) const
{
    OVERLAPPED place = placeOf(position);
    DWORD got = 0;
    if (ReadFile(handleOf(native_), bytes.data(), limited(bytes.size()), &got, &place) == 0 || got == 0)
        fail("read", windows::lastError());
    return got;
}

void RowFile::writeAt(std::size_t position, std::span<const char> bytes)
{
    while (!bytes.empty()) {
        OVERLAPPED place = placeOf(position);
        DWORD put = 0;
        if (WriteFile(handleOf(native_), bytes.data(), limited(bytes.size()), &put, &place) == 0)
            fail("written", windows::lastError());
        bytes = bytes.subspan(put);
        position += put;
    }
}

} // namespace tamarok::odbc
