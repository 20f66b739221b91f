#include "tamarok_tsql/batch.h"

#include "tamarok_tsql/arena.h"
#include "tamarok_tsql/names.h"
#include "tamarok_tsql/parser.h"
#include "translation/translator.h"

namespace tamarok::embedded::sql {
namespace {

constexpr std::size_t largestText = 16U * 1024U * 1024U;

/// One thread at a time: a translation leaves its notes in the tree.
class ParsedBatch final : public Batch {
public:
    explicit ParsedBatch(std::string_view text) :
        text_(text), source_(text_), arena_(text.size() * 4 + 1024), steps_(Parser(text_, arena_).parse())
    {}

    std::size_t size() const override { return steps_.size(); }

    Step translate(std::size_t index, const Catalog& catalog, DateOrder order, bool withRowKey) const override
    {
        return Translator(source_, catalog, order).translate(steps_.at(index), withRowKey);
    }

private:
    std::string text_;
    SourceText source_;
    Arena arena_;
    std::vector<ParsedStep> steps_;
};

} // namespace

std::unique_ptr<Batch> Batch::parse(std::string_view text)
{
    if (text.size() > largestText) {
        SourceText(text).refuse(0, messages::tooDeep, "The SQL text is longer than 16 MB.");
    }
    return std::make_unique<ParsedBatch>(text);
}

void Table::indexColumns()
{
    std::size_t size = 8;
    while (size < columns.size() * 2)
        size *= 2;
    slots.assign(size, 0);
    for (std::size_t i = 0; i < columns.size(); ++i) {
        std::size_t slot = nameHash(columns[i].name) & (size - 1);
        while (slots[slot] != 0)
            slot = (slot + 1) & (size - 1);
        slots[slot] = static_cast<std::uint16_t>(i + 1);
    }
}

std::int32_t Table::column(std::string_view wanted) const
{
    if (slots.empty()) {
        for (std::size_t i = 0; i < columns.size(); ++i) {
            if (sameName(columns[i].name, wanted)) return static_cast<std::int32_t>(i);
        }
        return -1;
    }
    const std::size_t mask = slots.size() - 1;
    for (std::size_t slot = nameHash(wanted) & mask; slots[slot] != 0; slot = (slot + 1) & mask) {
        const auto index = static_cast<std::size_t>(slots[slot] - 1);
        if (sameName(columns[index].name, wanted)) return static_cast<std::int32_t>(index);
    }
    return -1;
}

} // namespace tamarok::embedded::sql
