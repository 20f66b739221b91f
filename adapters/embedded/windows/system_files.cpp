#include "system_files.h"

#include <algorithm>
#include <random>
#include <windows.h>

#include "native_file.h"
#include "path_text.h"
#include "tamarok_windows/system_error.h"
#include "tamarok_windows/wide_text.h"

namespace tamarok::embedded {

namespace {

using windows::lastError;
using windows::wide;

/// For looking at a file of whatever kind: such a handle hinders nobody.
constexpr Opening looking{.access = FILE_READ_ATTRIBUTES,
                          .sharing = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                          .flags = FILE_FLAG_BACKUP_SEMANTICS};

constexpr std::int64_t joined(DWORD high, DWORD low) noexcept
{
    return static_cast<std::int64_t>(std::uint64_t{high} << 32U | low);
}

/// The result of a call that returns zero for a failure.
std::error_code resultOf(BOOL done) noexcept
{
    return done != 0 ? std::error_code{} : lastError();
}

[[noreturn]] void failSystem()
{
    throw std::system_error{lastError()};
}

FileKind kindOf(const BY_HANDLE_FILE_INFORMATION& found) noexcept
{
    if ((found.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0) return FileKind::Directory;
    if ((found.dwFileAttributes & FILE_ATTRIBUTE_DEVICE) != 0) return FileKind::Other;
    return FileKind::Regular;
}

std::size_t limited(std::size_t size) noexcept
{
    constexpr std::size_t most = std::size_t{1} << 30U;
    return std::min(size, most);
}

} // namespace

std::filesystem::path pathOf(const std::string& text)
{
    return wide(text);
}

std::string textOf(const std::filesystem::path& path)
{
    return windows::narrow(path.native());
}

void FileHandle::closeNative(Native native) noexcept
{
    CloseHandle(reinterpret_cast<HANDLE>(native)); // NOLINT(performance-no-int-to-ptr): a handle is a number
}

FileHandle openNative(const std::string& path, const Opening& opening, std::error_code& failed) noexcept
{
    FileHandle file = fileOf(CreateFileW(wide(path).c_str(), opening.access, opening.sharing, opening.security,
                                         opening.disposition, opening.flags, nullptr));
    failed = file.isOpen() ? std::error_code{} : lastError();
    return file;
}

FileHandle openWithoutLink(const std::string& path, Opening opening, std::error_code& failed) noexcept
{
    opening.flags |= FILE_FLAG_OPEN_REPARSE_POINT;
    FileHandle file = openNative(path, opening, failed);
    BY_HANDLE_FILE_INFORMATION found{};
    if (file.isOpen() && GetFileInformationByHandle(handleOf(file), &found) != 0 &&
        (found.dwFileAttributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0) {
        failed = std::make_error_code(std::errc::too_many_symbolic_link_levels);
        file.close();
    }
    return file;
}

std::optional<FileStatus> statusOf(const std::string& path, std::error_code& failed) noexcept
{
    const FileHandle file = openNative(path, looking, failed);
    return file.isOpen() ? statusOf(file, failed) : std::nullopt;
}

std::optional<FileStatus> entryOf(const std::string& path) noexcept
{
    Opening opening = looking;
    opening.flags |= FILE_FLAG_OPEN_REPARSE_POINT;
    std::error_code failed;
    const FileHandle file = openNative(path, opening, failed);
    BY_HANDLE_FILE_INFORMATION found{};
    if (!file.isOpen() || GetFileInformationByHandle(handleOf(file), &found) == 0) return std::nullopt;
    std::optional<FileStatus> status = statusOf(file, failed);
    if (status && (found.dwFileAttributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0) status->kind = FileKind::Link;
    return status;
}

std::optional<FileStatus> statusOf(const FileHandle& file, std::error_code& failed) noexcept
{
    BY_HANDLE_FILE_INFORMATION found{};
    failed = resultOf(GetFileInformationByHandle(handleOf(file), &found));
    if (failed) return std::nullopt;
    return FileStatus{.kind = kindOf(found),
                      .names = found.nNumberOfLinks,
                      .size = joined(found.nFileSizeHigh, found.nFileSizeLow),
                      .modified = joined(found.ftLastWriteTime.dwHighDateTime, found.ftLastWriteTime.dwLowDateTime),
                      .identity = {found.dwVolumeSerialNumber,
                                   static_cast<std::uint64_t>(joined(found.nFileIndexHigh, found.nFileIndexLow))}};
}

bool hasName(const FileHandle& file, const std::string& path) noexcept
{
    std::error_code failed;
    const std::optional<FileStatus> mine = statusOf(file, failed);
    const std::optional<FileStatus> there = entryOf(path);
    return mine && there && there->kind != FileKind::Link && mine->identity == there->identity;
}

/// The system writes `\\?\` before the path, and `\\?\UNC\` before one of the network.
std::string realPath(const std::string& path, std::error_code& failed)
{
    const FileHandle file = openNative(path, looking, failed);
    if (!file.isOpen()) return {};
    std::wstring name(MAX_PATH, L'\0');
    for (;;) {
        const DWORD length = GetFinalPathNameByHandleW(handleOf(file), name.data(), static_cast<DWORD>(name.size()), 0);
        if (length == 0) {
            failed = lastError();
            return {};
        }
        const bool isComplete = length < name.size();
        name.resize(length);
        if (isComplete) break;
    }
    constexpr std::wstring_view network = LR"(\\?\UNC\)";
    constexpr std::wstring_view local = LR"(\\?\)";
    if (name.starts_with(network)) return R"(\\)" + windows::narrow(std::wstring_view{name}.substr(network.size()));
    return windows::narrow(std::wstring_view{name}.substr(name.starts_with(local) ? local.size() : 0));
}

std::error_code checkAccess(const std::string& path, bool writing) noexcept
{
    Opening opening = looking;
    opening.access = writing ? GENERIC_READ | GENERIC_WRITE : GENERIC_READ;
    std::error_code failed;
    openNative(path, opening, failed);
    return failed;
}

std::error_code checkFolderAccess(const std::string& folder) noexcept
{
    Opening opening = looking;
    opening.access = FILE_ADD_FILE;
    std::error_code failed;
    openNative(folder, opening, failed);
    return failed;
}

FileHandle openFile(const std::string& path, std::error_code& failed) noexcept
{
    return openWithoutLink(path, {.access = GENERIC_READ | GENERIC_WRITE}, failed);
}

FileHandle openForReading(const std::string& path, std::error_code& failed) noexcept
{
    Opening opening = looking;
    opening.access = GENERIC_READ;
    return openWithoutLink(path, opening, failed);
}

FileHandle createFile(const std::string& path, std::error_code& failed) noexcept
{
    return openWithoutLink(path, {.access = GENERIC_READ | GENERIC_WRITE | WRITE_DAC, .disposition = CREATE_NEW},
                           failed);
}

/// The file takes the rights of its folder, which is one for this account alone.
FileHandle createPrivateFile(const std::string& path, std::error_code& failed) noexcept
{
    return openWithoutLink(path, {.access = GENERIC_WRITE, .disposition = CREATE_ALWAYS}, failed);
}

std::size_t readBeginning(const FileHandle& file, std::span<char> bytes)
{
    const LARGE_INTEGER beginning{};
    if (SetFilePointerEx(handleOf(file), beginning, nullptr, FILE_BEGIN) == 0) failSystem();
    return readNext(file, bytes);
}

std::size_t readNext(const FileHandle& file, std::span<char> bytes)
{
    DWORD count = 0;
    if (ReadFile(handleOf(file), bytes.data(), static_cast<DWORD>(limited(bytes.size())), &count, nullptr) == 0)
        failSystem();
    return count;
}

void writeNext(const FileHandle& file, std::span<const char> bytes)
{
    while (!bytes.empty()) {
        DWORD count = 0;
        const auto size = static_cast<DWORD>(limited(bytes.size()));
        if (WriteFile(handleOf(file), bytes.data(), size, &count, nullptr) == 0) failSystem();
        bytes = bytes.subspan(count);
    }
}

std::error_code syncFile(const FileHandle& file) noexcept
{
    return resultOf(FlushFileBuffers(handleOf(file)));
}

void removeFile(const std::string& path) noexcept
{
    DeleteFileW(wide(path).c_str());
}

// The renaming itself waits until it is on the disk.

std::error_code renameToNew(const std::string& from, const std::string& to) noexcept
{
    return resultOf(MoveFileExW(wide(from).c_str(), wide(to).c_str(), MOVEFILE_WRITE_THROUGH));
}

std::error_code renameOver(const std::string& from, const std::string& to) noexcept
{
    return resultOf(
        MoveFileExW(wide(from).c_str(), wide(to).c_str(), MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH));
}

void syncFolder(const std::string&) noexcept {}

bool openFilesCanLoseNames() noexcept
{
    return false;
}

std::error_code systemErrorOf(int number) noexcept
{
    return windows::systemError(static_cast<unsigned long>(number));
}

bool tellsFullDisk(std::error_code code) noexcept
{
    return code == std::errc::no_space_on_device;
}

void fillRandom(std::span<unsigned char> bytes)
{
    std::random_device random;
    for (unsigned char& byte : bytes)
        byte = static_cast<unsigned char>(random());
}

} // namespace tamarok::embedded
