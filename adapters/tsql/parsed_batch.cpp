#include "tamarok_tsql/parsed_batch.h"

#include "parser.h"

namespace tamarok::tsql {
namespace {

/// Token offsets have 32 bits; the limit stays far below and bounds the memory of a batch.
constexpr std::size_t largestText = std::size_t{16} * 1024 * 1024;

std::string_view checkedLength(std::string_view text)
{
    if (text.size() > largestText) {
        SourceText(text).refuse(0, messages::tooDeep, "The SQL text is longer than 16 MB.");
    }
    return text;
}

} // namespace

ParsedBatch::ParsedBatch(std::string_view text, Watch watch) :
    text_(checkedLength(text)), source_(text_, std::move(watch)), arena_(text.size() * 4 + 1024),
    steps_(Parser(source_, arena_).parse())
{}

} // namespace tamarok::tsql
