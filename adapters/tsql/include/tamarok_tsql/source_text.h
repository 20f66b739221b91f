#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace tamarok::tsql {

/// Message numbers of the server that the front end raises itself.
namespace messages {
inline constexpr std::int32_t syntax = 102;
inline constexpr std::int32_t unclosedQuote = 105;
inline constexpr std::int32_t tooDeep = 191;
inline constexpr std::int32_t unsupported = 40517;
inline constexpr std::int32_t unknownFunction = 195;
inline constexpr std::int32_t argumentCount = 174;
inline constexpr std::int32_t unknownColumn = 207;
inline constexpr std::int32_t unknownTable = 208;
inline constexpr std::int32_t ambiguousColumn = 209;
inline constexpr std::int32_t unresolvedName = 4104;
} // namespace messages

/// The text of a batch. Lexer, parser, binder and translation refuse a statement through it, so that every refusal
/// names line and column.
class SourceText {
public:
    explicit SourceText(std::string_view text) : text_(text) {}

    std::string_view text() const { return text_; }

    /// Throws Error statementRefused: `message` followed by line and column of `offset`.
    [[noreturn]] void refuse(std::size_t offset, std::int32_t nativeError, std::string message,
                             std::string_view sqlState = "42000") const;
    /// Refuses a construct that the server knows and the embedded database does not: error 40517.
    [[noreturn]] void unsupported(std::size_t offset, std::string_view construct) const;

private:
    std::string_view text_;
};

} // namespace tamarok::tsql
