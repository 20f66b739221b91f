#include "file_handle.h"

#include <algorithm>
#include <array>

#include "wide_text.h"

namespace tamarok::com {

namespace {

struct Failure {
    std::int32_t number;
    std::string_view title;
};

constexpr Failure deviceFailure{errors::deviceError, "Device I/O error"};
constexpr Failure notFound{errors::fileNotFound, "File not found"};
constexpr Failure noFolder{errors::pathNotFound, "Path not found"};
constexpr Failure denied{errors::permissionDenied, "Permission denied"};
constexpr Failure noAccess{errors::pathAccess, "Path/File access error"};
constexpr Failure exists{errors::fileExists, "File already exists"};
constexpr Failure full{errors::diskFull, "Disk full"};

struct Row {
    DWORD code;
    Failure failure;
};

/// Any other code is a device I/O error.
constexpr std::array rows{
    Row{ERROR_FILE_NOT_FOUND, notFound},
    Row{ERROR_PATH_NOT_FOUND, noFolder},
    Row{ERROR_BAD_NETPATH, noFolder},
    Row{ERROR_BAD_NET_NAME, noFolder},
    Row{ERROR_INVALID_DRIVE, noFolder},
    Row{ERROR_ACCESS_DENIED, denied},
    Row{ERROR_SHARING_VIOLATION, denied},
    Row{ERROR_LOCK_VIOLATION, denied},
    Row{ERROR_WRITE_PROTECT, denied},
    Row{ERROR_PRIVILEGE_NOT_HELD, denied},
    Row{ERROR_FILE_EXISTS, exists},
    Row{ERROR_ALREADY_EXISTS, exists},
    Row{ERROR_DISK_FULL, full},
    Row{ERROR_HANDLE_DISK_FULL, full},
    Row{ERROR_INVALID_NAME, noAccess},
    Row{ERROR_FILENAME_EXCED_RANGE, noAccess},
    Row{ERROR_DIRECTORY, noAccess},
    Row{ERROR_BAD_PATHNAME, noAccess},
    Row{ERROR_CANT_RESOLVE_FILENAME, noAccess},
    Row{ERROR_TOO_MANY_OPEN_FILES, {errors::tooManyFiles, "Too many files"}},
    Row{ERROR_NOT_ENOUGH_MEMORY, {errors::outOfMemory, "Out of memory"}},
};

Error compose(const Failure& failure, std::wstring_view path, std::string_view reason)
{
    return Error{failure.number,
                 std::string{failure.title}.append(": '").append(toUtf8(path)).append("': ").append(reason)};
}

std::string systemReason(DWORD code)
{
    std::array<wchar_t, 512> buffer{};
    DWORD length = FormatMessageW(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr, code, 0,
                                  buffer.data(), static_cast<DWORD>(buffer.size()), nullptr);
    while (length > 0 && buffer[length - 1] <= L' ')
        --length;
    return length > 0 ? toUtf8(std::wstring_view{buffer.data(), length}) : "error " + std::to_string(code);
}

} // namespace

std::wstring systemPath(std::string_view path)
{
    std::wstring wide = toWide(path);
    if (wide.empty() || wide.find(L'\0') != std::wstring::npos)
        throw compose(noAccess, wide.c_str(), wide.empty() ? "the path is empty" : "the path holds a NUL");
    std::ranges::replace(wide, L'/', L'\\');
    return wide;
}

Error fileFailure(std::wstring_view path, DWORD code)
{
    const auto* const row = std::ranges::find(rows, code, &Row::code);
    return compose(row == rows.end() ? deviceFailure : row->failure, path, systemReason(code));
}

Error pathFailure(std::wstring_view path, std::string_view reason)
{
    return compose(noAccess, path, reason);
}

FileHandle openFile(const std::wstring& path, const Opening& opening) noexcept
{
    const DWORD flags = FILE_ATTRIBUTE_NORMAL | (opening.followsLinks ? 0U : FILE_FLAG_OPEN_REPARSE_POINT);
    return FileHandle{CreateFileW(path.c_str(), opening.access, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                                  nullptr, opening.disposition, flags, nullptr)};
}

BY_HANDLE_FILE_INFORMATION informationOf(const FileHandle& file, std::wstring_view path)
{
    BY_HANDLE_FILE_INFORMATION information{};
    if (GetFileInformationByHandle(file.get(), &information) == 0) throw fileFailure(path, GetLastError());
    return information;
}

} // namespace tamarok::com
