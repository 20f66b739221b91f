#include "connection_text.h"

#include <array>

#include "failures.h"
#include "tamarok_embedded/backend.h"
#include "tamarok_tsql/names.h"

#include "tamarok/connection_text.h"
#include "tamarok/text.h"

namespace tamarok::embedded {

namespace {

using tsql::sameName;

struct ModeName {
    std::string_view name;
    OpenMode mode;
};
constexpr std::array modeNames{
    ModeName{"Read", OpenMode::ReadOnly},
    ModeName{"Create", OpenMode::Create},
    ModeName{"ReadWrite", OpenMode::OpenExisting},
};

/// Error 5 with the reason.
[[noreturn]] void refuse(const std::string& why)
{
    throw Error{errors::invalidArgument, "Connection text: " + why + ".", std::string{sourceName}};
}

/// Names of properties and of their values are compared without regard to case.
void applyProperty(const ado::ConnectionProperty& pair, ConnectionTarget& target)
{
    if (sameName(pair.name, "Provider")) {
        if (!sameName(pair.value, provider)) {
            refuse("the provider is '" + pair.value + "', not " + std::string{provider});
        }
    } else if (sameName(pair.name, "Data Source")) {
        target.file = pair.value;
    } else if (sameName(pair.name, "Date Order")) {
        if (const auto order = tsql::parseDateOrder(pair.value)) {
            target.options.dateOrder = *order;
            return;
        }
        refuse("'" + pair.value + "' is no date order");
    } else if (sameName(pair.name, "Mode")) {
        for (const ModeName& candidate : modeNames) {
            if (sameName(candidate.name, pair.value)) {
                target.options.mode = candidate.mode;
                return;
            }
        }
        refuse("'" + pair.value + "' is no mode (Read, Create, ReadWrite)");
    } else {
        refuse("there is no property '" + std::string{pair.name} + "'");
    }
}

} // namespace

/// Starts with the defaults. Of a property that is given twice, the last one counts.
ConnectionTarget parseConnectionText(std::string_view text)
{
    ConnectionTarget target;
    for (const ado::ConnectionProperty& property : ado::splitConnectionText(text)) {
        applyProperty(property, target);
    }
    if (target.file.empty()) {
        refuse("no Data Source is given");
    }
    return target;
}

/// Writes only what differs from the defaults. Create becomes an ordinary opening: the text is used again when the file
/// exists.
std::string composeConnectionText(const std::string& file, const OpenOptions& options)
{
    std::string composed = "Provider=" + std::string{provider} + ";Data Source=" + ado::connectionValue(file);
    if (options.dateOrder != OpenOptions{}.dateOrder) {
        composed += ";Date Order=" + text::toUpper(tsql::dateOrderName(options.dateOrder));
    }
    if (options.mode == OpenMode::ReadOnly) {
        composed += ";Mode=Read";
    }
    return composed;
}

} // namespace tamarok::embedded
