#include "lists/csv_export.h"

#include "print/csv_text.h"

#include "tamarok/convert.h"
#include "tamarok/format.h"
#include "tamarok/platform.h"

namespace tamarok::workbench {

namespace {

constexpr std::string_view utf8Mark = "\xEF\xBB\xBF";
constexpr std::string_view lineEnd = "\r\n";
constexpr std::size_t rowsOfReport = 1000;

char separatorOf(const Regional& regional)
{
    return format::decimalSeparator(regional) == "," ? ';' : ',';
}

std::string plainText(const Variant& value)
{
    return value.isNull() || value.isEmpty() ? std::string{} : convert::toText(value);
}

} // namespace

std::size_t exportCsv(const ado::ConnectionRef& connection, const ListStatements& list,
                      const std::vector<ListColumn>& columns, const std::function<void(std::string_view)>& write,
                      const std::stop_token& stop, const RowProgress& progress)
{
    const char separator = separatorOf(Platform::current().regional);
    std::string line{utf8Mark};
    for (const ListColumn& column : columns) {
        if (&column != &columns.front()) line += separator;
        line += cli::csvField(column.header, separator);
    }
    write(line.append(lineEnd));
    std::size_t count = 0;
    readAllRows(connection, list.rows(), stop, [&](const Row& row) {
        line.clear();
        for (std::size_t column = 0; column < row.size(); ++column) {
            if (column > 0) line += separator;
            line += cli::csvField(plainText(row[column]), separator);
        }
        write(line.append(lineEnd));
        if (++count % rowsOfReport == 0 && progress) progress(count);
    });
    return count;
}

} // namespace tamarok::workbench
