#include "tamarok_embedded/connection_text.h"

#include <array>

#include "failures.h"
#include "tamarok_embedded/backend.h"

#include "tamarok/connection_text.h"

namespace tamarok::embedded {

namespace {

struct OrderName {
    std::string_view name;
    sql::DateOrder order;
};
constexpr std::array orderNames{
    OrderName{"MDY", sql::DateOrder::Mdy}, OrderName{"DMY", sql::DateOrder::Dmy}, OrderName{"YMD", sql::DateOrder::Ymd},
    OrderName{"YDM", sql::DateOrder::Ydm}, OrderName{"MYD", sql::DateOrder::Myd}, OrderName{"DYM", sql::DateOrder::Dym},
};

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
        for (const OrderName& candidate : orderNames) {
            if (sameName(candidate.name, pair.value)) {
                wish.options.dateOrder = candidate.order;
                return;
            }
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
    std::string text = "Provider=" + std::string{provider} + ";Data Source=" + ado::connectionValue(file);
    if (options.dateOrder != sql::DateOrder::Mdy) {
        for (const OrderName& candidate : orderNames) {
            if (candidate.order == options.dateOrder) {
                text += ";Date Order=" + std::string{candidate.name};
            }
        }
    }
    if (options.mode == OpenMode::ReadOnly) {
        text += ";Mode=Read";
    }
    return text;
}

} // namespace tamarok::embedded
