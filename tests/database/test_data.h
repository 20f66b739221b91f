#pragma once

#include <cstdint>
#include <fstream>
#include <gtest/gtest.h>
#include <map>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

namespace tamarok::database {

struct ColumnReference {
    std::string table;
    std::string column;
};

/// The tables and columns that each column of the log list reads; none for a row that is composed of
/// others alone.
inline std::map<std::int16_t, std::vector<ColumnReference>> logColumnReferences()
{
    const std::string path = std::string{TAMAROK_DATABASE_TEST_DATA} + "/log_column_references.tsv";
    std::ifstream file{path};
    if (!file) throw std::runtime_error{"cannot read " + path};
    std::map<std::int16_t, std::vector<ColumnReference>> references;
    for (std::string line; std::getline(file, line);) {
        std::istringstream cells{line};
        std::int16_t id = 0;
        cells >> id;
        auto& columns = references[id];
        for (std::string name; cells >> name;)
            columns.push_back({name.substr(0, name.find('.')), name.substr(name.find('.') + 1)});
    }
    return references;
}

} // namespace tamarok::database
