#pragma once

#include <filesystem>

namespace tamarok::cli {

/// A database file that is being filled. Until `complete` it has a temporary name beside the wanted one,
/// and the destructor removes it together with the files that the database keeps beside it. Temporary
/// files of processes that were killed are removed by the next one.
class NewFile {
public:
    /// Errors: 58 where `target` exists and `replace` is false, 75 where it is a folder or names no file.
    NewFile(std::filesystem::path target, bool replace);
    ~NewFile();
    NewFile(const NewFile&) = delete;
    NewFile& operator=(const NewFile&) = delete;

    const std::filesystem::path& path() const noexcept { return growing_; }

    /// Renames the finished file to its target. No connection may be open.
    /// Errors: 58 where the target has appeared meanwhile, 75 where the file cannot be written.
    void complete();

private:
    void refuseExisting() const;

    std::filesystem::path target_;
    std::filesystem::path growing_;
    bool replace_;
};

} // namespace tamarok::cli
