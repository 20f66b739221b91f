#pragma once

/// Help texts of the commands. The first paragraph also stands in the program's own help.
namespace tamarok::cli::help {

inline constexpr const char* program = R"(Lists, options and operations of the timber database on the command line.

Examples:
  tamarok init demo.db --logs 10000 --seed 1
  tamarok day --db demo.db
  tamarok list LOG 1 23 32 36 --limit 20 --db demo.db
  tamarok list LOG 23 36 203 --group --order 23 --locale de-AT --db demo.db
  echo '{"class":"C_Version","op":"DLL_Version"}' | tamarok call

Exit status: 0 done, 1 failed, 2 wrong usage. Errors come as one line on standard error.)";

inline constexpr const char* init =
    R"(Makes a database with the schema, texts, master data and a reproducible set of logs: a file, or with --odbc in an
empty database of a server.

The same number of logs and the same seed give the same data. With --empty there are texts and master data alone.

The file appears only when it is complete: an interrupted run leaves nothing under its name. With --force an
existing file is replaced in the same way, with its owner and mode, but not while another session has it open.

A server's database must be empty: tables of the schema may be there, but no rows and no other tables. All is
one transaction, so that an interrupted run leaves it as it was. The rows are made in memory first.

Examples:
  tamarok init demo.db --logs 1000000 --seed 7
  tamarok init --odbc 'DSN=timber' --logs 20000
  tamarok init --odbc 'DSN=timber' --empty)";

inline constexpr const char* copy =
    R"(Moves an embedded database into an empty database of a server, or with --from-odbc back into a new file.

All tables are copied with their rows, keys, indexes and identity numbers, those of the user too. At the end the
rows are read back, and the counts and sums of each table on both sides are printed. A sum is computed from
the values that the library reads and does not depend on the order of the rows. Where they differ, nothing is copied.

All is one transaction of the server, and a file appears only when it is complete: an interrupted run, a lost
connection or a full disk leaves the target as it was. Views, triggers, checks and references are not copied;
each is named. Nobody should work on the source meanwhile.

Examples:
  tamarok copy --db timber.db --odbc 'DSN=timber'
  tamarok copy --db back.db --odbc 'DSN=timber' --from-odbc --format csv > tables.csv)";

inline constexpr const char* list = R"(Composes a list of numbered columns, runs it and prints it.

The statement is made by the library's own operations: FROM and its joins, the SELECT list, and with
--group the GROUP BY list, where measures are summed and averages weighted. A column is named by its id
or by its label; 'tamarok types' shows the list types, 'tamarok columns TYPE' the columns. The database is
opened for reading only. A table shows each column in its format, as the lists of the forms do; csv and
json give the plain values.

Examples:
  tamarok list LOG 1 2 23 36 --where "LOGS.KUBATUR > 2" --order 1 --limit 20
  tamarok list LOG 23 32 36 203 280 319 320 --group --order 23 --order 32
  tamarok list LOG Liste "Volumen fm" --format csv > logs.csv
  tamarok list BBHUNDE 1 2 3 --lang FRENCH)";

inline constexpr const char* sql = R"(Prints the statement that 'tamarok list' would run with the same arguments.

Example:
  tamarok sql LOG 23 36 203 --group --oracle)";

inline constexpr const char* columns =
    R"(Prints id, label, format, measure and SQL expression of every column of a list type, divided by tabs.

The measure is the function that a grouped list applies, SUM or MAX; a column without one is a key.

Examples:
  tamarok columns LOG | grep KUBATUR
  tamarok columns BBHAB --lang ENGLISH | cut -f 1,2)";

inline constexpr const char* types =
    R"(Prints key, name, main table and number of columns of every list type, divided by tabs.

Example:
  tamarok types --lang ENGLISH)";

inline constexpr const char* select =
    R"(Prints the statement of a base selection, or with --run its rows. Without a key it lists all keys.

A key ending in _GRID lists the rows of a code field, one ending in _VALID checks a typed code. The
fields are the values that the selection reads: mostly the code, a master key or a whole condition.

Examples:
  tamarok select HOLZART_GRID --run --db demo.db
  tamarok select GUETEKLASSE_HS_LOGS_VALID BL c --run --db demo.db
  tamarok select FARBE_VALID rt --oracle)";

inline constexpr const char* day =
    R"(Shows a working day on a database: the calls that the forms of the application make, the statements
that the library composes for them, and the lists that result.

Example:
  tamarok init demo.db --logs 5000 && tamarok day --db demo.db)";

inline constexpr const char* check =
    R"(Checks an installation: compares its tables, columns, procedures and texts with those of this version, and tries
one statement of each kind.

A table shows what is right and what is not, each fault with its remedy. The states are ok, missing, different, failed
and skipped. Nothing is changed: a server tries locks and options in a transaction that is rolled back, a file is opened
for reading only. Tables and columns of your own and wider texts are no faults. The exit status is 1 where anything is
missing, different or failed.

Examples:
  tamarok check --db demo.db
  tamarok check --odbc 'DSN=timber' --date-format DD.MM.YYYY
  tamarok check --odbc 'DSN=timber' --format csv > check.csv)";

inline constexpr const char* call =
    R"(Reads requests from standard input, one JSON object a line, and answers each with one on one line.

Requests: class, op and args call an operation; session, regional, now and answers change settings;
new, get, put, invoke and drop work on objects; connect, exec and query on connections; describe lists
all classes. Without --db there is no connection, and an operation that needs one fails with error 91.
The exit status is 1 where the input could not be read or ended inside an open transaction.

The session record starts with user 1, language GERMAN, date format DD.MM.YYYY, the period 1900-01-01
to 2050-12-31, single-user operation, no customer key and SQL Server text; "session" changes it.

Examples:
  echo '{"class":"Comm_CSel","op":"GetColumn","args":[36,"R",{"$ref":"TmkVar"}]}' | tamarok call --db demo.db
  echo '{"query":"SELECT COUNT(*) AS N FROM LOGS"}' | tamarok call --db demo.db
  echo '{"describe":true}' | tamarok call)";

inline constexpr const char* volume =
    R"(Measures round timber: a log of a diameter in centimetres and a length in metres, or a table of logs.

A table has a header line with the columns d, l, and if wanted pieces, bark and mode (or durchmesser,
laenge, stueck or stk, rinde, modus) in any order and case; other columns are kept. Fields are separated by
commas or semicolons. Numbers have a decimal comma or point without grouping, in options too. Every line
is printed with its volume in cubic metres in a last column. A line that cannot be measured is reported on
standard error and left out, and then the exit status is 1. Options replace missing columns and fields.

Diameters are from 0 to below 1000 cm, lengths to below 10000 m, pieces to below 1000000, bark to 100 % or
to the diameter.

Examples:
  tamarok volume --d 30 --l 5 --pieces 10
  tamarok volume --d 32,5 --l 4,1 --bark 1,2 --mode cm --places 3 --locale de-AT
  tamarok volume --csv logs.csv > volumes.csv)";

} // namespace tamarok::cli::help
