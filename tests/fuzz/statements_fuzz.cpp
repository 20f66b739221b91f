#include <array>
#include <chrono>
#include <cstdlib>
#include <iostream>
#include <string>

#include "fuzz_input.h"
#include "tamarok_tsql/names.h"
#include "tamarok_tsql/parsed_batch.h"
#include "translation/step.h"

#include "tamarok/error.h"

/// Lexer, parser, binder and translation. Each text ends in a translation or in a refusal that names its place, and no
/// translation is longer than the bound of the emitter.
namespace {

using namespace tamarok;

tsql::Table table(std::string name, std::initializer_list<std::pair<const char*, const char*>> columns)
{
    tsql::Table result{std::move(name), {}};
    for (const auto& [column, type] : columns)
        result.columns.push_back({column, tsql::parseDeclaredType(type)});
    result.columns.front().identity = true;
    return result;
}

class SmallSchema final : public tsql::Schema {
public:
    const tsql::Table* table(std::string_view name) const override
    {
        for (const tsql::Table& candidate : tables_) {
            if (tsql::sameName(candidate.name, name)) return &candidate;
        }
        return nullptr;
    }

private:
    std::array<tsql::Table, 2> tables_{
        ::table("LOGS", {{"ID_LOG", "INTEGER"},
                         {"LISTE", "NVARCHAR(20)"},
                         {"HA", "CHAR(5)"},
                         {"KUBATUR", "DECIMAL(18,3)"},
                         {"LAENGE", "FLOAT"},
                         {"STK", "INT"},
                         {"LISTDATUM", "SMALLDATETIME"},
                         {"BETRAG", "MONEY"},
                         {"GEPRUEFT", "BIT"},
                         {"BEMERKUNG", "NVARCHAR(MAX)"}}),
        ::table("HOLZART", {{"ID", "INTEGER"}, {"HA", "NVARCHAR(5)"}, {"GUELTIG_BIS", "DATETIME"}})};
};

void translate(std::string_view text)
{
    static const SmallSchema schema;
    const tsql::ParsedBatch batch(text);
    for (std::size_t index = 0; index < batch.steps().size(); ++index) {
        const embedded::Step step = embedded::translateStep(batch, index, schema, tsql::DateOrder::Dmy);
        if (step.text.size() > std::size_t{64} * 1024 * 1024) {
            std::cerr << "a translation of " << step.text.size() << " bytes\n";
            std::abort();
        }
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    try {
        translate(fuzz::textOf(data, size));
    } catch (const Error& error) {
        const bool placed = error.description.find("(line ") != std::string::npos;
        if (placed && error.number == errors::statementRefused) return 0;
        std::cerr << "a refusal without number or place: " << error.description << '\n';
        std::abort();
    }
    return 0;
}
