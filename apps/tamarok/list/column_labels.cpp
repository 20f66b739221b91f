#include "list/column_labels.h"

#include <algorithm>
#include <memory>

#include "tamarok/collection.h"
#include "tamarok/comm_csel.h"
#include "tamarok/convert.h"
#include "tamarok/error.h"
#include "tamarok/list_catalogue.h"
#include "tamarok/text.h"

namespace tamarok::cli {

namespace {

std::string labelNumbers(const std::vector<catalogue::ColumnInfo>& columns)
{
    std::string numbers;
    for (const catalogue::ColumnInfo& column : columns)
        numbers.append(numbers.empty() ? "" : ",").append(std::to_string(column.label));
    return numbers;
}

/// The text of a number, "" for one that the database does not have.
std::string textOf(const Collection& labels, std::int16_t number)
{
    try {
        return convert::toText(labels.Item(Variant{std::to_string(number)}));
    } catch (const Error& error) {
        if (error.number != errors::invalidArgument) throw;
        return {};
    }
}

} // namespace

ColumnLabels::ColumnLabels(const std::string& type, const TmkVar& session) : key_{text::toUpper(type)}
{
    const std::vector<catalogue::ColumnInfo> columns = catalogue::columnsOf(type);
    if (columns.empty()) return;
    const std::string numbers = labelNumbers(columns);
    const std::shared_ptr<Collection> labels = Comm_CSel{}.LoadColString(numbers, session, false);
    const std::shared_ptr<Collection> headers = Comm_CSel{}.LoadColString(numbers, session, true);
    entries_.reserve(columns.size());
    for (const catalogue::ColumnInfo& column : columns)
        entries_.push_back({column.id, textOf(*labels, column.label), textOf(*headers, column.label)});
}

const ColumnLabels::Entry* ColumnLabels::find(std::int16_t id) const
{
    const auto found = std::ranges::find(entries_, id, &Entry::id);
    return found == entries_.end() ? nullptr : &*found;
}

std::string ColumnLabels::nameless(std::int16_t id) const
{
    return key_ + " " + std::to_string(id);
}

std::string ColumnLabels::label(std::int16_t id) const
{
    const Entry* entry = find(id);
    return entry == nullptr || entry->label.empty() ? nameless(id) : entry->label;
}

std::string ColumnLabels::header(std::int16_t id) const
{
    const Entry* entry = find(id);
    return entry == nullptr || entry->header.empty() ? label(id) : entry->header;
}

std::vector<std::int16_t> ColumnLabels::columnsNamed(std::string_view text) const
{
    const auto columnsBy = [&](std::string Entry::*name) {
        std::vector<std::int16_t> columns;
        for (const Entry& entry : entries_)
            if (text::equalsNoCase(entry.*name, text)) columns.push_back(entry.id);
        return columns;
    };
    // A short form that is the label of another column means that other column.
    std::vector<std::int16_t> columns = columnsBy(&Entry::label);
    return columns.empty() ? columnsBy(&Entry::header) : columns;
}

std::vector<std::string_view> ColumnLabels::texts() const
{
    std::vector<std::string_view> all;
    for (const Entry& entry : entries_) {
        all.emplace_back(entry.label);
        if (entry.header != entry.label) all.emplace_back(entry.header);
    }
    return all;
}

std::vector<std::string> columnHeaders(const std::string& type, const std::vector<std::int16_t>& ids,
                                       const TmkVar& session)
{
    const ColumnLabels labels{type, session};
    std::vector<std::string> headers;
    headers.reserve(ids.size());
    for (const std::int16_t id : ids)
        headers.push_back(labels.header(id));
    return headers;
}

std::vector<std::string> columnPatterns(const std::string& type, const std::vector<std::int16_t>& ids,
                                        const TmkVar& session)
{
    std::vector<std::string> patterns;
    patterns.reserve(ids.size());
    for (const std::int16_t id : ids)
        patterns.push_back(Comm_CSel{}.GetFormat(type, id, session));
    return patterns;
}

} // namespace tamarok::cli
