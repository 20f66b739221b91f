#include "connection_text.h"

#include <algorithm>
#include <array>
#include <optional>

#include "failures.h"
#include "tamarok_tsql/date_order.h"

#include "tamarok/text.h"

namespace tamarok::odbc {

namespace {

using ado::ConnectionProperty;

constexpr std::string_view blanks = " \t\r\n";

[[noreturn]] void refuse(std::size_t part, const std::string& why)
{
    throw Error{errors::invalidArgument, "Connection text: part " + std::to_string(part) + " " + why + ".",
                std::string{sourceName}};
}

std::string_view trimmed(std::string_view text)
{
    const std::size_t first = text.find_first_not_of(blanks);
    if (first == std::string_view::npos) return {};
    return text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

/// Reads the parts of a text one after the other. Parts are counted from 1, for the messages.
class PartReader {
public:
    explicit PartReader(std::string_view text, bool withQuotes) : rest_{text}, withQuotes_{withQuotes} {}

    std::optional<ConnectionProperty> next()
    {
        while (!rest_.empty() && (rest_.front() == ';' || blanks.find(rest_.front()) != std::string_view::npos))
            rest_.remove_prefix(1);
        if (rest_.empty()) return std::nullopt;
        ++part_;
        const std::size_t equals = rest_.find_first_of("=;");
        if (equals == std::string_view::npos || rest_[equals] == ';') refuse(part_, "is not of the form name=value");
        ConnectionProperty property{std::string{trimmed(rest_.substr(0, equals))}, {}};
        rest_.remove_prefix(equals + 1);
        rest_.remove_prefix(std::min(rest_.find_first_not_of(blanks), rest_.size()));
        property.value = takeValue();
        return property;
    }

private:
    std::string takeValue()
    {
        const char first = rest_.empty() ? ';' : rest_.front();
        if (first == '{') return takeEnclosed('}');
        if (withQuotes_ && (first == '"' || first == '\'')) return takeEnclosed(first);
        const std::string_view value = rest_.substr(0, rest_.find(';'));
        rest_.remove_prefix(value.size());
        return std::string{trimmed(value)};
    }

    /// A doubled closing character within the value stands for one.
    std::string takeEnclosed(char closing)
    {
        std::string value;
        for (std::size_t at = 1; at < rest_.size(); ++at) {
            if (rest_[at] == closing) {
                const bool doubled = at + 1 < rest_.size() && rest_[at + 1] == closing;
                if (!doubled) {
                    rest_.remove_prefix(at + 1);
                    rest_.remove_prefix(std::min(rest_.find_first_not_of(blanks), rest_.size()));
                    if (!rest_.empty() && rest_.front() != ';') refuse(part_, "has text behind its value");
                    return value;
                }
                ++at;
            }
            value.push_back(rest_[at]);
        }
        refuse(part_, std::string{"has no closing "} + closing);
    }

    std::string_view rest_;
    bool withQuotes_;
    std::size_t part_ = 0;
};

/// Whether a part of the text begins with "Provider=". The text is not read for it, since reading depends on the
/// answer.
bool namesProvider(std::string_view text)
{
    while (!text.empty()) {
        const std::string_view part = text.substr(0, text.find(';'));
        if (text::equalsNoCase(trimmed(part.substr(0, part.find('='))), "Provider")) return true;
        text.remove_prefix(std::min(part.size() + 1, text.size()));
    }
    return false;
}

std::vector<ConnectionProperty> readParts(std::string_view text, bool withQuotes)
{
    std::vector<ConnectionProperty> properties;
    PartReader reader{text, withQuotes};
    while (auto property = reader.next())
        properties.push_back(std::move(*property));
    return properties;
}

/// Names of ADO style and those of the driver managers for the same.
struct NameRow {
    std::string_view ado;
    std::string_view odbc;
};

constexpr std::array nameRows{
    NameRow{"Data Source", "SERVER"},
    NameRow{"Address", "SERVER"},
    NameRow{"Addr", "SERVER"},
    NameRow{"Network Address", "SERVER"},
    NameRow{"Server", "SERVER"},
    NameRow{"Initial Catalog", "DATABASE"},
    NameRow{"Database", "DATABASE"},
    NameRow{"User ID", "UID"},
    NameRow{"User", "UID"},
    NameRow{"UID", "UID"},
    NameRow{"Password", "PWD"},
    NameRow{"PWD", "PWD"},
    NameRow{"Application Name", "APP"},
    NameRow{"Driver", "DRIVER"},
    NameRow{"DSN", "DSN"},
    NameRow{"Use Encryption for Data", "Encrypt"},
};

/// The name under which the driver manager knows a property; an unknown one is passed on as it is.
std::string driverName(const std::string& name)
{
    const auto* const row = std::ranges::find_if(
        nameRows, [&name](const NameRow& candidate) { return text::equalsNoCase(candidate.ado, name); });
    return row == nameRows.end() ? name : std::string{row->odbc};
}

DateOrder readOrder(const std::string& value)
{
    const auto order = tsql::parseDateOrder(value);
    if (!order)
        throw Error{errors::invalidArgument, "Connection text: the Date Order is none of DMY, MDY, YMD, YDM, MYD, DYM.",
                    std::string{sourceName}};
    return *order;
}

/// In either style.
bool isPassword(const std::string& name)
{
    return text::equalsNoCase(name, "Password") || text::equalsNoCase(name, "PWD");
}

/// FreeTDS knows no doubled brace: a brace ends the value where a semicolon or the end follows.
std::string braced(std::string_view value, bool freetds)
{
    if (!freetds) return "{" + text::replaceAll(value, "}", "}}") + "}";
    if (value.find("};") == std::string_view::npos) return "{" + std::string{value} + "}";
    throw Error{errors::invalidArgument, "Connection text: FreeTDS takes no value that contains \"};\".",
                std::string{sourceName}};
}

/// The text for the user: in braces, which both styles read, where a value needs them.
std::string shown(const std::vector<ConnectionProperty>& properties)
{
    std::vector<ConnectionProperty> visible;
    std::ranges::copy_if(properties, std::back_inserter(visible),
                         [](const ConnectionProperty& property) { return !isPassword(property.name); });
    return composeDriverText(visible);
}

/// Takes the properties that are this back end's own, and those that mean something else to the driver manager.
/// @return whether the driver manager must not see the property
bool takeOwn(const ConnectionProperty& property, ConnectionTarget& target)
{
    if (text::equalsNoCase(property.name, "Provider")) return true;
    if (text::equalsNoCase(property.name, "Date Order")) {
        target.dateOrder = readOrder(property.value);
        return true;
    }
    if (text::equalsNoCase(property.name, "Integrated Security")) {
        const bool wanted = text::equalsNoCase(property.value, "SSPI") || text::equalsNoCase(property.value, "true") ||
                            text::equalsNoCase(property.value, "yes");
        if (wanted) target.properties.push_back({"Trusted_Connection", "Yes"});
        return true;
    }
    // OLE DB providers take these; a driver has nothing of the kind.
    return text::equalsNoCase(property.name, "Persist Security Info");
}

/// "host,port" is the style of the vendor's drivers; the others take the port by itself.
void splitPort(std::vector<ConnectionProperty>& properties)
{
    const std::string* driver = findProperty(properties, "DRIVER");
    const bool vendors = driver != nullptr && text::findNoCase(*driver, "SQL Server") != 0;
    if (vendors || findProperty(properties, "PORT") != nullptr) return;
    for (ConnectionProperty& property : properties) {
        const std::size_t comma = property.value.find(',');
        if (property.name != "SERVER" || comma == std::string::npos) continue;
        std::string port{trimmed(std::string_view{property.value}.substr(comma + 1))};
        property.value.resize(comma);
        properties.push_back({"PORT", std::move(port)});
        return;
    }
}

} // namespace

ConnectionTarget parseConnectionText(std::string_view text)
{
    // Quotes enclose a value in ADO style, which a Provider shows; in ODBC style they are part of it.
    const std::vector<ConnectionProperty> given = readParts(text, namesProvider(text));
    ConnectionTarget target;
    target.shownText = shown(given);
    for (const ConnectionProperty& property : given) {
        if (takeOwn(property, target)) continue;
        if (isPassword(property.name)) target.password = property.value;
        target.properties.push_back({driverName(property.name), property.value});
    }
    // The provider for ODBC names a data source of the driver manager by "Data Source".
    const auto* const provider = findProperty(given, "Provider");
    if (provider != nullptr && text::equalsNoCase(*provider, "MSDASQL") &&
        findProperty(target.properties, "DRIVER") == nullptr) {
        for (ConnectionProperty& property : target.properties)
            if (property.name == "SERVER") property.name = "DSN";
    }
    splitPort(target.properties);
    return target;
}

std::string composeDriverText(const std::vector<ConnectionProperty>& properties)
{
    const std::string* const driver = findProperty(properties, "DRIVER");
    const bool freetds = driver != nullptr && text::findNoCase(*driver, "tds") != 0;
    std::string text;
    for (const ConnectionProperty& property : properties) {
        const bool special = property.value.find_first_of("[]{}(),;?*=!@'\"") != std::string::npos ||
                             trimmed(property.value) != property.value;
        text += property.name + "=" + (special ? braced(property.value, freetds) : property.value) + ";";
    }
    return text;
}

const std::string* findProperty(const std::vector<ConnectionProperty>& properties, std::string_view name)
{
    const auto found = std::ranges::find_if(
        properties, [name](const ConnectionProperty& property) { return text::equalsNoCase(property.name, name); });
    return found == properties.end() ? nullptr : &found->value;
}

} // namespace tamarok::odbc
