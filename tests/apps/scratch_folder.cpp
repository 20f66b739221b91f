#include "apps/scratch_folder.h"

#include <iterator>
#include <stdexcept>
#include <stdlib.h>

#include "apps/child_process.h"

namespace tamarok::test {

ScratchFolder::ScratchFolder()
{
    std::string pattern = (std::filesystem::temp_directory_path() / "tamarok-test-XXXXXX").string();
    if (::mkdtemp(pattern.data()) == nullptr) throw std::runtime_error{"no temporary folder"};
    path_ = pattern;
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

std::string makeDatabase(const ScratchFolder& folder, int logs)
{
    const std::string file = folder / "demo.db";
    const Outcome made = run({"init", file, "--logs", std::to_string(logs), "--seed", "1"});
    if (made.status != 0) throw std::runtime_error{"init failed: " + made.errors};
    return file;
}

} // namespace tamarok::test
