#include <iostream>
#include <string>

#include "tamarok_odbc/connect.h"

#include "tamarok/error.h"

// Holds the rows of a statement until it is told to go on: lock_child CONNECTION-TEXT STATEMENT

int main(int, char** arguments)
{
    using namespace tamarok;
    try {
        const auto connection = odbc::connectText(arguments[1]);
        connection->CommandTimeout(5);
        ado::Recordset rows;
        rows.Open(arguments[2], connection, ado::CursorType::OpenDynamic, ado::LockType::Pessimistic);
        std::cout << (rows.AtEOF() ? "empty" : "held") << std::endl;
        std::string line;
        std::getline(std::cin, line);
        rows.Close();
        std::cout << "released" << std::endl;
        std::getline(std::cin, line);
    } catch (const Error& error) {
        std::cout << "error " << error.number << " " << error.what() << std::endl;
        return 1;
    }
    return 0;
}
