#include "command_line.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <charconv>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "call/call_command.h"
#include "check/check_command.h"
#include "command_help.h"
#include "connections.h"
#include "copy/copy_command.h"
#include "day/day_command.h"
#include "init/init_command.h"
#include "list/columns_command.h"
#include "list/list_command.h"
#include "list/select_command.h"
#include "usage_error.h"
#include "volume/volume_command.h"

#include "tamarok/c_version.h"
#include "tamarok/spelling.h"
#include "tamarok/text.h"

namespace tamarok::cli {

namespace {

using Command = std::function<int(Output&)>;

struct FormatName {
    std::string_view name;
    ListFormat format;
};

constexpr FormatName formats[] = {
    {"table", ListFormat::Table}, {"csv", ListFormat::Csv}, {"json", ListFormat::JsonRows}};

/// The format of that name, in any case.
ListFormat formatNamed(const std::string& name)
{
    const auto found =
        std::ranges::find_if(formats, [&](const FormatName& known) { return text::equalsNoCase(known.name, name); });
    if (found != std::end(formats)) return found->format;
    throw UsageError{"--format: '" + name + "' is none of table, csv, json" +
                     spelling::suggestionByName(name, formats)};
}

/// A subcommand with the options that it fills.
template <class Options>
struct Sub {
    CLI::App* app;
    std::shared_ptr<Options> options = std::make_shared<Options>();
};

/// Adds a subcommand. @param run     what it does once its options are filled
/// @param chosen  receives that function when the command line names the subcommand
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

// ---- options of several commands ---------------------------------------------------------------

/// Option --odbc beside --db. Where the program was built without the back end, the help does not offer it; given all
/// the same, it fails with the reason.
void addOdbc(CLI::App& app, std::optional<std::string>& text, CLI::Option* file)
{
    auto* odbc = app.add_option("--odbc", text, "connection text of a server, instead of a file")
                     ->type_name("TEXT")
                     ->excludes(file);
    if (!hasOdbc()) odbc->group("");
}

void addDatabase(CLI::App& app, DatabaseChoice& database)
{
    addOdbc(app, database.odbc,
            app.add_option("--db", database.file, "database file")->type_name("FILE")->capture_default_str());
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

void addLanguage(CLI::App& app, std::string& language)
{
    app.add_option("--lang", language, "language of the labels: GERMAN, ENGLISH or FRENCH")
        ->type_name("LANGUAGE")
        ->transform(CLI::IsMember({"GERMAN", "ENGLISH", "FRENCH"}, CLI::ignore_case).description(""))
        ->capture_default_str();
}

/// Accepts the digits of a number of 64 bits. The conversion alone would take a sign and cut what is too large.
CLI::Validator wholeNumber()
{
    return {[](const std::string& text) {
                std::uint64_t number = 0;
                const char* const end = text.data() + text.size();
                const auto [rest, problem] = std::from_chars(text.data(), end, number);
                return problem == std::errc{} && rest == end
                           ? std::string{}
                           : "Value " + text + " is not a whole number from 0 to 18446744073709551615";
            },
            ""};
}

/// Refuses a number that is no column id; any other text may be a label.
CLI::Validator columnWord()
{
    return {[](const std::string& text) {
                const bool isNumber = text.find_first_not_of("0123456789") == std::string::npos;
                std::int16_t id = 0;
                const auto problem = std::from_chars(text.data(), text.data() + text.size(), id).ec;
                return !isNumber || (problem == std::errc{} && id > 0) ? std::string{}
                                                                       : "Value " + text + " not in range 1 to 32767";
            },
            ""};
}

// ---- the commands ------------------------------------------------------------------------------

void addInit(CLI::App& program, Command& chosen)
{
    const auto sub = add(program, "init", help::init, runInit, chosen);
    InitOptions& options = *sub.options;
    auto* file = sub.app->add_option("FILE", options.file, "database file to make")->type_name("");
    addOdbc(*sub.app, options.odbc, file);
    sub.app->add_option("--logs", options.logs, "number of logs")
        ->type_name("N")
        ->check(CLI::Range(std::int64_t{0}, std::int64_t{100'000'000}).description(""))
        ->capture_default_str();
    sub.app->add_option("--records", options.records, "number of orders, plans, contracts and so on, each")
        ->type_name("N")
        ->check(CLI::Range(0, 100'000).description(""))
        ->capture_default_str();
    sub.app->add_option("--seed", options.seed, "start of the random numbers")
        ->type_name("S")
        ->check(wholeNumber())
        ->capture_default_str();
    sub.app->add_flag("--empty", options.empty, "texts and master data alone");
    sub.app->add_flag("--force", options.force, "replace an existing file");
}

void addFormat(CLI::App& app, ListFormat& format)
{
    const auto choose = [&format](const std::string& name) { format = formatNamed(name); };
    app.add_option_function<std::string>("--format", choose, "table, csv or json; table by default")
        ->type_name("FORMAT");
}

void addCopy(CLI::App& program, Command& chosen)
{
    const auto sub = add(program, "copy", help::copy, runCopy, chosen);
    CopyOptions& options = *sub.options;
    sub.app->add_option("--db", options.file, "database file")->required()->type_name("FILE");
    sub.app->add_option("--odbc", options.odbc, "connection text of the server")->required()->type_name("TEXT");
    sub.app->add_flag("--from-odbc", options.fromOdbc, "from the server to a new file");
    addFormat(*sub.app, options.format);
}

/// Grouping, condition and order of a list.
void addListClauses(CLI::App& app, ListOptions& options)
{
    ListRequest& list = options.list;
    app.add_flag("--group", list.group, "sum the measures by the other columns");
    app.add_option("--where", list.where, "condition in SQL, without the word WHERE")->type_name("SQL");
    app.add_option("--order", options.orderColumns, "order by this column; may be given again")
        ->type_name("COLUMN")
        ->expected(1)
        ->check(columnWord())
        ->multi_option_policy(CLI::MultiOptionPolicy::TakeAll);
    app.add_flag("--desc", list.descending, "order downwards");
}

void addListArguments(CLI::App& app, ListOptions& options)
{
    app.add_option("TYPE", options.list.type, "list type, such as LOG")->required()->type_name("");
    app.add_option("COLUMN", options.columns, "ids or labels of columns, in the order of the list")
        ->required()
        ->check(columnWord())
        ->type_name("");
    addDatabase(app, options.database);
    addVersion(app, options.list.version);
    addListClauses(app, options);
    addLanguage(app, options.language);
    app.add_option("--limit", options.list.limit,
                   "greatest number of rows; Oracle text is read no further instead of being cut")
        ->type_name("N")
        ->check(CLI::Range(std::int64_t{0}, std::int64_t{2'147'483'647}).description(""));
    app.add_flag("--oracle", options.oracle, "compose Oracle text instead of SQL Server text");
    addLocale(app, options.locale, "the machine's by default");
}

void addList(CLI::App& program, Command& chosen)
{
    const auto sub = add(program, "list", help::list, runList, chosen);
    addListArguments(*sub.app, *sub.options);
    addFormat(*sub.app, sub.options->format);
}

void addSql(CLI::App& program, Command& chosen)
{
    const auto sub = add(program, "sql", help::sql, runSql, chosen);
    addListArguments(*sub.app, *sub.options);
}

void addColumns(CLI::App& program, Command& chosen)
{
    const auto sub = add(program, "columns", help::columns, runColumns, chosen);
    sub.app->add_option("TYPE", sub.options->type, "list type, such as LOG")->required()->type_name("");
    addDatabase(*sub.app, sub.options->database);
    addVersion(*sub.app, sub.options->version);
    addLanguage(*sub.app, sub.options->language);
}

void addTypes(CLI::App& program, Command& chosen)
{
    const auto sub = add(program, "types", help::types, runTypes, chosen);
    addDatabase(*sub.app, sub.options->database);
    addLanguage(*sub.app, sub.options->language);
}

void addDay(CLI::App& program, Command& chosen)
{
    const auto sub = add(program, "day", help::day, runDay, chosen);
    addDatabase(*sub.app, sub.options->database);
    addLocale(*sub.app, sub.options->locale, "de-AT by default");
}

void addSelect(CLI::App& program, Command& chosen)
{
    const auto sub = add(program, "select", help::select, runSelect, chosen);
    SelectOptions& options = *sub.options;
    sub.app->add_option("KEY", options.key, "key of the selection, in capitals")->type_name("");
    sub.app->add_option("FIELD", options.fields, "fields in their order; an empty one as \"\"")->type_name("");
    addDatabase(*sub.app, options.database);
    sub.app->add_flag("--oracle", options.oracle, "compose Oracle text instead of SQL Server text");
    sub.app->add_flag("--run", options.run, "run the statement and print its rows");
    addFormat(*sub.app, options.format);
    addLocale(*sub.app, options.locale, "the machine's by default");
}

/// Without --db and --odbc there is no connection.
void addCall(CLI::App& program, Command& chosen)
{
    const auto sub = add(program, "call", help::call, runCall, chosen);
    auto* database = sub.app->add_option("--db", sub.options->database, "database file")->type_name("FILE");
    addOdbc(*sub.app, sub.options->odbc, database);
    addLocale(*sub.app, sub.options->locale, "the machine's by default");
}

void addCheck(CLI::App& program, Command& chosen)
{
    const auto sub = add(program, "check", help::check, runCheck, chosen);
    addDatabase(*sub.app, sub.options->database);
    sub.app->add_option("--date-format", sub.options->dateFormat, "date format of the application's sessions")
        ->type_name("FORMAT")
        ->capture_default_str();
    addFormat(*sub.app, sub.options->format);
}

/// How timber is measured, and what counts where a table has no such column.
void addVolumeSettings(CLI::App& app, VolumeSettings& settings)
{
    app.add_option("--pieces", settings.pieces, "number of pieces")->type_name("N")->capture_default_str();
    app.add_option("--bark", settings.bark, "bark deduction, in the unit of --mode")->type_name("BARK");
    app.add_option("--mode", settings.mode, "unit of the bark: % of the volume or cm of the diameter")
        ->type_name("%|cm")
        ->check(CLI::IsMember({"%", "cm"}).description(""));
    app.add_option("--places", settings.places, "decimals to which the piece is rounded")
        ->type_name("N")
        ->check(CLI::Range(0, 22).description(""))
        ->capture_default_str();
    app.add_option("--format", settings.pattern, "number pattern such as 0.000; the places by default")
        ->type_name("PATTERN");
}

void addVolume(CLI::App& program, Command& chosen)
{
    const auto sub = add(program, "volume", help::volume, runVolume, chosen);
    VolumeOptions& options = *sub.options;
    auto* table = sub.app->add_option("--csv", options.csv, "table of logs to measure")->type_name("FILE");
    sub.app->add_option("--d", options.diameter, "diameter in cm")->type_name("CM")->excludes(table);
    sub.app->add_option("--l", options.length, "length in m")->type_name("M")->excludes(table);
    addVolumeSettings(*sub.app, options.settings);
    addLocale(*sub.app, options.settings.locale, "the machine's by default, and for a table its own separator");
}

/// Explains the first word of the command line that no command or option knows; empty where all are known.
std::string describeUnknownWord(const CLI::App& program)
{
    const auto chosen = program.get_subcommands();
    const CLI::App& app = chosen.empty() ? program : *chosen.front();
    const std::vector<std::string> unknown = app.remaining();
    if (unknown.empty()) return {};
    const std::string& word = unknown.front();
    std::vector<std::string> names;
    const bool isOption = word.starts_with('-');
    if (isOption) {
        for (const CLI::Option* option : app.get_options())
            if (!option->get_group().empty()) names.push_back(option->get_name());
    } else if (chosen.empty()) {
        for (const CLI::App* command : app.get_subcommands({}))
            names.push_back(command->get_name());
    }
    const std::vector<std::string_view> known{names.begin(), names.end()};
    const std::string kind = isOption ? "unknown option '" : chosen.empty() ? "unknown command '" : "unexpected '";
    return kind + word + "'" + spelling::suggestion(word, known);
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
    CLI::App program{help::program, "tamarok"};
    Command chosen;
    const std::string version = "tamarok " + C_Version{}.DLL_Version();
    program.set_version_flag("--version", version, "print the version");
    program.require_subcommand(1);
    addInit(program, chosen);
    addCopy(program, chosen);
    addCheck(program, chosen);
    addDay(program, chosen);
    addList(program, chosen);
    addSql(program, chosen);
    addSelect(program, chosen);
    addTypes(program, chosen);
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
        const std::string unknown = describeUnknownWord(program);
        throw UsageError{unknown.empty() ? error.what() : unknown};
    }
    return chosen;
}

} // namespace tamarok::cli
