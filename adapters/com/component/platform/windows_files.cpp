#include "windows_files.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <span>

#include "file_handle.h"

// The file operations of a machine with the calls of Windows.

namespace tamarok::com {

namespace {

/// A byte far behind every file's end: its lock tells who has the file open for appending.
constexpr std::uint64_t writersMark = std::uint64_t{1} << 62U;

OVERLAPPED at(std::uint64_t position) noexcept
{
    OVERLAPPED place{};
    place.Offset = static_cast<DWORD>(position);
    place.OffsetHigh = static_cast<DWORD>(position >> 32U);
    return place;
}

class WindowsFile final : public File {
public:
    WindowsFile(std::wstring path, FileHandle file) :
        path_{std::move(path)}, file_{std::move(file)}, isRegular_{GetFileType(file_.get()) == FILE_TYPE_DISK}
    {}

    std::uint64_t size() const override
    {
        if (!isRegular_) return 0;
        LARGE_INTEGER bytes{};
        if (GetFileSizeEx(file_.get(), &bytes) == 0) throw fileFailure(path_, GetLastError());
        return static_cast<std::uint64_t>(bytes.QuadPart);
    }

    std::size_t readAt(std::uint64_t position, std::span<char> buffer) const override
    {
        std::size_t count = 0;
        while (isRegular_ && count < buffer.size()) {
            OVERLAPPED place = at(position + count);
            DWORD got = 0;
            const auto wanted = static_cast<DWORD>(std::min<std::size_t>(buffer.size() - count, 0x40000000));
            if (ReadFile(file_.get(), buffer.data() + count, wanted, &got, &place) == 0) {
                if (GetLastError() == ERROR_HANDLE_EOF) break;
                throw fileFailure(path_, GetLastError());
            }
            if (got == 0) break;
            count += got;
        }
        return count;
    }

    void write(std::string_view bytes) override
    {
        std::size_t written = 0;
        while (written < bytes.size()) {
            DWORD count = 0;
            const auto wanted = static_cast<DWORD>(std::min<std::size_t>(bytes.size() - written, 0x40000000));
            const bool isDone = WriteFile(file_.get(), bytes.data() + written, wanted, &count, nullptr) != 0;
            const DWORD code = isDone ? ERROR_DISK_FULL : GetLastError();
            written += count;
            if (isDone && count != 0) continue;
            takeBack(written);
            throw fileFailure(path_, code);
        }
    }

    bool isOnlyWriter() override
    {
        leaveWriters();
        OVERLAPPED place = at(writersMark);
        if (LockFileEx(file_.get(), LOCKFILE_EXCLUSIVE_LOCK | LOCKFILE_FAIL_IMMEDIATELY, 0, 1, 0, &place) != 0)
            return true;
        if (GetLastError() != ERROR_LOCK_VIOLATION && GetLastError() != ERROR_IO_PENDING) return true;
        joinWriters();
        return false;
    }

    void sync() override
    {
        if (isRegular_ && FlushFileBuffers(file_.get()) == 0 && GetLastError() != ERROR_ACCESS_DENIED)
            throw fileFailure(path_, GetLastError());
    }

    /// Counts the file as opened for appending. Waits for one that holds the file alone, but not for long: a process
    /// that stands still must not hold up others.
    void joinWriters() noexcept
    {
        constexpr int attempts = 200;
        for (int attempt = 0; attempt < attempts; ++attempt) {
            OVERLAPPED place = at(writersMark);
            if (LockFileEx(file_.get(), LOCKFILE_FAIL_IMMEDIATELY, 0, 1, 0, &place) != 0) return;
            if (GetLastError() != ERROR_LOCK_VIOLATION && GetLastError() != ERROR_IO_PENDING) return;
            Sleep(1);
        }
    }

private:
    void leaveWriters() noexcept
    {
        OVERLAPPED place = at(writersMark);
        UnlockFileEx(file_.get(), 0, 1, 0, &place);
    }

    /// Cuts off the bytes that an interrupted write has added. The error of the write is the one that is reported.
    void takeBack(std::size_t written) const noexcept
    {
        if (written == 0 || !isRegular_) return;
        const FileHandle writable = openFile(path_, {GENERIC_WRITE, OPEN_EXISTING, true});
        LARGE_INTEGER end{};
        if (!writable.isOpen() || GetFileSizeEx(writable.get(), &end) == 0) return;
        end.QuadPart -= static_cast<LONGLONG>(written);
        if (SetFilePointerEx(writable.get(), end, nullptr, FILE_BEGIN) != 0) SetEndOfFile(writable.get());
    }

    std::wstring path_;
    FileHandle file_;
    bool isRegular_;
};

bool isFolder(DWORD attributes) noexcept
{
    return (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

bool isLink(DWORD attributes) noexcept
{
    return (attributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0;
}

std::shared_ptr<WindowsFile> openExisting(std::string_view name, DWORD access, bool takesDevices)
{
    std::wstring path = systemPath(name);
    const DWORD attributes = GetFileAttributesW(path.c_str());
    if (attributes != INVALID_FILE_ATTRIBUTES && isFolder(attributes)) throw pathFailure(path, "is a folder");
    FileHandle file = openFile(path, {access, OPEN_EXISTING, true});
    if (!file.isOpen()) throw fileFailure(path, GetLastError());
    const DWORD type = GetFileType(file.get());
    if (type != FILE_TYPE_DISK && !(takesDevices && type == FILE_TYPE_CHAR))
        throw pathFailure(path, "is not a regular file");
    return std::make_shared<WindowsFile>(std::move(path), std::move(file));
}

/// Removes a regular file that has the name of a new one. Error 75 for anything else of that name.
void removeOld(const std::wstring& path)
{
    const DWORD attributes = GetFileAttributesW(path.c_str());
    if (attributes == INVALID_FILE_ATTRIBUTES) return;
    if (isFolder(attributes)) throw pathFailure(path, "is a folder");
    if (isLink(attributes)) throw pathFailure(path, "is a link");
    if (DeleteFileW(path.c_str()) == 0) throw fileFailure(path, GetLastError());
}

/// Gives a new file the access list of another one as far as the account may.
void copyRights(const std::wstring& from, const std::wstring& to)
{
    std::array<std::byte, 16384> buffer{};
    DWORD needed = 0;
    if (GetFileSecurityW(from.c_str(), DACL_SECURITY_INFORMATION, buffer.data(), static_cast<DWORD>(buffer.size()),
                         &needed) != 0)
        SetFileSecurityW(to.c_str(), DACL_SECURITY_INFORMATION, buffer.data());
}

/// Overwrites a file in place, after room was reserved.
void overwrite(const std::wstring& from, const std::wstring& to)
{
    FileHandle input = openFile(from, {GENERIC_READ, OPEN_EXISTING, false});
    if (!input.isOpen()) throw fileFailure(from, GetLastError());
    const WindowsFile source{from, std::move(input)};
    const FileHandle target = openFile(to, {GENERIC_WRITE, OPEN_EXISTING, true});
    if (!target.isOpen()) throw fileFailure(to, GetLastError());
    LARGE_INTEGER size{};
    size.QuadPart = static_cast<LONGLONG>(source.size());
    LARGE_INTEGER old{};
    GetFileSizeEx(target.get(), &old);
    const auto setEnd = [&](LARGE_INTEGER end) {
        if (SetFilePointerEx(target.get(), end, nullptr, FILE_BEGIN) == 0 || SetEndOfFile(target.get()) == 0)
            throw fileFailure(to, GetLastError());
    };
    if (old.QuadPart < size.QuadPart) setEnd(size);
    std::array<char, 65536> buffer{};
    for (std::uint64_t position = 0; position < source.size();) {
        const std::size_t count = source.readAt(position, buffer);
        OVERLAPPED place = at(position);
        DWORD written = 0;
        if (WriteFile(target.get(), buffer.data(), static_cast<DWORD>(count), &written, &place) == 0 ||
            written != count)
            throw fileFailure(to, GetLastError());
        position += count;
    }
    setEnd(size);
    if (FlushFileBuffers(target.get()) == 0) throw fileFailure(to, GetLastError());
}

class WindowsFiles final : public FileSystem {
public:
    bool exists(std::string_view path) const override
    {
        const DWORD attributes = GetFileAttributesW(systemPath(path).c_str());
        return attributes != INVALID_FILE_ATTRIBUTES && !isFolder(attributes);
    }

    void create(std::string_view name) override
    {
        const std::wstring path = systemPath(name);
        if (openFile(path, {GENERIC_WRITE, CREATE_NEW}).isOpen()) return;
        const DWORD code = GetLastError();
        const DWORD attributes = GetFileAttributesW(path.c_str());
        if (attributes == INVALID_FILE_ATTRIBUTES) throw fileFailure(path, code);
        if (isFolder(attributes)) throw pathFailure(path, "is a folder");
        if (code != ERROR_FILE_EXISTS && code != ERROR_ALREADY_EXISTS) throw fileFailure(path, code);
    }

    std::shared_ptr<File> openInput(std::string_view path) override { return openExisting(path, GENERIC_READ, false); }

    std::shared_ptr<File> openAppend(std::string_view path) override
    {
        auto file = openExisting(path, GENERIC_READ | FILE_APPEND_DATA, true);
        file->joinWriters();
        return file;
    }

    std::shared_ptr<File> createBeside(std::string_view path, std::string_view model) override
    {
        const std::wstring modelPath = systemPath(model);
        if (!openFile(modelPath, {GENERIC_WRITE, OPEN_EXISTING, true}).isOpen())
            throw fileFailure(modelPath, GetLastError());
        std::wstring name = systemPath(path);
        removeOld(name);
        FileHandle file = openFile(name, {GENERIC_READ | FILE_APPEND_DATA, CREATE_NEW});
        if (!file.isOpen()) throw fileFailure(name, GetLastError());
        copyRights(modelPath, name);
        return std::make_shared<WindowsFile>(std::move(name), std::move(file));
    }

    void copyOver(std::string_view from, std::string_view to) override
    {
        const std::wstring source = systemPath(from);
        const std::wstring target = systemPath(to);
        const FileHandle file = openFile(target, {FILE_READ_ATTRIBUTES, OPEN_EXISTING, false});
        if (!file.isOpen()) throw fileFailure(target, GetLastError());
        const auto information = informationOf(file, target);
        // A file with several names, or behind a link, cannot be replaced by another one without losing these.
        if (information.nNumberOfLinks > 1 || isLink(information.dwFileAttributes)) return overwrite(source, target);
        replace(source, target);
    }

    void remove(std::string_view path) noexcept override
    {
        try {
            DeleteFileW(systemPath(path).c_str());
        } catch (...) {
            return; // the name is none, or there is no memory: nothing can be removed
        }
    }

private:
    /// Puts a copy of the new file into the old one's place at once; the old one's rights stay. Where that cannot be
    /// done, the old one is overwritten.
    static void replace(const std::wstring& source, const std::wstring& target)
    {
        const std::wstring draft = target + L"~new";
        if (makeDraft(source, draft)) {
            if (ReplaceFileW(target.c_str(), draft.c_str(), nullptr, REPLACEFILE_IGNORE_MERGE_ERRORS, nullptr,
                             nullptr) != 0)
                return;
            DeleteFileW(draft.c_str());
        }
        overwrite(source, target);
    }

    /// @return false, and nothing left, if there can be no draft of that name
    static bool makeDraft(const std::wstring& source, const std::wstring& draft)
    {
        const DWORD attributes = GetFileAttributesW(draft.c_str());
        const bool isTaken = attributes != INVALID_FILE_ATTRIBUTES;
        if (isTaken && (isFolder(attributes) || isLink(attributes) || DeleteFileW(draft.c_str()) == 0)) return false;
        // Fails where another one makes a file of the name meanwhile.
        if (CopyFileW(source.c_str(), draft.c_str(), TRUE) == 0) return false;
        const FileHandle written = openFile(draft, {GENERIC_WRITE, OPEN_EXISTING, false});
        if (written.isOpen() && FlushFileBuffers(written.get()) != 0) return true;
        DeleteFileW(draft.c_str());
        return false;
    }
};

} // namespace

std::shared_ptr<FileSystem> makeWindowsFiles()
{
    return std::make_shared<WindowsFiles>();
}

} // namespace tamarok::com
