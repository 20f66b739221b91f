#pragma once

#include <filesystem>
#include <map>
#include <string>

namespace tamarok::test {

/// A new empty folder, removed with everything in it at the end.
class ScratchFolder {
public:
    ScratchFolder();
    ~ScratchFolder();
    ScratchFolder(const ScratchFolder&) = delete;
    ScratchFolder& operator=(const ScratchFolder&) = delete;

    /// Returns the path of a file in the folder.
    std::filesystem::path operator/(const std::string& name) const { return path_ / name; }
    const std::filesystem::path& path() const noexcept { return path_; }
    std::size_t fileCount() const;
    /// Returns names and contents of all files, those of subfolders included.
    std::map<std::string, std::string> contents() const;

private:
    std::filesystem::path path_;
};

} // namespace tamarok::test
