#include "file_failures.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <filesystem>
#include <system_error>

// The platform's error numbers for the failures of the system's file operations.

namespace tamarok {

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
constexpr Failure full{errors::diskFull, "Disk full"};
constexpr Failure tooMany{errors::tooManyFiles, "Too many files"};

struct Row {
    int code;
    Failure failure;
};

/// Any other code is a device I/O error.
constexpr std::array rows{
    Row{ENOENT, notFound},  Row{EACCES, denied},
    Row{EPERM, denied},     Row{EROFS, denied},
    Row{ENOTDIR, noFolder}, Row{EISDIR, noAccess},
    Row{ELOOP, noAccess},   Row{ENAMETOOLONG, noAccess},
    Row{EINVAL, noAccess},  Row{ENXIO, noAccess},
    Row{ENODEV, noAccess},  Row{ETXTBSY, noAccess},
    Row{EILSEQ, noAccess},  Row{EEXIST, {errors::fileExists, "File already exists"}},
    Row{ENOSPC, full},      Row{EDQUOT, full},
    Row{EFBIG, full},       Row{EMFILE, tooMany},
    Row{ENFILE, tooMany},   Row{ENOMEM, {errors::outOfMemory, "Out of memory"}},
};

/// A path that is not found for want of a folder is another error than a missing file.
bool lacksFolder(std::string_view path)
{
    const auto folder = std::filesystem::path{path}.parent_path();
    std::error_code ignored;
    return !folder.empty() && !std::filesystem::is_directory(folder, ignored);
}

Error compose(const Failure& failure, std::string_view path, std::string_view reason)
{
    return Error{failure.number, std::string{failure.title}.append(": '").append(path).append("': ").append(reason)};
}

} // namespace

Error fileFailure(std::string_view path, int code)
{
    const auto* const row = std::ranges::find(rows, code, &Row::code);
    Failure failure = row == rows.end() ? deviceFailure : row->failure;
    if (code == ENOENT && lacksFolder(path)) failure = noFolder;
    return compose(failure, path, std::system_category().message(code));
}

Error pathFailure(std::string_view path, std::string_view reason)
{
    return compose(noAccess, path, reason);
}

Error ownershipFailure(std::string_view path, std::string_view reason)
{
    return compose(denied, path, reason);
}

} // namespace tamarok
