#include "sql_batches.h"

#include <algorithm>
#include <cstddef>

namespace tamarok::database {
namespace {

bool isSeparator(std::string_view line)
{
    return line.substr(0, line.find_last_not_of(" \r") + 1) == "GO";
}

} // namespace

std::vector<std::string_view> splitBatches(std::string_view script)
{
    std::vector<std::string_view> result;
    const auto addBatch = [&](std::size_t begin, std::size_t end) {
        const std::string_view batch = script.substr(begin, end - begin);
        if (batch.find_first_not_of(" \t\r\n") != std::string_view::npos) result.push_back(batch);
    };
    std::size_t batchBegin = 0;
    for (std::size_t line = 0; line < script.size();) {
        const std::size_t lineEnd = std::min(script.find('\n', line), script.size());
        const std::size_t nextLine = std::min(lineEnd + 1, script.size());
        if (isSeparator(script.substr(line, lineEnd - line))) {
            addBatch(batchBegin, line);
            batchBegin = nextLine;
        }
        line = nextLine;
    }
    addBatch(batchBegin, script.size());
    return result;
}

} // namespace tamarok::database
