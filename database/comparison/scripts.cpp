#include "tamarok_database/scripts.h"

#include "resources.h"

#include "tamarok/text.h"

namespace tamarok::database {
namespace {

/// The name that begins a text, without the brackets around a reserved word.
std::string_view firstName(std::string_view text)
{
    if (text.starts_with('[')) return text.substr(1, text.find(']') - 1);
    return text.substr(0, text.find_first_of(" (\r\n"));
}

bool makesTable(std::string_view script, std::string_view table)
{
    constexpr std::string_view words = "\nCREATE TABLE ";
    for (std::size_t at = script.find(words); at != std::string_view::npos; at = script.find(words, at + 1))
        if (text::equalsNoCase(firstName(script.substr(at + words.size())), table)) return true;
    return false;
}

/// A script of one batch without the line that ends it.
std::string_view withoutSeparator(std::string_view script)
{
    return script.substr(0, script.rfind("\nGO"));
}

} // namespace

std::vector<ProcedureScript> procedureScripts()
{
    std::vector<ProcedureScript> scripts;
    for (const Resource& file : resources("procedures"))
        scripts.push_back({file.name.substr(0, file.name.rfind('.')), withoutSeparator(file.text)});
    return scripts;
}

std::string_view scriptOfTable(std::string_view table)
{
    for (const Resource& file : resources("schema"))
        if (makesTable(file.text, table)) return file.name;
    return {};
}

} // namespace tamarok::database
