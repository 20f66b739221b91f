#pragma once

#include <filesystem>
#include <string>

namespace tamarok::test {

/// A new folder of its own, removed with everything in it at the end.
class ScratchFolder {
public:
    ScratchFolder();
    ~ScratchFolder();
    ScratchFolder(const ScratchFolder&) = delete;
    ScratchFolder& operator=(const ScratchFolder&) = delete;

    std::string operator/(const std::string& name) const { return (path_ / name).string(); }
    const std::filesystem::path& path() const noexcept { return path_; }
    std::size_t fileCount() const;

private:
    std::filesystem::path path_;
};

/// Makes a small database with the program itself and gives its path.
std::string makeDatabase(const ScratchFolder& folder, int logs = 200);

} // namespace tamarok::test
