#include "list/column_words.h"

#include <algorithm>
#include <charconv>
#include <optional>

#include "list/column_labels.h"
#include "list/list_query.h"

#include "tamarok/spelling.h"
#include "tamarok/text.h"

namespace tamarok::cli {

namespace {

bool isNumber(std::string_view word)
{
    return !word.empty() && std::ranges::all_of(word, [](char c) { return c >= '0' && c <= '9'; });
}

std::int16_t idOf(const std::string& word)
{
    std::int16_t id = 0;
    std::from_chars(word.data(), word.data() + word.size(), id); // the command line has checked its range
    return id;
}

std::string listOf(const std::vector<std::int16_t>& ids)
{
    std::string list;
    for (std::size_t index = 0; index < ids.size(); ++index) {
        const bool isLast = index + 1 == ids.size();
        list.append(index == 0 ? "" : isLast ? " and " : ", ").append(std::to_string(ids[index]));
    }
    return list;
}

std::int16_t labelled(const std::string& type, const std::string& word, const ColumnLabels& labels)
{
    const std::vector<std::int16_t> ids = labels.columnsNamed(text::trim(word));
    if (ids.size() == 1) return ids.front();
    const std::string list = text::toUpper(type);
    if (ids.empty())
        throw UnknownColumn{list + " has no column '" + word + "'" + spelling::suggestion(word, labels.texts())};
    throw UnknownColumn{"'" + word + "' is the label of the columns " + listOf(ids) + " of " + list + "; give the id"};
}

} // namespace

std::vector<std::int16_t> columnIds(const std::string& type, const std::vector<std::string>& words,
                                    const TmkVar& session)
{
    std::optional<ColumnLabels> labels; // read for the first label: lists by ids need none
    std::vector<std::int16_t> ids;
    ids.reserve(words.size());
    for (const std::string& word : words) {
        if (isNumber(word)) {
            ids.push_back(idOf(word));
            continue;
        }
        if (!labels) labels.emplace(type, session);
        ids.push_back(labelled(type, word, *labels));
    }
    return ids;
}

} // namespace tamarok::cli
