#pragma once

#include <filesystem>
#include <string>

namespace tamarok::test {

/// A small file system of its own, where the machine allows mounting one.
class MountedDisk {
public:
    /// Makes the folder `place` and mounts the file system there.
    explicit MountedDisk(std::filesystem::path place, const std::string& size = "1m");
    ~MountedDisk();
    MountedDisk(const MountedDisk&) = delete;
    MountedDisk& operator=(const MountedDisk&) = delete;

    /// Whether the file system was mounted.
    bool done() const { return done_; }
    bool makeReadOnly() const;

private:
    std::filesystem::path place_;
    bool done_ = false;
};

} // namespace tamarok::test
