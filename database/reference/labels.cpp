#include "tamarok_database/labels.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <map>

#include "languages.h"
#include "resources.h"
#include "tsv_table.h"

namespace tamarok {
namespace {

using database::languages;

/// The texts of a column in the order of `languages`.
using Label = std::array<std::string_view, languages.size()>;
using Labels = std::map<std::int64_t, Label>;

/// Reads the labels by column id. The views point into the embedded file.
Labels readLabels()
{
    const database::TsvTable table{"log_columns", database::resource("texts", "log_columns.tsv").text};
    const std::size_t idColumn = table.column("ID");
    Labels labels;
    for (std::size_t row = 0; row < table.rows(); ++row) {
        Label& label = labels[table.whole(row, idColumn)];
        for (std::size_t language = 0; language < languages.size(); ++language)
            label[language] = table.cell(row, table.column(languages[language]));
    }
    return labels;
}

} // namespace

std::string_view columnLabel(std::int16_t id, std::string_view language)
{
    static const Labels labels = readLabels(); // read once; constant data of the program
    const auto column = labels.find(id);
    if (column == labels.end()) return {};
    const Label& label = column->second;
    const auto* const found = std::find(languages.begin(), languages.end(), language);
    return found == languages.end() ? label.front() : label[static_cast<std::size_t>(found - languages.begin())];
}

} // namespace tamarok
