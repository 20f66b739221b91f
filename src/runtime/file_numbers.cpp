#include "tamarok/error.h"
#include "tamarok/files.h"

// The table of open file numbers. The number is tested before the file is opened, as the platform does.

namespace tamarok {

std::shared_ptr<File> FileNumbers::open(std::int16_t number, std::string_view path,
                                        const std::function<std::shared_ptr<File>()>& open)
{
    if (const auto found = entries_.find(number); found != entries_.end()) {
        throw Error{errors::fileAlreadyOpen, "File already open: file number " + std::to_string(number) +
                                                 " is in use for '" + found->second.path + "'"};
    }
    std::shared_ptr<File> file = open();
    entries_.emplace(number, Entry{std::string{path}, file});
    return file;
}

} // namespace tamarok
