#include "tamarok/selection_book.h"

#include <algorithm>
#include <array>
#include <functional>

namespace tamarok::selections {
namespace {

constexpr Selection book[] = {
#include "data/selections.inc"
};

static_assert(std::size(book) == 777);
static_assert(std::ranges::adjacent_find(book, std::ranges::greater_equal{}, &Selection::key) == std::end(book),
              "the book is sorted and names each key once");

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
