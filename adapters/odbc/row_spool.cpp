#include "row_spool.h"

#include <algorithm>
#include <cstring>
#include <type_traits>
#include <utility>

#include "failures.h"

// A row is its number of values, then the values: kind and bytes each. Rows go from `written_` to the end of the file
// when there are too many, and are read back from its start; what is not in the file is younger than what is.

namespace tamarok::odbc {

namespace {

constexpr std::size_t readBytes = std::size_t{1} << 18U;

template <class Number>
void appendNumber(std::string& bytes, Number number)
{
    static_assert(std::is_trivially_copyable_v<Number>);
    const std::size_t start = bytes.size();
    bytes.resize(start + sizeof number);
    std::memcpy(bytes.data() + start, &number, sizeof number);
}

} // namespace

RowSpool::~RowSpool()
{
    clear();
}

// The bound is tested before the row, so that one row of any size fits.
void RowSpool::append(std::span<const Variant> row)
{
    if (written_.size() > memoryBytes) moveToFile();
    appendNumber(written_, row.size());
    for (const Variant& value : row)
        appendValue(value);
    ++rows_;
}

// The values of the row are written over those of the last one.
bool RowSpool::take(std::vector<Variant>& row)
{
    if (rows_ == 0) return false;
    std::size_t width = 0;
    takeBytes(&width, sizeof width);
    row.resize(width);
    for (Variant& value : row)
        value = takeValue();
    --rows_;
    return true;
}

void RowSpool::clear() noexcept
{
    file_.close();
    fileEnd_ = fileRead_ = at_ = rows_ = 0;
    std::string{}.swap(written_); // gives the memory back
    std::string{}.swap(read_);
}

/// A value of fixed size is its bytes, a text its length and its bytes. The reader is the same process.
void RowSpool::appendValue(const Variant& value)
{
    appendNumber(written_, value.kind());
    switch (value.kind()) {
    case Variant::Kind::Boolean: appendNumber(written_, static_cast<bool>(value.asBoolean())); break;
    case Variant::Kind::Integer: appendNumber(written_, value.asInteger()); break;
    case Variant::Kind::Long: appendNumber(written_, value.asLong()); break;
    case Variant::Kind::LongLong: appendNumber(written_, value.asLongLong()); break;
    case Variant::Kind::Double: appendNumber(written_, value.asDouble()); break;
    case Variant::Kind::Date: appendNumber(written_, value.asDate().days); break;
    case Variant::Kind::String:
        appendNumber(written_, value.asString().size());
        written_ += value.asString();
        break;
    default: break; // Null; a database gives no other kind
    }
}

/// The inverse of appendValue.
Variant RowSpool::takeValue()
{
    const auto number = [this](auto value) {
        takeBytes(&value, sizeof value);
        return value;
    };
    switch (number(Variant::Kind::Null)) {
    case Variant::Kind::Boolean: return number(false);
    case Variant::Kind::Integer: return number(std::int16_t{});
    case Variant::Kind::Long: return number(std::int32_t{});
    case Variant::Kind::LongLong: return number(std::int64_t{});
    case Variant::Kind::Double: return number(0.0);
    case Variant::Kind::Date: return Date{number(0.0)};
    case Variant::Kind::String: {
        std::string text(number(std::size_t{}), '\0');
        takeBytes(text.data(), text.size());
        return text;
    }
    default: return Null{};
    }
}

/// A value may lie across two portions of the file.
void RowSpool::takeBytes(void* target, std::size_t count)
{
    auto* to = static_cast<char*>(target);
    while (count > 0) {
        if (at_ == read_.size()) refill();
        const std::size_t taken = std::min(count, read_.size() - at_);
        std::memcpy(to, read_.data() + at_, taken);
        at_ += taken;
        to += taken;
        count -= taken;
    }
}

/// The file comes first; when it has been read, what is in memory follows as a whole.
void RowSpool::refill()
{
    at_ = 0;
    if (fileRead_ == fileEnd_) {
        read_ = std::exchange(written_, {});
        if (read_.empty()) throw providerFailure("The rows in memory end early.");
        return;
    }
    read_.resize(std::min(readBytes, fileEnd_ - fileRead_));
    try {
        read_.resize(file_.readAt(fileRead_, read_));
    } catch (...) {
        read_.clear();
        throw;
    }
    fileRead_ += read_.size();
}

/// Appends what is in memory to the file. A disk that is full fails the reading of the recordset, not silently.
void RowSpool::moveToFile()
{
    if (!file_.isOpen()) file_.open();
    file_.writeAt(fileEnd_, written_);
    fileEnd_ += written_.size();
    written_.clear();
}

} // namespace tamarok::odbc
