#pragma once

#include <cstdint>
#include <exception>
#include <span>
#include <sqlite3.h>
#include <string>
#include <string_view>

#include "functions.h"

/// One call of a registered function: its arguments as the server's types see them, and its result.
namespace tamarok::embedded::functions {

/// A failure with the server's error number; becomes the SQL error "number:message".
struct SqlFailure : std::exception {
    SqlFailure(std::int32_t errorNumber, std::string_view message);
    const char* what() const noexcept override { return text.c_str(); }

    std::int32_t number;
    std::string text; ///< "number:message"
};

[[noreturn]] void fail(std::int32_t number, std::string_view message);
/// The same, for messages of the server that do not name the value: appends " Value: 'value'.".
[[noreturn]] void failWith(std::int32_t number, std::string_view message, std::string_view value);

/// A value as text. Numbers are written into the object itself, texts are referred to where SQLite
/// has them.
class TextArgument {
public:
    explicit TextArgument(sqlite3_value* value);
    TextArgument(const TextArgument&) = delete;
    TextArgument& operator=(const TextArgument&) = delete;

    operator std::string_view() const noexcept { return view_; }
    std::string_view view() const noexcept { return view_; }

private:
    char buffer_[40];
    std::string_view view_;
};

/// The storage classes of SQLite.
enum class Storage : std::uint8_t { Null, Whole, Real, Text, Blob };
Storage storageOf(sqlite3_value* value) noexcept;

/// One call, made by `invoke` in register.cpp for each row. It reads the arguments with the server's conversions and
/// sets the result; it is valid only during the call.
class Call {
public:
    Call(sqlite3_context* context, std::span<sqlite3_value*> arguments) : context_{context}, arguments_{arguments} {}

    std::size_t count() const noexcept { return arguments_.size(); }
    sqlite3_value* value(std::size_t index) const noexcept { return arguments_[index]; }
    Storage storage(std::size_t index) const noexcept { return storageOf(arguments_[index]); }
    bool isNull(std::size_t index) const noexcept { return storage(index) == Storage::Null; }
    bool anyNull() const noexcept;

    /// Argument as text, as a whole number (counts, positions, styles; floats are cut), as a float.
    TextArgument text(std::size_t index) const { return TextArgument{arguments_[index]}; }
    std::int64_t whole(std::size_t index) const;
    double real(std::size_t index) const;

    void resultNull() { sqlite3_result_null(context_); }
    void result(std::int64_t number) { sqlite3_result_int64(context_, number); }
    /// Error 8115 for a value that is no finite number.
    void result(double number);
    void result(std::string_view text);
    void resultValue(std::size_t index) { sqlite3_result_value(context_, arguments_[index]); }

    sqlite3_context* context() const noexcept { return context_; }
    sqlite3* database() const noexcept { return sqlite3_context_db_handle(context_); }
    const FunctionContext& settings() const noexcept;

private:
    sqlite3_context* context_;
    std::span<sqlite3_value*> arguments_;
};

/// Reports whatever is being thrown to SQLite. Only inside a catch block.
void reportFailure(sqlite3_context* context) noexcept;

} // namespace tamarok::embedded::functions
