#include "tamarok_database/labels.h"

#include <algorithm>
#include <array>
#include <cstddef>

#include "languages.h"
#include "resources.h"
#include "tsv_table.h"

namespace tamarok {
namespace {

using database::languages;

constexpr std::size_t lastColumn = 1041; // greatest column id of the log catalogue

using Labels = std::array<std::array<std::string_view, languages.size()>, lastColumn + 1>;

/// Reads the labels by column id and language. The views point into the embedded file.
Labels readLabels()
{
    const database::TsvTable table{"log_columns", database::resource("texts", "log_columns.tsv").text};
    const std::size_t idColumn = table.column("ID");
    Labels labels{};
    for (std::size_t row = 0; row < table.rows(); ++row) {
        auto& label = labels.at(static_cast<std::size_t>(table.whole(row, idColumn)));
        for (std::size_t language = 0; language < languages.size(); ++language)
            label[language] = table.cell(row, table.column(languages[language]));
    }
    return labels;
}

} // namespace

std::string_view columnLabel(std::int16_t id, std::string_view language)
{
    static const Labels labels = readLabels(); // read once; constant data of the program
    if (id < 1 || id > static_cast<std::int16_t>(lastColumn)) return {};
    const auto& label = labels[static_cast<std::size_t>(id)];
    const auto* const found = std::find(languages.begin(), languages.end(), language);
    return found == languages.end() ? label.front() : label[static_cast<std::size_t>(found - languages.begin())];
}

} // namespace tamarok
