// A second process for the tests of locks and of writing: runs the command in its arguments, reports on standard
// output, and continues at each line on standard input.

#include <csignal>
#include <cstdlib>
#include <functional>
#include <iostream>
#include <map>
#include <string>
#include <sys/resource.h>

#include "tamarok_embedded/connect.h"
#include "tamarok_embedded/new_database.h"

#include "tamarok/ado_backend.h"
#include "tamarok/error.h"

namespace {

using tamarok::Error;
namespace ado = tamarok::ado;
namespace embedded = tamarok::embedded;

void tell(const std::string& line)
{
    std::cout << line << std::endl;
}

std::string nextLine()
{
    std::string line;
    std::getline(std::cin, line);
    return line;
}

std::unique_ptr<ado::Cursor> openRows(const ado::ConnectionRef& connection, const std::string& text)
{
    ado::Statement statement;
    statement.text = text;
    statement.cursorType = ado::CursorType::OpenDynamic;
    statement.lockType = ado::LockType::Pessimistic;
    return connection->session().open(statement);
}

/// hold FILE STATEMENT: locks the statement's first row until the line "close" or the end.
void hold(const std::string& file, const std::string& text)
{
    const ado::ConnectionRef connection = embedded::connect(file);
    const auto cursor = openRows(connection, text);
    if (!cursor->next()) {
        tell("no row");
        return;
    }
    cursor->lockRow(cursor->rowKey());
    tell("held");
    if (nextLine() == "close") {
        connection->Close();
        tell("closed");
        nextLine();
    }
}

/// repeat FILE COUNT STATEMENT
void repeat(const std::string& file, const std::string& countAndText)
{
    const ado::ConnectionRef connection = embedded::connect(file);
    std::size_t used = 0;
    const int count = std::stoi(countAndText, &used);
    const std::string text = countAndText.substr(used);
    tell("ready");
    nextLine();
    for (int i = 0; i < count; ++i) {
        connection->Execute(text);
    }
    tell("done");
}

/// transaction FILE STATEMENT: runs it a thousand times in a transaction that it leaves open.
void transaction(const std::string& file, const std::string& text)
{
    const ado::ConnectionRef connection = embedded::connect(file);
    connection->BeginTrans();
    for (int i = 0; i < 1000; ++i) {
        connection->Execute(text);
    }
    tell("open");
    nextLine();
}

/// write FILE STATEMENT: runs it two hundred times, each time committed, and waits with the database open.
void writeRows(const std::string& file, const std::string& text)
{
    const ado::ConnectionRef connection = embedded::connect(file);
    for (int i = 0; i < 200; ++i) {
        connection->Execute(text);
    }
    tell("written");
    nextLine();
}

/// replace FILE STATEMENT: replaces the database by a new one in which the statement has run.
void replaceFile(const std::string& file, const std::string& text)
{
    embedded::NewDatabase database{file, embedded::NewDatabase::Existing::Replace};
    database.connection()->Execute(text);
    database.complete();
    tell("replaced");
}

/// fill FILE STATEMENT: repeats it, with files limited to a megabyte, until it fails; reports the error.
void fill(const std::string& file, const std::string& text)
{
    std::signal(SIGXFSZ, SIG_IGN);
    const rlimit limit{1024 * 1024, 1024 * 1024};
    ::setrlimit(RLIMIT_FSIZE, &limit);
    const ado::ConnectionRef connection = embedded::connect(file);
    for (int written = 0;; ++written) {
        try {
            connection->Execute(text);
        } catch (const Error& error) {
            tell(std::to_string(written));
            tell(error.description);
            return;
        }
    }
}

} // namespace

int main(int count, char** values)
{
    const std::map<std::string, std::function<void(const std::string&, const std::string&)>> commands{
        {"hold", hold}, {"repeat", repeat},   {"transaction", transaction},
        {"fill", fill}, {"write", writeRows}, {"replace", replaceFile}};
    const auto command = count == 4 ? commands.find(values[1]) : commands.end();
    if (command == commands.end()) {
        return 2;
    }
    try {
        command->second(values[2], values[3]);
    } catch (const Error& error) {
        tell("error: " + error.description);
        return EXIT_FAILURE;
    }
    return EXIT_SUCCESS;
}
