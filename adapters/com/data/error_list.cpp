#include "error_list.h"

#include "tamarok/convert.h"

namespace tamarok::data {

namespace {

using ReadArguments = std::span<const Variant>;

constexpr std::string_view errorsSource = "Tamarok.Errors";

/// One entry of the list. It is a copy, and so outlives the list.
class ErrorEntry final : public WithMembers<ErrorEntry> {
public:
    // NOLINTNEXTLINE(bugprone-throw-keyword-missing): the error is kept, not raised
    explicit ErrorEntry(Error error) : error_{std::move(error)} {}

    static std::span<const Member<ErrorEntry>> members() noexcept;

    std::string_view typeName() const override { return "Error"; }
    Variant defaultValue() const override { return error_.description; }
    bool hasDefaultValue() const noexcept override { return true; }

private:
    Error error_;
};

std::span<const Member<ErrorEntry>> ErrorEntry::members() noexcept
{
    static constexpr Member<ErrorEntry> rows[]{
        {.name = "Number", .get = [](const ErrorEntry& e, ReadArguments) -> Variant { return e.error_.number; }},
        {.name = "Description",
         .get = [](const ErrorEntry& e, ReadArguments) -> Variant { return e.error_.description; }},
        {.name = "Source", .get = [](const ErrorEntry& e, ReadArguments) -> Variant { return e.error_.source; }},
        {.name = "NativeError",
         .get = [](const ErrorEntry& e, ReadArguments) -> Variant { return e.error_.nativeError; }},
        {.name = "SQLState", .get = [](const ErrorEntry& e, ReadArguments) -> Variant { return e.error_.sqlState; }},
    };
    return rows;
}

Variant readItem(const ErrorList& list, ReadArguments arguments)
{
    checkArgumentCount(arguments.size(), 1, 1, "Item", errorsSource);
    return std::make_shared<ErrorEntry>(list.at(convert::toLongLong(arguments[0])));
}

Variant callClear(ErrorList& list, std::span<Variant> arguments)
{
    checkArgumentCount(arguments.size(), 0, 0, "Clear", errorsSource);
    list.clear();
    return {};
}

} // namespace

std::span<const Member<ErrorList>> ErrorList::members() noexcept
{
    static constexpr Member<ErrorList> rows[]{
        {.name = "Count", .get = [](const ErrorList& list, ReadArguments) -> Variant { return list.count(); }},
        {.name = "Item", .get = readItem},
        {.name = "Clear", .call = callClear},
    };
    return rows;
}

const Error& ErrorList::at(std::int64_t index) const
{
    if (index >= 0 && index < count()) return errors_[static_cast<std::size_t>(index)];
    throw Error{errors::itemNotFound,
                "There is no error with the index " + std::to_string(index) + "; the connection has " +
                    std::to_string(count()) + ".",
                std::string{errorsSource}};
}

/// Failures of databases have result codes, which are negative, as numbers.
void ErrorList::note(const Error& error)
{
    if (error.number < 0) errors_.assign(1, error);
}

} // namespace tamarok::data
