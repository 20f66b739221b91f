#include "tamarok_database/labels.h"

#include <array>
#include <cstddef>

#include "database/resources.h"
#include "database/tsv.h"

namespace tamarok {
namespace {

constexpr std::size_t lastColumn = 1041;
constexpr std::array<std::string_view, 3> languages{"GERMAN", "ENGLISH", "FRENCH"};

using Labels = std::array<std::array<std::string_view, languages.size()>, lastColumn + 1>;

/// The texts by column id; they lie in the binary, so that the views stay good.
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
    static const Labels labels = readLabels(); // never changes: constant data of the binary
    if (id < 1 || id > static_cast<std::int16_t>(lastColumn)) return {};
    const auto& label = labels[static_cast<std::size_t>(id)];
    for (std::size_t i = 0; i < languages.size(); ++i)
        if (languages[i] == language) return label[i];
    return label.front();
}

} // namespace tamarok
