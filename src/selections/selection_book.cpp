#include "tamarok/selection_book.h"

#include <algorithm>
#include <functional>

#include "dialect/sql_template.h"
#include "selection_values.h"

namespace tamarok::selections {
namespace {

constexpr Selection book[] = {
#include "data/selections.inc"
};

static_assert(std::ranges::adjacent_find(book, std::ranges::greater_equal{}, &Selection::key) == std::end(book),
              "the book is sorted and names each key once");
/// Whether some statements name values and words of the dialect only.
constexpr bool statementsAreFillable(std::size_t first, std::size_t count)
{
    return std::ranges::all_of(
        std::span{book}.subspan(first, count),
        [](std::string_view statement) { return dialect::namesOnly(statement, isSelectionValue); },
        &Selection::statement);
}

// In parts, since compilers limit the steps of an evaluation.
static_assert(statementsAreFillable(0, 200));
static_assert(statementsAreFillable(200, 200));
static_assert(statementsAreFillable(400, 200));
static_assert(statementsAreFillable(600, std::size(book) - 600));

} // namespace

std::span<const Selection> all() noexcept
{
    return book;
}

const Selection* find(std::string_view key) noexcept
{
    const auto* const found = std::ranges::lower_bound(book, key, {}, &Selection::key);
    return found != std::end(book) && found->key == key ? found : nullptr;
}

} // namespace tamarok::selections
