#include <cstdlib>
#include <iostream>
#include <memory>
#include <string>

#include "fuzz_input.h"
#include "tamarok_embedded/connect.h"

#include "tamarok/ado_backend.h"
#include "tamarok/error.h"

/// Runs each input as a batch on a small database in memory, and reads every value of its rows. An input ends in an
/// answer or in an error with a number; the database is usable afterwards.
namespace {

using namespace tamarok;

constexpr std::int32_t seconds = 2;
constexpr int mostRows = 1000;

constexpr std::string_view script = R"(
CREATE TABLE LOGS (ID_LOG INT IDENTITY(1,1) PRIMARY KEY, LISTE NVARCHAR(20) NOT NULL, HA CHAR(5), KUBATUR DECIMAL(18,3),
  LAENGE FLOAT, STK INT, LISTDATUM SMALLDATETIME, BETRAG MONEY, GEPRUEFT BIT, BEMERKUNG NVARCHAR(MAX));
CREATE TABLE HOLZART (ID INT PRIMARY KEY, HA NVARCHAR(5) NOT NULL UNIQUE, GUELTIG_BIS DATETIME);
INSERT INTO HOLZART (ID, HA, GUELTIG_BIS) VALUES (1, 'FI', '20301231'), (2, 'TA', NULL), (3, N'BÜ', '20240229 10:15');
INSERT INTO LOGS (LISTE, HA, KUBATUR, LAENGE, STK, LISTDATUM, BETRAG, GEPRUEFT, BEMERKUNG) VALUES
  ('1/24', 'FI', 1.234, 4.5, 1, '20240305', 100.5, 1, N'Straße'), ('1/24', 'ta', 0, NULL, 12, NULL, -3, 0, ''),
  ('2/24', NULL, NULL, 1e10, -5, '20781231 23:59', NULL, NULL, NULL))";

ado::Statement statementOf(std::string_view text)
{
    ado::Statement statement;
    statement.text = text;
    statement.timeoutSeconds = seconds;
    return statement;
}

void readAll(ado::Session& session, std::string_view text)
{
    const auto cursor = session.open(statementOf(text));
    for (int row = 0; row < mostRows && cursor->next(); ++row) {
        for (std::size_t column = 0; column < cursor->columns().size(); ++column)
            static_cast<void>(cursor->value(column));
    }
}

[[noreturn]] void complain(std::string_view what, const Error& error)
{
    std::cerr << what << ": " << error.number << " " << error.description << '\n';
    std::abort();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const ado::ConnectionRef connection = embedded::connectInMemory();
    ado::Session& session = connection->session();
    session.execute(statementOf(script));
    try {
        readAll(session, fuzz::textOf(data, size));
    } catch (const Error& error) {
        if (error.number == 0 || error.description.empty()) complain("an error without a number or text", error);
        if (error.description.starts_with("parser stack")) complain("an error of SQLite", error);
    }
    try {
        readAll(session, "SELECT 1");
    } catch (const Error& error) {
        complain("the connection is unusable afterwards", error);
    }
    return 0;
}
