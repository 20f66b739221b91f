#pragma once

#include <string>
#include <system_error>
#include <windows.h>

#include "system_files.h"

/// Handles of Windows behind the file operations.
namespace tamarok::embedded {

inline HANDLE handleOf(const FileHandle& file) noexcept
{
    return reinterpret_cast<HANDLE>(file.get()); // NOLINT(performance-no-int-to-ptr): a handle is a number
}

inline FileHandle fileOf(HANDLE handle) noexcept
{
    return FileHandle{reinterpret_cast<FileHandle::Native>(handle)};
}

/// How CreateFileW is called.
struct Opening {
    DWORD access = 0;
    DWORD sharing = FILE_SHARE_READ | FILE_SHARE_WRITE;
    DWORD disposition = OPEN_EXISTING;
    DWORD flags = FILE_ATTRIBUTE_NORMAL;
    SECURITY_ATTRIBUTES* security = nullptr;
};

/// Calls CreateFileW. The handle is not open where the system refuses.
FileHandle openNative(const std::string& path, const Opening& opening, std::error_code& failed) noexcept;

/// The same, and refuses a symbolic link or another reparse point in the place of the file.
FileHandle openWithoutLink(const std::string& path, Opening opening, std::error_code& failed) noexcept;

} // namespace tamarok::embedded
