#include "line_append.h"

#include <algorithm>

#include "line_reader.h"
#include "text_encoding.h"

#include "tamarok/platform.h"

namespace tamarok::settings {

void appendLines(std::string_view path, std::span<const std::string> lines, Durability durability)
{
    const auto file = Platform::fileSystem().openAppend(path);
    // ASCII is the same in both encodings, so that the file need not be read through for it.
    const auto encoding = std::ranges::all_of(lines, isAscii) ? TextEncoding::Utf8 : encodingOf(*file);
    const std::string_view lineEnd = lineEndOf(*file);
    std::string bytes;
    // A line without an end may be one that another process is just writing: it will end its line itself.
    if (endsUnended(*file) && file->isOnlyWriter() && endsUnended(*file)) bytes += lineEnd;
    for (const std::string& line : lines)
        bytes.append(encode(line, encoding)).append(lineEnd);
    file->write(bytes);
    if (durability == Durability::OnDisk) file->sync();
}

} // namespace tamarok::settings
