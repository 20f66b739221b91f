#pragma once

#include <string>
#include <string_view>
#include <utility>

#include "windows_headers.h"

#include "tamarok/error.h"

namespace tamarok::com {

/// An open file of the system; closed at the end.
class FileHandle {
public:
    explicit FileHandle(HANDLE handle = INVALID_HANDLE_VALUE) noexcept : handle_{handle} {}
    FileHandle(FileHandle&& other) noexcept : handle_{std::exchange(other.handle_, INVALID_HANDLE_VALUE)} {}
    FileHandle& operator=(FileHandle&& other) noexcept
    {
        std::swap(handle_, other.handle_);
        return *this;
    }
    ~FileHandle()
    {
        if (isOpen()) CloseHandle(handle_);
    }

    HANDLE get() const noexcept { return handle_; }
    bool isOpen() const noexcept { return handle_ != INVALID_HANDLE_VALUE; }

private:
    HANDLE handle_;
};

/// Returns a path as the system has it: each slash is a backslash. Error 75 for an empty path and for one with a NUL.
std::wstring systemPath(std::string_view path);

/// Returns the Error for a failure of a file operation. @param code  the system's error code
Error fileFailure(std::wstring_view path, DWORD code);

/// Returns error 75 for a path that does not lead to what the operation needs. @param reason  "is a folder"
Error pathFailure(std::wstring_view path, std::string_view reason);

/// What a file is to be opened for.
struct Opening {
    DWORD access;              ///< GENERIC_READ, FILE_APPEND_DATA and the like
    DWORD disposition;         ///< OPEN_EXISTING or CREATE_NEW
    bool followsLinks = false; ///< whether a link leads to the file; never for a new file
};

/// Opens a file, which others may read, write and delete meanwhile.
/// @return a handle that is not open, with the system's last error set, if the system refuses it
FileHandle openFile(const std::wstring& path, const Opening& opening) noexcept;

/// Returns what the system tells of an open file. @param path  for messages
BY_HANDLE_FILE_INFORMATION informationOf(const FileHandle& file, std::wstring_view path);

} // namespace tamarok::com
