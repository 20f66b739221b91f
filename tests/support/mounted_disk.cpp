#include "support/mounted_disk.h"

#include <sys/mount.h>
#include <utility>

namespace tamarok::test {

MountedDisk::MountedDisk(std::filesystem::path place, const std::string& size) : place_{std::move(place)}
{
    std::filesystem::create_directory(place_);
    done_ = ::mount("tmpfs", place_.c_str(), "tmpfs", 0, ("size=" + size).c_str()) == 0;
}

MountedDisk::~MountedDisk()
{
    if (done_) ::umount2(place_.c_str(), MNT_DETACH);
}

bool MountedDisk::makeReadOnly() const
{
    return ::mount("tmpfs", place_.c_str(), "tmpfs", MS_REMOUNT | MS_RDONLY, nullptr) == 0;
}

} // namespace tamarok::test
