#include "lists/record_list.h"

#include <algorithm>
#include <map>
#include <unordered_map>
#include <utility>

#include "tamarok/convert.h"

namespace tamarok::workbench {

namespace {

constexpr std::size_t rowsOfReport = 4096;

Row rowOf(const ado::FieldCollection& fields)
{
    Row row;
    const std::int32_t count = fields.Count();
    row.reserve(static_cast<std::size_t>(count));
    for (std::int32_t column = 0; column < count; ++column)
        row.push_back(fields.Item(column).Value());
    return row;
}

/// Gives each element the number of equal ones before it; nothing if all differ.
template <class Key>
std::vector<std::uint32_t> occurrencesOf(const std::vector<Key>& keys)
{
    std::vector<std::uint32_t> occurrences;
    std::unordered_map<Key, std::uint32_t> seen;
    seen.reserve(keys.size());
    bool differ = true;
    occurrences.reserve(keys.size());
    for (const Key& key : keys) {
        const std::uint32_t number = seen[key]++;
        differ = differ && number == 0;
        occurrences.push_back(number);
    }
    if (differ) return {};
    return occurrences;
}

} // namespace

RowKeys RowKeys::read(const ado::ConnectionRef& connection, const ListStatements& list, const std::stop_token& stop,
                      const RowProgress& progress)
{
    RowKeys keys;
    keys.isText_ = recordKeyOf(list.setup().type).isText;
    ado::Recordset rows;
    for (rows.Open(list.keys(), connection); !rows.AtEOF(); rows.MoveNext()) {
        if (stop.stop_requested()) throw Stopped{};
        keys.add(rows.Fields().Item(0).Value());
        if (progress && keys.count() % rowsOfReport == 0) progress(keys.count());
    }
    rows.Close();
    keys.numberOccurrences();
    return keys;
}

void RowKeys::add(const Variant& key)
{
    if (isText_)
        texts_.push_back(convert::toText(key));
    else
        numbers_.push_back(convert::toLongLong(key));
}

void RowKeys::numberOccurrences()
{
    occurrences_ = isText_ ? occurrencesOf(texts_) : occurrencesOf(numbers_);
}

std::string RowKeys::text(std::size_t row) const
{
    return isText_ ? texts_.at(row) : std::to_string(numbers_.at(row));
}

FirstRows readFirstRows(const ado::ConnectionRef& connection, const ListStatements& list, std::size_t most,
                        const std::stop_token& stop)
{
    FirstRows first;
    readAllRows(connection, list.firstRows(most), stop, [&](Row row) {
        first.keys.push_back(convert::toText(row.back()));
        row.pop_back();
        first.rows.emplace_back(std::move(row));
    });
    return first;
}

bool areFirst(const FirstRows& first, const RowKeys& keys, std::size_t most)
{
    if (first.keys.size() != std::min(most, keys.count())) return false;
    for (std::size_t row = 0; row < first.keys.size(); ++row)
        if (keys.text(row) != first.keys[row]) return false;
    return true;
}

std::vector<std::optional<Row>> readRows(const ado::ConnectionRef& connection, const ListStatements& list,
                                         const RowKeys& keys, std::size_t first, std::size_t count)
{
    const std::size_t end = std::min(first + count, keys.count());
    std::vector<std::optional<Row>> rows(end - std::min(first, end));
    if (rows.empty()) return rows;
    std::map<std::pair<std::string, std::size_t>, std::size_t> places;
    std::vector<std::string> wanted;
    for (std::size_t row = first; row < end; ++row) {
        std::string key = keys.text(row);
        if (std::ranges::find(wanted, key) == wanted.end()) wanted.push_back(key);
        places.emplace(std::pair{std::move(key), keys.occurrence(row)}, row - first);
    }
    std::map<std::string, std::size_t> seen;
    readAllRows(connection, list.records(wanted), {}, [&](Row row) {
        const std::string key = convert::toText(row.back());
        row.pop_back();
        const auto place = places.find({key, seen[key]++});
        if (place != places.end()) rows[place->second] = std::move(row);
    });
    return rows;
}

void readAllRows(const ado::ConnectionRef& connection, const std::string& statement, const std::stop_token& stop,
                 const std::function<void(Row)>& take)
{
    ado::Recordset rows;
    for (rows.Open(statement, connection); !rows.AtEOF(); rows.MoveNext()) {
        if (stop.stop_requested()) throw Stopped{};
        take(rowOf(rows.Fields()));
    }
    rows.Close();
}

} // namespace tamarok::workbench
