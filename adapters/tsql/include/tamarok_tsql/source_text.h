#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <utility>

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
inline constexpr std::int32_t tooManyTables = 106;
inline constexpr std::int32_t tooManyItems = 1056;
inline constexpr std::int32_t tooComplex = 8623;
inline constexpr std::int32_t expressionTooComplex = 8632;
} // namespace messages

/// Called now and then during long work. It throws to end the work, for instance when its time is over.
using Watch = std::function<void()>;

/// The text of a batch. Lexer, parser, binder and translation refuse a statement through it, so that every refusal
/// names line and column.
class SourceText {
public:
    explicit SourceText(std::string_view text, Watch watch = {}) : text_(text), watch_(std::move(watch)) {}

    std::string_view text() const { return text_; }

    /// Throws Error statementRefused: `message` followed by line and column of `offset`.
    [[noreturn]] void refuse(std::size_t offset, std::int32_t nativeError, std::string message,
                             std::string_view sqlState = "42000") const;
    /// Refuses a construct that the server knows and the embedded database does not: error 40517.
    [[noreturn]] void unsupported(std::size_t offset, std::string_view construct) const;

    /// Counts one piece of work, such as a node of the tree; asks the watch after each 1024.
    void work() const
    {
        constexpr std::uint32_t often = 1023;
        if ((++work_ & often) == 0 && watch_) watch_();
    }

private:
    std::string_view text_;
    Watch watch_;
    mutable std::uint32_t work_ = 0;
};

} // namespace tamarok::tsql
