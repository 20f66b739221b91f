#pragma once

#include <cstdint>
#include <stdexcept>
#include <string>
#include <string_view>

namespace tamarok {

/// The platform's usual error numbers. A caller may compare `Error::number` with these.
namespace errors {
inline constexpr std::int32_t invalidArgument = 5;      ///< Invalid procedure call or argument.
inline constexpr std::int32_t overflow = 6;             ///< A whole number left its 16- or 32-bit range.
inline constexpr std::int32_t subscriptOutOfRange = 9;  ///< An array index or a vector field beyond its bounds.
inline constexpr std::int32_t divisionByZero = 11;      ///< Division by zero.
inline constexpr std::int32_t typeMismatch = 13;        ///< A value has no form of the wanted type.
inline constexpr std::int32_t fileNotFound = 53;        ///< A file does not exist.
inline constexpr std::int32_t objectNotSet = 91;        ///< An object reference holds nothing.
inline constexpr std::int32_t invalidUseOfNull = 94;    ///< Null where a value is needed.
inline constexpr std::int32_t noSuchMember = 438;       ///< An object has no property or method of that name.
inline constexpr std::int32_t wrongArgumentCount = 450; ///< Wrong number of arguments.

inline constexpr std::int32_t noCurrentRecord = 3021;    ///< Recordset at BOF or EOF, or no current record.
inline constexpr std::int32_t badCursorOperation = 3219; ///< Operation not allowed in this context.
inline constexpr std::int32_t readOnlyRecordset = 3251;  ///< The recordset does not support the operation.
inline constexpr std::int32_t itemNotFound = 3265;       ///< No item of that name or ordinal in a collection.
inline constexpr std::int32_t objectClosed = 3704;       ///< Operation on a closed recordset or connection object.
inline constexpr std::int32_t objectOpen = 3705;         ///< Operation not allowed while the object is open.
inline constexpr std::int32_t connectionClosed = 3709;   ///< A recordset or command uses a closed connection.

/// Provider failures carry the provider's number; these are the defaults by kind.
inline constexpr std::int32_t providerFailure = static_cast<std::int32_t>(0x80004005U);
inline constexpr std::int32_t statementRefused = static_cast<std::int32_t>(0x80040E14U);
inline constexpr std::int32_t constraintViolated = static_cast<std::int32_t>(0x80040E2FU);
inline constexpr std::int32_t timeout = static_cast<std::int32_t>(0x80040E31U);
} // namespace errors

/// The one exception type of the library: number, source and description, as a failed
/// component call carries them. Provider failures fill the further fields.
class Error : public std::runtime_error {
public:
    /// @param number       one of `errors`, or a number of the operation's own
    /// @param description  complete sentence without the source; never holds a password
    /// @param source       class and operation, or the back end's name; may be empty
    Error(std::int32_t number, std::string description, std::string source = {});

    std::int32_t number;
    std::string source;
    std::string description;

    std::int32_t nativeError = 0; ///< the provider's own error number (SQL Server numbering), 0 if none
    std::string sqlState;         ///< five characters of SQLSTATE, or empty
    std::string statement;        ///< the statement that failed, or empty

    /// Puts "context: " before the description, and returns *this so that a rising error can be
    /// rethrown as `throw error.addContext("...")`.
    Error& addContext(std::string_view context);

    const char* what() const noexcept override;

private:
    void compose();
    std::string text_;
};

} // namespace tamarok
