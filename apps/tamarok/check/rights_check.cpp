#include <array>
#include <map>
#include <string>
#include <tuple>
#include <vector>

#include "check/checks.h"
#include "check/rows.h"
#include "tamarok_database/scripts.h"
#include "tamarok_tsql/table_definition.h"

#include "tamarok/text.h"

namespace tamarok::cli::check {

namespace {

/// The rights that the application needs, in the order of the columns of the queries.
constexpr std::array<std::string_view, 4> tableRights{"SELECT", "INSERT", "UPDATE", "DELETE"};

/// Rights that are lacking on objects of a schema.
struct Lack {
    std::string rights;
    std::string schema;
    friend bool operator<(const Lack& a, const Lack& b)
    {
        return std::tie(a.rights, a.schema) < std::tie(b.rights, b.schema);
    }
};

using Lacking = std::map<Lack, std::vector<std::string>>;

std::string permission(std::string_view object, std::string_view right)
{
    return "HAS_PERMS_BY_NAME('" + text::replaceAll(tsql::bracketed(object), "'", "''") + "', 'OBJECT', '" +
           std::string{right} + "')";
}

/// The names of the rights that the login lacks on an object.
template <class Rights>
std::string lackingRights(const ado::ConnectionRef& connection, const std::string& object, const Rights& rights)
{
    std::string query = "SELECT ";
    for (const std::string_view right : rights)
        query += (query.ends_with(' ') ? "" : ", ") + permission(object, right);
    const std::vector<std::string> row = readTexts(connection, query).at(0);
    std::string lacking;
    for (std::size_t i = 0; i < rights.size(); ++i)
        if (row.at(i) != "1") lacking.append(lacking.empty() ? "" : ", ").append(rights[i]);
    return lacking;
}

/// One GRANT for each of a few objects, or one for their schema.
std::string grants(const Lack& lack, const std::vector<std::string>& objects, const std::string& user)
{
    constexpr std::size_t few = 3;
    const std::string grant = "GRANT " + lack.rights + " ON ";
    const std::string to = " TO " + tsql::bracketed(user);
    if (objects.size() > few) return grant + "SCHEMA::" + tsql::bracketed(lack.schema) + to;
    std::string text;
    for (const std::string& object : objects) {
        if (!text.empty()) text += "; ";
        text.append(grant).append(tsql::bracketed(lack.schema)).append(".").append(tsql::bracketed(object)).append(to);
    }
    return text;
}

void report(Context& context, const Lacking& lacking, const char* kind)
{
    const std::string user = readText(context.installation.connection(), "SELECT USER_NAME()");
    for (const auto& [lack, objects] : lacking)
        context.report.add(State::Missing, "right " + lack.rights,
                           "on " + std::to_string(objects.size()) + " " + kind + " (" + shortList(objects) +
                               "): " + grants(lack, objects, user));
}

} // namespace

/// What the login may do. An object that it does not see at all is missing by the checks before.
void checkRights(Context& context)
{
    const ado::ConnectionRef& connection = context.installation.connection();
    Lacking tables;
    Lacking procedures;
    std::size_t objects = 0;
    for (const auto& [name, table] : context.reference.tables) {
        const auto found = context.installation.tables.find(name);
        if (found == context.installation.tables.end()) continue;
        ++objects;
        const std::string lacking = lackingRights(connection, name, tableRights);
        if (!lacking.empty()) tables[{lacking, found->second.schema}].push_back(name);
    }
    for (const database::ProcedureScript& procedure : database::procedureScripts()) {
        const std::string name{procedure.name};
        const std::string schema = readText(connection, "SELECT OBJECT_SCHEMA_NAME(OBJECT_ID('" + name + "'))");
        if (schema.empty()) continue;
        ++objects;
        const std::string lacking = lackingRights(connection, name, std::array{std::string_view{"EXECUTE"}});
        if (!lacking.empty()) procedures[{lacking, schema}].push_back(name);
    }
    if (objects == 0)
        context.report.add(State::Skipped, "rights", "no table and no procedure is known");
    else if (tables.empty() && procedures.empty())
        context.report.add(State::Ok, "rights",
                           "the login may use all " + std::to_string(objects) + " tables and procedures");
    report(context, tables, "tables");
    report(context, procedures, "procedures");
}

} // namespace tamarok::cli::check
