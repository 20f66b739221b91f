#pragma once

#include <fstream>
#include <stdexcept>
#include <string>
#include <vector>

namespace tamarok::test {

/// The lines of a tab-separated file beside the tests, each divided into its fields.
inline std::vector<std::vector<std::string>> readTable(const std::string& name)
{
    std::ifstream file{std::string{TAMAROK_TEST_DATA} + "/" + name};
    if (!file) {
        throw std::runtime_error("cannot read " + name);
    }
    std::vector<std::vector<std::string>> rows;
    for (std::string line; std::getline(file, line);) {
        std::vector<std::string> fields{""};
        for (const char character : line) {
            if (character == '\t') {
                fields.emplace_back();
            } else {
                fields.back() += character;
            }
        }
        rows.push_back(std::move(fields));
    }
    return rows;
}

} // namespace tamarok::test
