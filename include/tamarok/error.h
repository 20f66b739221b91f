#pragma once

#include <cstdint>
#include <stdexcept>
#include <string>
#include <string_view>

#pragma GCC visibility push(default)

namespace tamarok {

/// The error numbers of the library. A caller may compare `Error::number` with these.
namespace errors {
// Of the runtime.
inline constexpr std::int32_t invalidArgument = 5;             ///< Invalid procedure call or argument.
inline constexpr std::int32_t overflow = 6;                    ///< A number left the range of its type.
inline constexpr std::int32_t outOfMemory = 7;                 ///< The memory does not suffice.
inline constexpr std::int32_t subscriptOutOfRange = 9;         ///< An array index outside the bounds.
inline constexpr std::int32_t divisionByZero = 11;             ///< Division by zero.
inline constexpr std::int32_t typeMismatch = 13;               ///< A value does not convert to the wanted type.
inline constexpr std::int32_t internalError = 51;              ///< A fault of the program itself.
inline constexpr std::int32_t fileNotFound = 53;               ///< A file does not exist.
inline constexpr std::int32_t fileAlreadyOpen = 55;            ///< A file number is in use.
inline constexpr std::int32_t deviceError = 57;                ///< Reading or writing a device or file failed.
inline constexpr std::int32_t fileExists = 58;                 ///< A file that is to be made exists already.
inline constexpr std::int32_t diskFull = 61;                   ///< There is no room for what is to be written.
inline constexpr std::int32_t tooManyFiles = 67;               ///< The process or system can open no further file.
inline constexpr std::int32_t permissionDenied = 70;           ///< The account lacks the right to a file.
inline constexpr std::int32_t pathAccess = 75;                 ///< A path or file cannot be accessed.
inline constexpr std::int32_t pathNotFound = 76;               ///< A folder of a path does not exist.
inline constexpr std::int32_t objectNotSet = 91;               ///< An object reference holds nothing.
inline constexpr std::int32_t invalidUseOfNull = 94;           ///< Null where a value is needed.
inline constexpr std::int32_t invalidPropertyValue = 380;      ///< A control does not take this value.
inline constexpr std::int32_t invalidPropertyArrayIndex = 381; ///< A control has no entry of this index.
inline constexpr std::int32_t cannotCreateObject = 429;        ///< No class of that name.
inline constexpr std::int32_t noSuchMember = 438;              ///< An object has no member of that name.
inline constexpr std::int32_t wrongArgumentCount = 450;        ///< Wrong number of arguments.
inline constexpr std::int32_t duplicateKey = 457;              ///< A collection has an entry with this key.

// Of the recordset model.
inline constexpr std::int32_t noCurrentRecord = 3021;    ///< Recordset at BOF or EOF, or no current record.
inline constexpr std::int32_t badCursorOperation = 3219; ///< Operation not allowed in this context.
inline constexpr std::int32_t readOnlyRecordset = 3251;  ///< The recordset does not support the operation.
inline constexpr std::int32_t itemNotFound = 3265;       ///< No item of that name or ordinal in a collection.
inline constexpr std::int32_t objectClosed = 3704;       ///< Operation on a closed recordset or connection object.
inline constexpr std::int32_t objectOpen = 3705;         ///< Operation not allowed while the object is open.
inline constexpr std::int32_t connectionClosed = 3709;   ///< A recordset or command uses a closed connection.

// Of parameter files.
inline constexpr std::int32_t parameterSyntax =
    static_cast<std::int32_t>(0x80040201U); ///< A line that is neither parameter nor comment.
inline constexpr std::int32_t parameterDuplicate =
    static_cast<std::int32_t>(0x80040202U); ///< A key that occurs more than once.
inline constexpr std::int32_t parameterNotFound = static_cast<std::int32_t>(0x80040203U); ///< A key without a value.

// Of database providers. A failure keeps the provider's own number; these are the defaults by kind.
inline constexpr std::int32_t providerFailure = static_cast<std::int32_t>(0x80004005U);    ///< Any other failure.
inline constexpr std::int32_t statementRefused = static_cast<std::int32_t>(0x80040E14U);   ///< Refused statement.
inline constexpr std::int32_t rowDeleted = static_cast<std::int32_t>(0x80040E23U);         ///< The row has gone.
inline constexpr std::int32_t constraintViolated = static_cast<std::int32_t>(0x80040E2FU); ///< Broken constraint.
inline constexpr std::int32_t timeout = static_cast<std::int32_t>(0x80040E31U);            ///< Time-out.
inline constexpr std::int32_t cancelled = static_cast<std::int32_t>(0x80040E4EU);          ///< Connection::Cancel.
inline constexpr std::int32_t rowChanged =
    static_cast<std::int32_t>(0x80040E38U); ///< Optimistic update of a row that changed since it was read.
} // namespace errors

/// The one exception type of the library. It carries what a failed call of the component interface
/// reports: number, source and description. Failures of a database fill the further fields.
class Error : public std::runtime_error {
public:
    /// @param number       one of `errors`, or a provider's number
    /// @param description  complete sentence without the source; never holds a password
    /// @param source       class and operation, or the back end's name; may be empty
    Error(std::int32_t number, std::string description, std::string source = {});

    std::int32_t number;
    std::string source;
    std::string description;

    std::int32_t nativeError = 0; ///< the provider's own error number (SQL Server numbering), 0 if none
    std::string sqlState;         ///< five characters of SQLSTATE, or empty
    std::string statement;        ///< the statement that failed, or empty

    /// Puts "context: " before the description. Returns *this, so that a handler can write
    /// `throw error.addContext("...")`.
    Error& addContext(std::string_view context);

    /// Returns "source: description", or the description alone without a source.
    const char* what() const noexcept override;

private:
    void compose();
    std::string text_;
};

} // namespace tamarok

#pragma GCC visibility pop
