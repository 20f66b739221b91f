#pragma once

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "tamarok_embedded/connect.h"

#include "tamarok/ado.h"
#include "tamarok/tmkvar.h"

namespace tamarok::test {

/// A small real database with a column of each kind that forms write, and the statements it was sent.
class SampleDatabase {
public:
    SampleDatabase() : connection{embedded::connectInMemory()}
    {
        connection->Execute("CREATE TABLE SAMPLE (ID INT NOT NULL PRIMARY KEY, NAME NVARCHAR(40), CODE VARCHAR(10), "
                            "MARK NCHAR(3), MASS FLOAT, PRICE DECIMAL(10,2), PIECES INT, SMALL SMALLINT, ACTIVE BIT, "
                            "NOTE NTEXT, PLAIN TEXT, BROAD NVARCHAR(MAX), MEASURED DATETIME, DAY DATE, PARTNER INT)");
        connection->Execute("INSERT INTO SAMPLE (ID, NAME, MASS, PIECES, ACTIVE, PARTNER) "
                            "VALUES (1, '  Lärche  ', 1234.5, 7, 1, 2)");
        connection->Execute("INSERT INTO SAMPLE (ID, NAME, MEASURED) VALUES (2, 'Fichte', '20240305 18:00:00')");
        session.db_ADO = connection;
        listen();
    }
    SampleDatabase(const SampleDatabase&) = delete;
    SampleDatabase& operator=(const SampleDatabase&) = delete;
    ~SampleDatabase() { connection->listen({}); }

    /// The statements since the last call.
    std::vector<std::string> statements() { return std::exchange(sent_, {}); }

    /// What stands in the first column of the first row now; Empty where there is no row.
    Variant stands(std::string_view statement)
    {
        ado::Recordset rows;
        connection->listen({});
        rows.Open(statement, connection);
        listen();
        return rows.AtEOF() ? Variant{} : rows.Fields().Item(0).Value();
    }

    ado::ConnectionRef connection;
    TmkVar session;

private:
    void listen()
    {
        connection->listen([this](std::string_view statement) { sent_.emplace_back(statement); });
    }
    std::vector<std::string> sent_;
};

} // namespace tamarok::test
