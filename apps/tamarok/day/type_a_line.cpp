#include <algorithm>
#include <array>
#include <string>
#include <string_view>
#include <vector>

#include "day/steps.h"

#include "tamarok/ado.h"
#include "tamarok/comm_conv.h"
#include "tamarok/comm_get.h"
#include "tamarok/comm_set.h"
#include "tamarok/controls.h"
#include "tamarok/convert.h"
#include "tamarok/platform.h"
#include "tamarok/text.h"

namespace tamarok::cli::day {

namespace {

constexpr std::string_view table = "LOGS";
constexpr std::string_view thousandsMark = ".";

enum class Filter { Number, Date, None };

/// A box of the entry form: its label, the keys pressed in it, and the filter that they pass.
struct EntryBox {
    std::string_view label;
    std::string_view keys;
    Filter filter;
    std::string_view format; ///< number pattern
};

/// The boxes of the line, in the order of the form. One key of each filtered box is a typing error.
constexpr std::array entryBoxes{
    EntryBox{"Length in m", "4,x5", Filter::Number, "00.00"},
    EntryBox{"Diameter in cm", "32-", Filter::Number, "000"},
    EntryBox{"Date", "5.3./2024", Filter::Date, ""},
    EntryBox{"Remark", "Weg d'Or", Filter::None, ""},
};

/// Prints, during its lifetime, the statements that a connection sends.
class StatementPrinter {
public:
    StatementPrinter(const ado::ConnectionRef& connection, Output& output) : connection_{connection}
    {
        connection_->listen(
            [&output](std::string_view statement) { output.write("  " + std::string{statement} + "\n"); });
    }
    ~StatementPrinter() { connection_->listen({}); }
    StatementPrinter(const StatementPrinter&) = delete;
    StatementPrinter& operator=(const StatementPrinter&) = delete;

private:
    ado::ConnectionRef connection_;
};

/// The thread's platform with German regional settings.
Platform germanPlatform()
{
    Platform platform = Platform::current();
    platform.regional = Regional::named("de-DE");
    return platform;
}

std::string padded(std::string_view label)
{
    constexpr std::size_t width = 16;
    return std::string{label} + std::string(width - std::min(width, text::length(label)), ' ');
}

/// Presses the keys one by one and prints the text of the box after each, and after the box was left.
/// Returns that text.
std::string typeInto(const EntryBox& entry, Output& output)
{
    const Comm_Get get;
    std::string format{entry.format};
    controls::TextBox box;
    const auto filter = [&](std::int16_t& key) {
        if (entry.filter == Filter::Number) get.OnlyNumbersKeyPress(key, box, format);
        if (entry.filter == Filter::Date) key = get.OnlyDate(key, box);
    };
    std::string line = "  " + padded(entry.label);
    for (std::size_t offset = 0; offset < entry.keys.size();) {
        const std::size_t start = offset;
        const char32_t key = text::decode(entry.keys, offset);
        const std::string before = box.text();
        controls::typeKey(box, key, filter);
        line.append(entry.keys.substr(start, offset - start));
        line.append(box.text() == before ? " refused   " : " -> " + box.text() + "   ");
    }
    if (entry.filter == Filter::Number) {
        get.OnlyNumbersLostFocus(box, format);
        line.append("leaving -> ").append(box.text());
    }
    output.write(std::string{text::trimRight(line)} + "\n");
    return box.text();
}

/// The columns of the line as the boxes show them.
struct Line {
    std::string length;
    std::string diameter;
    std::string date;
    std::string remark;
};

Line typeLine(Output& output)
{
    std::vector<std::string> contents;
    contents.reserve(entryBoxes.size());
    for (const EntryBox& entry : entryBoxes)
        contents.push_back(typeInto(entry, output));
    return {contents[0], contents[1], contents[2], contents[3]};
}

void saveLine(const Line& line, const TmkVar& session, std::string_view where)
{
    const Comm_Set set;
    const std::string date = convert::toText(Comm_Conv{}.TransDate(line.date, session.strDateFormat));
    set.Set_Number("LAENGE", line.length, table, where, session.db_ADO, thousandsMark);
    set.Set_Number("DURCH", line.diameter, table, where, session.db_ADO, thousandsMark);
    set.Set_Text("LISTDATUM", date, table, where, session.db_ADO);
    set.Set_Text("FREI1", line.remark, table, where, session.db_ADO);
}

/// Reads the line back by the value readers; Null becomes an empty text.
Line readLine(const TmkVar& session, std::string_view where)
{
    const Comm_Get get;
    const auto value = [&](std::string_view column) {
        return std::string{text::trim(get.Get_FieldValue(session, column, table, where))};
    };
    return {value("LAENGE"), value("DURCH"), value("LISTDATUM"), value("FREI1")};
}

void printLine(const Line& line, Output& output)
{
    output.write("  " + padded("Length in m") + line.length + "\n  " + padded("Diameter in cm") + line.diameter +
                 "\n  " + padded("Date") + line.date + "\n  " + padded("Remark") + line.remark + "\n");
}

/// Types, saves and reads one line. The caller restores the old one.
void workOnLine(const Context& context, std::string_view where)
{
    context.output.write("Each key and what the box holds after it:\n");
    const Line typed = typeLine(context.output);
    context.output.write("\nSaving sends\n");
    saveLine(typed, context.session, where);
    context.output.write("\nReading it back sends\n");
    const Line stored = readLine(context.session, where);
    context.output.write("\nand shows\n");
    printLine(stored, context.output);
}

} // namespace

/// Types a measured line key by key under German settings, saves it and reads it back. The old values are
/// then restored, so that the day can be shown again.
void typeALine(const Context& context)
{
    const PlatformScope german{germanPlatform()};
    const Comm_Get get;
    const double log = get.Get_FieldValueN(context.session, "MIN(ID_LOG)", table,
                                           "STK = 1 AND LAENGE IS NOT NULL AND DURCH IS NOT NULL");
    if (log == 0.0) {
        context.output.write("There is no measured log in this database.\n");
        return;
    }
    const std::string where = "ID_LOG = " + get.Get_Number(log);
    const Line before = readLine(context.session, where);
    const StatementPrinter statements{context.session.db_ADO, context.output};
    try {
        workOnLine(context, where);
    } catch (...) {
        saveLine(before, context.session, where);
        throw;
    }
    context.output.write("\nPutting the old line back sends\n");
    saveLine(before, context.session, where);
}

} // namespace tamarok::cli::day
