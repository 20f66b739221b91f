#pragma once

#include <filesystem>

namespace tamarok::cli {

/// A database file in the making. It grows under a name of its own beside the wanted one and takes that
/// name when it is complete; until then, destruction removes it with everything beside it. What a
/// killed process has left there, the next one removes.
class NewFile {
public:
    /// Error 58 where `target` exists and may not be replaced.
    NewFile(std::filesystem::path target, bool replace);
    ~NewFile();
    NewFile(const NewFile&) = delete;
    NewFile& operator=(const NewFile&) = delete;

    const std::filesystem::path& path() const noexcept { return growing_; }

    /// Gives the finished file its name. No connection may be open.
    void complete();

private:
    void refuseExisting() const;

    std::filesystem::path target_;
    std::filesystem::path growing_;
    bool replace_;
};

} // namespace tamarok::cli
