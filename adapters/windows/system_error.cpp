#include "tamarok_windows/system_error.h"

#include <algorithm>
#include <array>
#include <string>
#include <windows.h>

#include "tamarok_windows/wide_text.h"

namespace tamarok::windows {

namespace {

struct Condition {
    DWORD number;
    std::errc condition;
};

constexpr std::array conditions{
    Condition{ERROR_FILE_NOT_FOUND, std::errc::no_such_file_or_directory},
    Condition{ERROR_PATH_NOT_FOUND, std::errc::no_such_file_or_directory},
    Condition{ERROR_INVALID_NAME, std::errc::no_such_file_or_directory},
    Condition{ERROR_BAD_PATHNAME, std::errc::no_such_file_or_directory},
    Condition{ERROR_BAD_NETPATH, std::errc::no_such_file_or_directory},
    Condition{ERROR_BAD_NET_NAME, std::errc::no_such_file_or_directory},
    Condition{ERROR_INVALID_DRIVE, std::errc::no_such_file_or_directory},
    Condition{ERROR_ACCESS_DENIED, std::errc::permission_denied},
    Condition{ERROR_SHARING_VIOLATION, std::errc::permission_denied},
    Condition{ERROR_LOCK_VIOLATION, std::errc::permission_denied},
    Condition{ERROR_FILE_EXISTS, std::errc::file_exists},
    Condition{ERROR_ALREADY_EXISTS, std::errc::file_exists},
    Condition{ERROR_WRITE_PROTECT, std::errc::read_only_file_system},
    Condition{ERROR_DISK_FULL, std::errc::no_space_on_device},
    Condition{ERROR_HANDLE_DISK_FULL, std::errc::no_space_on_device},
    Condition{ERROR_FILE_TOO_LARGE, std::errc::no_space_on_device},
    Condition{ERROR_DIRECTORY, std::errc::not_a_directory},
    Condition{ERROR_TOO_MANY_OPEN_FILES, std::errc::too_many_files_open},
    Condition{ERROR_NOT_ENOUGH_MEMORY, std::errc::not_enough_memory},
    Condition{ERROR_CANT_RESOLVE_FILENAME, std::errc::too_many_symbolic_link_levels},
};

class SystemCategory final : public std::error_category {
public:
    const char* name() const noexcept override { return "windows"; }
    std::string message(int number) const override;
    std::error_condition default_error_condition(int number) const noexcept override
    {
        const auto* const found = std::ranges::find(conditions, static_cast<DWORD>(number), &Condition::number);
        if (found == conditions.end()) return {number, *this};
        return std::make_error_condition(found->condition);
    }
};

/// The system ends its messages with a point and a line break; callers write them into sentences.
std::string SystemCategory::message(int number) const
{
    std::array<wchar_t, 512> text{};
    const DWORD length =
        FormatMessageW(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr, static_cast<DWORD>(number),
                       0, text.data(), static_cast<DWORD>(text.size()), nullptr);
    std::wstring_view message{text.data(), length};
    while (!message.empty() && (message.back() <= L' ' || message.back() == L'.'))
        message.remove_suffix(1);
    return message.empty() ? "error " + std::to_string(number) + " of the system" : narrow(message);
}

} // namespace

std::error_code systemError(unsigned long number) noexcept
{
    static const SystemCategory category;
    return {static_cast<int>(number), category};
}

std::error_code lastError() noexcept
{
    return systemError(GetLastError());
}

} // namespace tamarok::windows
