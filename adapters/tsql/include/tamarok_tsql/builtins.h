#pragma once

#include <cstdint>
#include <string_view>

#include "tamarok_tsql/names.h"

namespace tamarok::tsql {

/// How the type of a call follows from its arguments.
enum class ResultRule : std::uint8_t {
    Int,
    BigInt,
    Float,
    DateTime,
    Date,
    TextLike, ///< of the first argument, at most as long
    TextMax,  ///< a text of the first argument's kind without limit
    Text30,   ///< NVARCHAR(30)
    Text128,  ///< NVARCHAR(128)
    Text1,    ///< one character
    Guid,
    SameNumber, ///< the first argument's; texts become floats
    SameDate,   ///< the third argument's where it is a date; otherwise datetime
    Same        ///< the first argument's (MIN, MAX)
};

enum class FunctionKind : std::uint8_t {
    Scalar,
    Aggregate, ///< with OVER a window function
    Window     ///< only with OVER
};

/// A function that statements may call: its arguments and the type of its result.
struct Builtin {
    std::string_view name;
    /// One letter for each argument: t text, n number, i whole number, d date, p part of a date,
    /// a anything; in capitals where it may be missing; "*" repeats the one before.
    std::string_view arguments;
    ResultRule result;
    std::int64_t magnitude = -1; ///< largest absolute value of a whole result; -1 if unknown
    FunctionKind kind = FunctionKind::Scalar;

    bool isAggregate() const { return kind == FunctionKind::Aggregate; }
    bool isWindowOnly() const { return kind == FunctionKind::Window; }
};

/// nullptr for an unknown name.
const Builtin* findBuiltin(const Name& name);

/// Full name of a part of a date ("yy" is year); empty for none.
std::string_view findDatePart(std::string_view written);

} // namespace tamarok::tsql
