#pragma once

#include <memory>
#include <string_view>

#include "tamarok/files.h"
#include "tamarok/platform.h"

namespace tamarok::settings {

/// File numbers of the parameter files. Required by the contract: they are fixed, not allocated. Do not correct.
inline constexpr std::int16_t inputNumber = 1;
inline constexpr std::int16_t outputNumber = 2;

/// A file that is open under a number of the thread's platform, and is closed at the end.
class NumberedFile {
public:
    /// Opens a file for reading. Error 55 if the number is in use; the file is not opened then.
    static NumberedFile forInput(std::int16_t number, std::string_view path)
    {
        return NumberedFile{number, path, [&] { return Platform::fileSystem().openInput(path); }};
    }
    /// Makes the file that is to replace `model`, and opens it for writing.
    static NumberedFile forReplacement(std::int16_t number, std::string_view path, std::string_view model)
    {
        return NumberedFile{number, path, [&] { return Platform::fileSystem().createBeside(path, model); }};
    }
    NumberedFile(const NumberedFile&) = delete;
    NumberedFile& operator=(const NumberedFile&) = delete;
    ~NumberedFile() { close(); }

    File& file() const noexcept { return *file_; }

    void close() noexcept
    {
        if (file_ && !staysOpen_) Platform::current().fileNumbers.close(number_);
        if (!staysOpen_) file_.reset();
    }
    /// Leaves the number in use.
    void leaveOpen() noexcept { staysOpen_ = true; }

private:
    template <class Open>
    NumberedFile(std::int16_t number, std::string_view path, const Open& open) :
        number_{number}, file_{Platform::current().fileNumbers.open(number, path, open)}
    {}

    std::int16_t number_;
    std::shared_ptr<File> file_;
    bool staysOpen_ = false;
};

} // namespace tamarok::settings
