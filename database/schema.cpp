#include "database/schema.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>

#include "database/resources.h"

#include "tamarok/error.h"

namespace tamarok::database {
namespace {

enum class Part : std::uint8_t { Tables, Indexes };

Part partOf(std::string_view batch)
{
    return batch.starts_with("CREATE INDEX ") || batch.starts_with("CREATE UNIQUE INDEX ") ? Part::Indexes
                                                                                           : Part::Tables;
}

void runBatches(ado::Connection& connection, Part part)
{
    for (const Resource& file : resources("schema")) {
        try {
            for (const std::string_view batch : batches(file.text))
                if (partOf(batch) == part) connection.Execute(batch);
        } catch (Error& error) {
            throw error.addContext("Schema " + std::string{file.name});
        }
    }
}

} // namespace

const Resource& resource(std::string_view group, std::string_view name)
{
    for (const Resource& file : resources(group))
        if (file.name == name) return file;
    throw Error{errors::fileNotFound, "The program holds no file " + std::string{group} + "/" + std::string{name} + ".",
                "database"};
}

std::vector<std::string_view> batches(std::string_view script)
{
    std::vector<std::string_view> parts;
    std::size_t start = 0;
    const auto add = [&](std::size_t end) {
        const std::string_view part = script.substr(start, end - start);
        if (part.find_first_not_of(" \t\r\n") != std::string_view::npos) parts.push_back(part);
    };
    for (std::size_t line = 0; line < script.size();) {
        const std::size_t end = std::min(script.find('\n', line), script.size());
        std::string_view text = script.substr(line, end - line);
        while (!text.empty() && (text.back() == '\r' || text.back() == ' '))
            text.remove_suffix(1);
        if (text == "GO") {
            add(line);
            start = end == script.size() ? end : end + 1;
        }
        line = end + 1;
    }
    add(script.size());
    return parts;
}

void createTables(ado::Connection& connection)
{
    runBatches(connection, Part::Tables);
}

void createIndexes(ado::Connection& connection)
{
    runBatches(connection, Part::Indexes);
}

} // namespace tamarok::database
