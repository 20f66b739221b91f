#include "tamarok_tsql/source_text.h"

#include "tamarok/error.h"

namespace tamarok::tsql {

/// Line and column count from 1; the column counts code points, so the following bytes of a character are skipped. The
/// error carries the first 4096 bytes of the statement, for the log.
void SourceText::refuse(std::size_t offset, std::int32_t nativeError, std::string message,
                        std::string_view sqlState) const
{
    std::size_t line = 1;
    std::size_t column = 1;
    for (const char c : text_.substr(0, offset)) {
        if (c == '\n') {
            ++line;
            column = 1;
        } else if ((static_cast<unsigned char>(c) & 0xC0U) != 0x80U) {
            ++column;
        }
    }
    message += " (line " + std::to_string(line) + ", column " + std::to_string(column) + ")";
    Error error(errors::statementRefused, std::move(message), "Tamarok embedded database");
    error.nativeError = nativeError;
    error.sqlState = sqlState;
    constexpr std::size_t shownStatement = 4096;
    error.statement = text_.substr(0, shownStatement);
    throw error;
}

void SourceText::unsupported(std::size_t offset, std::string_view construct) const
{
    refuse(offset, messages::unsupported, std::string(construct) + " is not supported by the embedded database.");
}

} // namespace tamarok::tsql
