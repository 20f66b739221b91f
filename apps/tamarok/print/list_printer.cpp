#include "print/list_printer.h"

#include <nlohmann/json.hpp>
#include <utility>

#include "call/json_value.h"
#include "call/object_names.h"
#include "print/csv_text.h"
#include "print/table_printer.h"

#include "tamarok/convert.h"
#include "tamarok/platform.h"

namespace tamarok::cli {

namespace {

std::string csvText(const Variant& value)
{
    switch (value.kind()) {
    case Variant::Kind::Empty:
    case Variant::Kind::Null: return {};
    case Variant::Kind::Boolean: return value.asBoolean() ? "true" : "false";
    case Variant::Kind::Double: return convert::toPlainText(value.asDouble());
    case Variant::Kind::Date: return isoDate(value.asDate());
    default: return convert::toText(value);
    }
}

class CsvPrinter final : public ListPrinter {
public:
    CsvPrinter(Output& output, const std::vector<std::string>& headers) : output_{output}
    {
        std::string line;
        for (const std::string& header : headers)
            append(line, header);
        output_.write(line + "\n");
    }

    void row(const std::vector<Variant>& values) override
    {
        std::string line;
        bool first = true;
        for (const Variant& value : values) {
            if (!std::exchange(first, false)) line += ',';
            line += csvField(csvText(value), ',');
        }
        output_.write(line + "\n");
    }

    void finish() override { output_.flush(); }

private:
    static void append(std::string& line, const std::string& header)
    {
        if (!line.empty()) line += ',';
        line += csvField(header, ',');
    }

    Output& output_;
};

class JsonPrinter final : public ListPrinter {
public:
    JsonPrinter(Output& output, const std::vector<std::string>& headers) : output_{output}
    {
        output_.write("{\"columns\":" + toLine(Json(headers)) + ",\"rows\":[");
    }

    void row(const std::vector<Variant>& values) override
    {
        Json cells = Json::array();
        for (const Variant& value : values)
            cells.push_back(fromVariant(value, names_));
        output_.write((std::exchange(first_, false) ? "\n" : ",\n") + toLine(cells));
    }

    void finish() override
    {
        output_.write("\n]}\n");
        output_.flush();
    }

private:
    Output& output_;
    ObjectNames names_;
    bool first_ = true;
};

} // namespace

std::unique_ptr<ListPrinter> makeListPrinter(ListFormat format, Output& output, std::vector<std::string> headers,
                                             std::vector<std::string> patterns)
{
    switch (format) {
    case ListFormat::Csv: return std::make_unique<CsvPrinter>(output, headers);
    case ListFormat::JsonRows: return std::make_unique<JsonPrinter>(output, headers);
    case ListFormat::Table: break;
    }
    return std::make_unique<TablePrinter>(output, std::move(headers), std::move(patterns),
                                          Platform::current().regional);
}

std::int64_t printRows(ado::Recordset& records, ListPrinter& printer, std::optional<std::int64_t> limit)
{
    const auto& fields = records.Fields();
    std::vector<Variant> values(static_cast<std::size_t>(fields.Count()));
    std::int64_t rows = 0;
    for (; !records.AtEOF() && (!limit || rows < *limit); records.MoveNext(), ++rows) {
        for (std::int32_t column = 0; column < fields.Count(); ++column) {
            values[static_cast<std::size_t>(column)] = fields.Item(column).Value();
        }
        printer.row(values);
    }
    printer.finish();
    return rows;
}

std::vector<std::string> fieldNames(const ado::Recordset& records)
{
    const auto count = static_cast<std::size_t>(records.Fields().Count());
    std::vector<std::string> names;
    names.reserve(count);
    for (std::size_t i = 0; i < count; ++i)
        names.emplace_back(records.Fields().Item(static_cast<std::int32_t>(i)).Name());
    return names;
}

} // namespace tamarok::cli
