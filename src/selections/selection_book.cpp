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
static_assert(std::ranges::all_of(
                  book, [](std::string_view statement) { return dialect::namesOnly(statement, isSelectionValue); },
                  &Selection::statement),
              "the statements name values and words of the dialect alone");

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
