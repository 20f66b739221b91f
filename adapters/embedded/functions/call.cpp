#include "functions/call.h"

#include <cmath>
#include <cstring>
#include <new>

#include "functions/conversion.h"
#include "functions/number_text.h"

#include "tamarok/error.h"

namespace tamarok::embedded::functions {

SqlFailure::SqlFailure(std::int32_t errorNumber, std::string_view message) :
    number{errorNumber}, text{std::to_string(errorNumber)}
{
    text += ':';
    text += message;
}

void fail(std::int32_t number, std::string_view message)
{
    throw SqlFailure{number, message};
}

void failWith(std::int32_t number, std::string_view message, std::string_view value)
{
    std::string text{message};
    text += " Value: '";
    text += value;
    text += "'.";
    throw SqlFailure{number, text};
}

/// SQLite's storage class of a value.
Storage storageOf(sqlite3_value* value) noexcept
{
    switch (sqlite3_value_type(value)) {
    case SQLITE_INTEGER: return Storage::Whole;
    case SQLITE_FLOAT: return Storage::Real;
    case SQLITE_TEXT: return Storage::Text;
    case SQLITE_BLOB: return Storage::Blob;
    default: return Storage::Null;
    }
}

/// Numbers are written as the server shows them: six digits of a float, where SQLite would write fifteen.
TextArgument::TextArgument(sqlite3_value* value)
{
    switch (storageOf(value)) {
    case Storage::Null: break;
    case Storage::Whole: view_ = writeWhole(sqlite3_value_int64(value), buffer_); break;
    case Storage::Real: view_ = writeFloat(sqlite3_value_double(value), 0, buffer_); break;
    case Storage::Text: {
        const void* bytes = sqlite3_value_text(value);
        if (bytes == nullptr) throw std::bad_alloc{};
        view_ = {static_cast<const char*>(bytes), static_cast<std::size_t>(sqlite3_value_bytes(value))};
        break;
    }
    case Storage::Blob: {
        const int size = sqlite3_value_bytes(value);
        const void* bytes = sqlite3_value_blob(value);
        if (size > 0 && bytes != nullptr) view_ = {static_cast<const char*>(bytes), static_cast<std::size_t>(size)};
        break;
    }
    }
}

/// Most functions of the server are Null if one of their arguments is.
bool Call::anyNull() const noexcept
{
    for (std::size_t index = 0; index < arguments_.size(); ++index) {
        if (isNull(index)) return true;
    }
    return false;
}

/// Floats are cut. Error 245 for a text that is no whole number.
std::int64_t Call::whole(std::size_t index) const
{
    if (storage(index) == Storage::Whole) return sqlite3_value_int64(arguments_[index]);
    return toWhole(arguments_[index], WholeType::Int);
}

double Call::real(std::size_t index) const
{
    if (storage(index) == Storage::Real) return sqlite3_value_double(arguments_[index]);
    return toFloat(arguments_[index]);
}

void Call::result(double number)
{
    if (!std::isfinite(number)) fail(8115, "Arithmetic overflow error converting expression to data type float.");
    sqlite3_result_double(context_, number);
}

/// An empty view may have no address, which SQLite would take for Null.
void Call::result(std::string_view text)
{
    if (text.empty()) {
        sqlite3_result_text(context_, "", 0, SQLITE_STATIC);
        return;
    }
    sqlite3_result_text64(context_, text.data(), text.size(), SQLITE_TRANSIENT, SQLITE_UTF8);
}

const FunctionContext& Call::settings() const noexcept
{
    return *static_cast<const FunctionContext*>(sqlite3_user_data(context_));
}

/// No exception may leave a function that SQLite has called. The message carries the error number ("8115:..."), which
/// failures.cpp reads back.
void reportFailure(sqlite3_context* context) noexcept
{
    try {
        throw;
    } catch (const std::bad_alloc&) {
        sqlite3_result_error_nomem(context);
    } catch (const Error& error) {
        sqlite3_result_error(context, error.description.c_str(), -1);
    } catch (const std::exception& error) {
        sqlite3_result_error(context, error.what(), -1);
    } catch (...) {
        sqlite3_result_error(context, "A function of the embedded database failed without a message.", -1);
    }
}

} // namespace tamarok::embedded::functions
