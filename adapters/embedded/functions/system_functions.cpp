#include <array>
#include <cstdlib>
#include <string>

#include "functions/catalog.h"

/// Functions of the server and its session.
namespace tamarok::embedded::functions {

/// A random identifier in the text form of version 4.
void newId(Call& call)
{
    std::array<unsigned char, 16> bytes{};
    sqlite3_randomness(static_cast<int>(bytes.size()), bytes.data());
    bytes[6] = static_cast<unsigned char>((bytes[6] & 0x0FU) | 0x40U);
    bytes[8] = static_cast<unsigned char>((bytes[8] & 0x3FU) | 0x80U);
    constexpr std::string_view digits = "0123456789ABCDEF";
    std::string text;
    for (std::size_t index = 0; index < bytes.size(); ++index) {
        if (index == 4 || index == 6 || index == 8 || index == 10) text += '-';
        text += digits[bytes[index] >> 4U];
        text += digits[bytes[index] & 0x0FU];
    }
    call.result(std::string_view{text});
}

/// The user of the machine, who is the only one that the embedded database knows.
void userName(Call& call)
{
    for (const char* variable : {"USER", "LOGNAME", "USERNAME"}) {
        const char* name = std::getenv(variable);
        if (name != nullptr && *name != '\0') return call.result(std::string_view{name});
    }
    call.result(std::string_view{"dbo"});
}

/// The database file's name without folder and ending.
void databaseName(Call& call)
{
    const char* file = sqlite3_db_filename(call.database(), "main");
    std::string_view name = file != nullptr ? file : "";
    const std::size_t slash = name.find_last_of("/\\");
    if (slash != std::string_view::npos) name.remove_prefix(slash + 1);
    const std::size_t point = name.rfind('.');
    if (point != std::string_view::npos && point > 0) name = name.substr(0, point);
    call.result(name.empty() ? std::string_view{"memory"} : name);
}

} // namespace tamarok::embedded::functions
