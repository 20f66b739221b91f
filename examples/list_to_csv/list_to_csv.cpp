// Writes a list of numbered columns as CSV, with the public headers of the library alone:
//
//     list_to_csv DATABASE TYPE ID...        for example: list_to_csv demo.db LOG 1 22 36 280
//
// The library composes the statement: the FROM text with the joins that the columns need, and the SELECT
// text. The first line holds the type and the ids; `tamarok columns LOG` tells what the ids mean.

#include <cstdint>
#include <iostream>
#include <stdexcept>
#include <string>
#include <tamarok/backend_registry.h>
#include <tamarok/comm_csel.h>
#include <tamarok/connection_text.h>
#include <tamarok/convert.h>
#include <tamarok/tmkvar.h>
#include <tamarok_embedded/backend.h>
#include <vector>

namespace {

using namespace tamarok;

/// A value as a CSV field: numbers with a decimal point, Null empty, texts in quotes where they need them.
std::string csvField(const Variant& value)
{
    if (value.isNull() || value.isEmpty()) return {};
    if (value.kind() == Variant::Kind::Double) return convert::toPlainText(value.asDouble());
    const std::string text = convert::toText(value);
    if (text.find_first_of(",\"\r\n") == std::string::npos) return text;
    std::string quoted = "\"";
    for (const char letter : text)
        quoted.append(letter == '"' ? 2 : 1, letter);
    return quoted + "\"";
}

/// The statement of the list. "R" is the main settlement of a log.
std::string listStatement(const std::string& type, const std::vector<std::int16_t>& ids, const TmkVar& session)
{
    const Comm_CSel columns;
    std::string from;
    std::string select;
    for (const std::int16_t id : ids) {
        const std::string column =
            type == "LOG" ? columns.GetColumn(id, "R", session) : columns.GetColumnTyp(type, id, false, false, session);
        if (column.empty()) throw std::runtime_error{type + " has no column " + std::to_string(id)};
        from = columns.GetFrom(type, id, from, "R", session);
        select = columns.InsertToStr(select, column);
    }
    return "SELECT " + select + " FROM " + from;
}

void printList(const std::string& type, const std::vector<std::int16_t>& ids, const TmkVar& session)
{
    ado::Recordset rows;
    rows.Open(listStatement(type, ids, session), session.db_ADO);
    for (std::size_t column = 0; column < ids.size(); ++column)
        std::cout << (column == 0 ? "" : ",") << type << ' ' << ids[column];
    std::cout << '\n';
    for (; !rows.AtEOF(); rows.MoveNext()) {
        for (std::int32_t column = 0; column < rows.Fields().Count(); ++column)
            std::cout << (column == 0 ? "" : ",") << csvField(rows.Fields().Item(column).Value());
        std::cout << '\n';
    }
}

} // namespace

int main(int count, char** arguments)
{
    const std::vector<std::string> words(arguments + 1, arguments + count);
    if (words.size() < 3) {
        std::cerr << "usage: list_to_csv DATABASE TYPE ID...\n";
        return 2;
    }
    try {
        ado::BackendRegistry backends;
        embedded::registerBackend(backends);
        TmkVar session;
        session.db_ADO =
            backends.open("Provider=Tamarok.Embedded;Mode=Read;Data Source=" + ado::connectionValue(words[0]));
        std::vector<std::int16_t> ids;
        for (std::size_t index = 2; index < words.size(); ++index)
            ids.push_back(convert::toInteger(Variant{words[index]}));
        printList(words[1], ids, session);
        return 0;
    } catch (const std::exception& error) {
        std::cerr << "list_to_csv: " << error.what() << '\n';
        return 1;
    }
}
