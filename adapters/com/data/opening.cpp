#include "opening.h"

#include "tamarok_database/reference_database.h"
#include "tamarok_embedded/backend.h"
#include "tamarok_embedded/connect.h"
#include "tamarok_embedded/new_database.h"
#include "tamarok_odbc/connect.h"

#include "tamarok/connection_text.h"
#include "tamarok/text.h"

namespace tamarok::data {

namespace {

/// A value in the braces of ODBC, in which a closing brace is doubled.
std::string inBraces(std::string_view value)
{
    return "{" + text::replaceAll(value, "}", "}}") + "}";
}

} // namespace

/// The text is not read as a whole: those of ODBC have other rules for braces and quotes.
std::string_view providerOf(std::string_view text)
{
    while (!text.empty()) {
        const std::string_view part = text.substr(0, text.find(';'));
        const std::size_t equals = part.find('=');
        if (equals != std::string_view::npos && text::equalsNoCase(text::trim(part.substr(0, equals)), "Provider"))
            return text::trim(part.substr(equals + 1));
        text.remove_prefix(std::min(part.size() + 1, text.size()));
    }
    return {};
}

ado::ConnectionRef openConnection(std::string_view text)
{
    if (text::equalsNoCase(providerOf(text), embedded::provider)) return embedded::connectText(text);
    return odbc::connectText(text);
}

std::string withAccount(std::string text, std::string_view user, std::string_view password)
{
    const bool hasProvider = !providerOf(text).empty();
    const auto add = [&](std::string_view providersName, std::string_view odbcName, std::string_view value) {
        if (value.empty()) return;
        if (!text.empty() && text.back() != ';') text += ';';
        text.append(hasProvider ? providersName : odbcName).append("=");
        text += hasProvider ? ado::connectionValue(value) : inBraces(value);
    };
    add("User ID", "UID", user);
    add("Password", "PWD", password);
    return text;
}

void makeDatabase(const std::string& file, std::int64_t logs)
{
    embedded::NewDatabase made{std::filesystem::path{std::u8string{file.begin(), file.end()}}};
    if (logs == 0) {
        database::createMasterDatabase(*made.connection());
    } else {
        database::ReferenceOptions options;
        options.logs = logs;
        database::createReferenceDatabase(*made.connection(), options);
    }
    made.complete();
}

} // namespace tamarok::data
