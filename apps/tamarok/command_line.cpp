#include "command_line.h"

#include <CLI/CLI.hpp>
#include <map>
#include <memory>
#include <string>

#include "commands.h"
#include "list/select_command.h"

#include "tamarok/c_version.h"

namespace tamarok::cli {

namespace {

using Command = std::function<int(Output&)>;

constexpr const char* programHelp = R"(Lists, options and operations of the timber database on the command line.

Examples:
  tamarok init demo.db --logs 10000 --seed 1
  tamarok day --db demo.db
  tamarok list LOG 1 23 32 36 --limit 20 --db demo.db
  tamarok list LOG 23 36 203 --group --order 23 --locale de-AT --db demo.db
  echo '{"class":"C_Version","op":"DLL_Version"}' | tamarok call

Exit status: 0 done, 1 failed, 2 wrong usage. Errors come as one line on standard error.)";

constexpr const char* initHelp =
    R"(Makes an embedded database with the schema, master data, texts and a reproducible set of logs.

The same number of logs and the same seed give the same data. The file appears only when it is
complete: an interrupted run leaves nothing under its name.

Example:
  tamarok init demo.db --logs 1000000 --seed 7)";

constexpr const char* listHelp = R"(Composes a list of numbered columns, runs it and prints it.

The statement is made by the library's own operations: FROM and its joins, the SELECT list, and with
--group the GROUP BY list, where measures are summed and averages weighted. 'tamarok columns TYPE'
shows the numbers.

Examples:
  tamarok list LOG 1 2 23 36 --where "LOGS.KUBATUR > 2" --order 1 --limit 20
  tamarok list LOG 23 32 36 203 280 319 320 --group --order 23 --order 32
  tamarok list LOG 1 36 --format csv > logs.csv)";

constexpr const char* sqlHelp = R"(Prints the statement that 'tamarok list' would run with the same arguments.

Example:
  tamarok sql LOG 23 36 203 --group --oracle)";

constexpr const char* columnsHelp =
    R"(Prints id, label and SQL expression of every column of a list type, divided by tabs.

Example:
  tamarok columns LOG | grep KUBATUR)";

constexpr const char* selectHelp =
    R"(Prints the statement of a base selection, or with --run its rows. Without a key it lists all keys.

A key ending in _GRID lists the rows of a code field, one ending in _VALID checks a typed code. The
fields are what the selection reads: mostly the code, a master key or a whole condition.

Examples:
  tamarok select HOLZART_GRID --run --db demo.db
  tamarok select GUETEKLASSE_HS_LOGS_VALID BL c --run --db demo.db
  tamarok select FARBE_VALID rt --oracle)";

constexpr const char* dayHelp =
    R"(Walks through a working day on a database: what the forms of the application ask of the library,
with the statements it composes and the lists they give.

Example:
  tamarok init demo.db --logs 5000 && tamarok day --db demo.db)";

constexpr const char* callHelp =
    R"(Reads requests from standard input, one JSON object a line, and answers each with one on one line.

Requests: class/op/args call an operation; session, regional, now, answers and dialog set the scene;
new, get, put and invoke work on objects; connect, exec and query on connections; describe lists all
classes. Without --db there is no connection, and what needs one fails with error 91.

The session record starts with user 1, language GERMAN, date format DD.MM.YYYY, the period 1900-01-01
to 2050-12-31, single-user operation, no customer key and SQL Server text; "session" changes it.

Examples:
  echo '{"class":"Comm_CSel","op":"GetColumn","args":[36,"R",{"$ref":"TmkVar"}]}' | tamarok call --db demo.db
  echo '{"query":"SELECT COUNT(*) AS N FROM LOGS"}' | tamarok call --db demo.db
  echo '{"describe":true}' | tamarok call)";

constexpr const char* volumeHelp =
    R"(Measures round timber: a log of a diameter in centimetres and a length in metres, or a table of logs.

A table has a header line with the columns d, l, and if wanted pieces, bark and mode (or durchmesser,
laenge, stueck or stk, rinde, modus) in any order and case; other columns are kept. Commas or semicolons part
its fields. Numbers have a decimal comma or point without grouping, in options too. Every line is printed
with its volume in cubic metres behind it. A line that cannot be measured is told on standard error and
left out, and then the exit status is 1. The options stand in for columns and fields that a table lacks.

Examples:
  tamarok volume --d 30 --l 5 --pieces 10
  tamarok volume --d 32,5 --l 4,1 --bark 1,2 --mode cm --places 3 --locale de-AT
  tamarok volume --csv logs.csv > volumes.csv)";

const std::map<std::string, ListFormat>& formats()
{
    static const std::map<std::string, ListFormat> names{
        {"table", ListFormat::Table}, {"csv", ListFormat::Csv}, {"json", ListFormat::JsonRows}};
    return names;
}

/// A subcommand with what it fills in and what it then runs.
template <class Options>
struct Sub {
    CLI::App* app;
    std::shared_ptr<Options> options = std::make_shared<Options>();
};

template <class Options>
Sub<Options> add(CLI::App& program, const char* name, std::string_view help, int (*run)(const Options&, Output&),
                 Command& chosen)
{
    // The first paragraph also stands in the program's help; the rest only in the command's own.
    const std::size_t paragraph = help.find("\n\n");
    Sub<Options> sub{program.add_subcommand(name, std::string{help.substr(0, paragraph)})};
    sub.app->footer(std::string{help.substr(paragraph + 1)});
    sub.app->callback([options = sub.options, run, &chosen] {
        chosen = [options, run](Output& output) { return run(*options, output); };
    });
    return sub;
}

void addDatabase(CLI::App& app, std::string& database)
{
    app.add_option("--db", database, "database file")->type_name("FILE")->capture_default_str();
}

void addVersion(CLI::App& app, std::string& version)
{
    app.add_option("--ver", version, "settlement: R for the main invoice, A1 to A8 for the further ones")
        ->type_name("R|A1..A8")
        ->check(CLI::IsMember({"R", "A1", "A2", "A3", "A4", "A5", "A6", "A7", "A8"}, CLI::ignore_case).description(""))
        ->capture_default_str();
}

void addLocale(CLI::App& app, std::string& locale, const char* fallback)
{
    app.add_option("--locale", locale, std::string{"regional settings such as de-AT or en-GB; "} + fallback)
        ->type_name("NAME");
}

void addInit(CLI::App& program, Command& chosen)
{
    const auto sub = add(program, "init", initHelp, runInit, chosen);
    InitOptions& options = *sub.options;
    sub.app->add_option("FILE", options.file, "database file to make")->required()->type_name("");
    sub.app->add_option("--logs", options.logs, "number of logs")
        ->type_name("N")
        ->check(CLI::Range(std::int64_t{0}, std::int64_t{100'000'000}).description(""))
        ->capture_default_str();
    sub.app->add_option("--seed", options.seed, "start of the random numbers")->type_name("S")->capture_default_str();
    sub.app->add_flag("--force", options.force, "replace an existing file");
}

void addListArguments(CLI::App& app, ListOptions& options)
{
    app.add_option("TYPE", options.list.type, "list type, such as LOG")->required()->type_name("");
    app.add_option("ID", options.list.ids, "column ids, in the order of the list")
        ->required()
        ->type_name("")
        ->check(CLI::Range(1, 32767).description(""));
    addDatabase(app, options.database);
    addVersion(app, options.list.version);
    app.add_flag("--group", options.list.group, "sum the measures by the other columns");
    app.add_option("--where", options.list.where, "condition in SQL, without the word WHERE")->type_name("SQL");
    app.add_option("--order", options.list.orderIds, "order by this column; may be given again")
        ->type_name("ID")
        ->expected(1)
        ->multi_option_policy(CLI::MultiOptionPolicy::TakeAll)
        ->check(CLI::Range(1, 32767).description(""));
    app.add_flag("--desc", options.list.descending, "order downwards");
    app.add_option("--limit", options.list.limit,
                   "greatest number of rows; Oracle text is read no further instead of being cut")
        ->type_name("N")
        ->check(CLI::Range(std::int64_t{0}, std::int64_t{2'147'483'647}).description(""));
    app.add_flag("--oracle", options.oracle, "compose Oracle text instead of SQL Server text");
    addLocale(app, options.locale, "the machine's by default");
}

void addList(CLI::App& program, Command& chosen)
{
    const auto sub = add(program, "list", listHelp, runList, chosen);
    addListArguments(*sub.app, *sub.options);
    sub.app->add_option("--format", sub.options->format, "table, csv or json; table by default")
        ->type_name("FORMAT")
        ->transform(CLI::CheckedTransformer(formats(), CLI::ignore_case).description(""));
}

void addSql(CLI::App& program, Command& chosen)
{
    const auto sub = add(program, "sql", sqlHelp, runSql, chosen);
    addListArguments(*sub.app, *sub.options);
}

void addColumns(CLI::App& program, Command& chosen)
{
    const auto sub = add(program, "columns", columnsHelp, runColumns, chosen);
    sub.app->add_option("TYPE", sub.options->type, "list type, such as LOG")->required()->type_name("");
    addDatabase(*sub.app, sub.options->database);
    addVersion(*sub.app, sub.options->version);
}

void addDay(CLI::App& program, Command& chosen)
{
    const auto sub = add(program, "day", dayHelp, runDay, chosen);
    addDatabase(*sub.app, sub.options->database);
    addLocale(*sub.app, sub.options->locale, "de-AT by default");
}

void addSelect(CLI::App& program, Command& chosen)
{
    const auto sub = add(program, "select", selectHelp, runSelect, chosen);
    SelectOptions& options = *sub.options;
    sub.app->add_option("KEY", options.key, "key of the selection, in capitals")->type_name("");
    sub.app->add_option("FIELD", options.fields, "fields in their order; an empty one as \"\"")->type_name("");
    addDatabase(*sub.app, options.database);
    sub.app->add_flag("--oracle", options.oracle, "compose Oracle text instead of SQL Server text");
    sub.app->add_flag("--run", options.run, "run the statement and print its rows");
    sub.app->add_option("--format", options.format, "table, csv or json; table by default")
        ->type_name("FORMAT")
        ->transform(CLI::CheckedTransformer(formats(), CLI::ignore_case).description(""));
    addLocale(*sub.app, options.locale, "the machine's by default");
}

void addCall(CLI::App& program, Command& chosen)
{
    const auto sub = add(program, "call", callHelp, runCall, chosen);
    auto* database = sub.app->add_option("--db", sub.options->database, "database file")->type_name("FILE");
    sub.app->add_option("--odbc", sub.options->odbc, "ODBC connection text")->type_name("TEXT")->excludes(database);
    addLocale(*sub.app, sub.options->locale, "the machine's by default");
}

void addVolume(CLI::App& program, Command& chosen)
{
    const auto sub = add(program, "volume", volumeHelp, runVolume, chosen);
    VolumeOptions& options = *sub.options;
    auto* table = sub.app->add_option("--csv", options.csv, "table of logs to measure")->type_name("FILE");
    sub.app->add_option("--d", options.diameter, "diameter in cm")->type_name("CM")->excludes(table);
    sub.app->add_option("--l", options.length, "length in m")->type_name("M")->excludes(table);
    sub.app->add_option("--pieces", options.settings.pieces, "number of pieces")->type_name("N")->capture_default_str();
    sub.app->add_option("--bark", options.settings.bark, "bark deduction, in the unit of --mode")->type_name("BARK");
    sub.app->add_option("--mode", options.settings.mode, "unit of the bark: % of the volume or cm of the diameter")
        ->type_name("%|cm")
        ->check(CLI::IsMember({"%", "cm"}).description(""));
    sub.app->add_option("--places", options.settings.places, "decimals to which the piece is rounded")
        ->type_name("N")
        ->check(CLI::Range(0, 22).description(""))
        ->capture_default_str();
    sub.app->add_option("--format", options.settings.pattern, "number pattern such as 0.000; the places by default")
        ->type_name("PATTERN");
    addLocale(*sub.app, options.settings.locale, "the machine's by default, and for a table its own separator");
}

Command printing(std::string text)
{
    return [text = std::move(text)](Output& output) {
        output.write(text);
        output.flush();
        return 0;
    };
}

} // namespace

std::function<int(Output&)> parseCommandLine(int count, const char* const* arguments)
{
    CLI::App program{programHelp, "tamarok"};
    Command chosen;
    const std::string version = "tamarok " + C_Version{}.DLL_Version();
    program.set_version_flag("--version", version, "print the version");
    program.require_subcommand(1);
    addInit(program, chosen);
    addDay(program, chosen);
    addList(program, chosen);
    addSql(program, chosen);
    addSelect(program, chosen);
    addColumns(program, chosen);
    addCall(program, chosen);
    addVolume(program, chosen);
    try {
        program.parse(count, arguments);
    } catch (const CLI::CallForVersion&) {
        return printing(version + "\n");
    } catch (const CLI::CallForHelp&) {
        return printing(program.help());
    } catch (const CLI::ParseError& error) {
        throw UsageError{error.what()};
    }
    return chosen;
}

} // namespace tamarok::cli
