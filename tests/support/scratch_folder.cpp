#include "support/scratch_folder.h"

#include <fstream>
#include <iterator>
#include <random>
#include <string>

namespace tamarok::test {

ScratchFolder::ScratchFolder()
{
    std::random_device random;
    do
        path_ = std::filesystem::temp_directory_path() / ("tamarok-test-" + std::to_string(random()));
    while (!std::filesystem::create_directory(path_));
    std::filesystem::permissions(path_, std::filesystem::perms::owner_all);
}

ScratchFolder::~ScratchFolder()
{
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
}

std::size_t ScratchFolder::fileCount() const
{
    return static_cast<std::size_t>(
        std::distance(std::filesystem::directory_iterator{path_}, std::filesystem::directory_iterator{}));
}

std::map<std::string, std::string> ScratchFolder::contents() const
{
    std::map<std::string, std::string> files;
    for (const auto& entry : std::filesystem::recursive_directory_iterator{path_}) {
        if (!entry.is_regular_file()) continue;
        std::ifstream stream{entry.path(), std::ios::binary};
        files[entry.path().filename().string()] = {std::istreambuf_iterator<char>{stream}, {}};
    }
    return files;
}

} // namespace tamarok::test
