#include "tamarok_embedded/connection_text.h"

#include <array>

#include "failures.h"
#include "tamarok_embedded/backend.h"

#include "tamarok/connection_text.h"
#include "tamarok/text.h"

namespace tamarok::embedded {

namespace {

struct ModeName {
    std::string_view name;
    OpenMode mode;
};
constexpr std::array modeNames{
    ModeName{"Read", OpenMode::ReadOnly},
    ModeName{"Create", OpenMode::Create},
    ModeName{"ReadWrite", OpenMode::OpenExisting},
};

bool sameName(std::string_view a, std::string_view b) noexcept
{
    const CompareNames less;
    return !less(a, b) && !less(b, a);
}

[[noreturn]] void refuse(const std::string& why)
{
    throw Error{errors::invalidArgument, "Connection text: " + why + ".", std::string{sourceName}};
}

void takeOver(const ado::ConnectionProperty& pair, ConnectionWish& wish)
{
    if (sameName(pair.name, "Provider")) {
        if (!sameName(pair.value, provider)) {
            refuse("the provider is '" + pair.value + "', not " + std::string{provider});
        }
    } else if (sameName(pair.name, "Data Source")) {
        wish.file = pair.value;
    } else if (sameName(pair.name, "Date Order")) {
        if (const auto order = tsql::parseDateOrder(pair.value)) {
            wish.options.dateOrder = *order;
            return;
        }
        refuse("'" + pair.value + "' is no date order");
    } else if (sameName(pair.name, "Mode")) {
        for (const ModeName& candidate : modeNames) {
            if (sameName(candidate.name, pair.value)) {
                wish.options.mode = candidate.mode;
                return;
            }
        }
        refuse("'" + pair.value + "' is no mode (Read, Create, ReadWrite)");
    } else {
        refuse("there is no property '" + std::string{pair.name} + "'");
    }
}

} // namespace

ConnectionWish parseConnectionText(std::string_view text)
{
    ConnectionWish wish;
    for (const ado::ConnectionProperty& property : ado::splitConnectionText(text)) {
        takeOver(property, wish);
    }
    if (wish.file.empty()) {
        refuse("no Data Source is given");
    }
    return wish;
}

std::string composeConnectionText(const std::string& file, const OpenOptions& options)
{
    std::string composed = "Provider=" + std::string{provider} + ";Data Source=" + ado::connectionValue(file);
    if (options.dateOrder != tsql::DateOrder::Mdy) {
        composed += ";Date Order=" + text::toUpper(tsql::dateOrderName(options.dateOrder));
    }
    if (options.mode == OpenMode::ReadOnly) {
        composed += ";Mode=Read";
    }
    return composed;
}

} // namespace tamarok::embedded
