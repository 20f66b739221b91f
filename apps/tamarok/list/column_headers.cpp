#include "list/column_headers.h"

#include "tamarok_database/labels.h"

#include "tamarok/text.h"

namespace tamarok::cli {

std::string columnHeader(const std::string& type, std::int16_t id, const TmkVar& session)
{
    const std::string key = text::toUpper(type);
    const std::string_view label = key == "LOG" ? columnLabel(id, session.strLanguage) : std::string_view{};
    return label.empty() ? key + " " + std::to_string(id) : std::string{label};
}

std::vector<std::string> columnHeaders(const std::string& type, const std::vector<std::int16_t>& ids,
                                       const TmkVar& session)
{
    std::vector<std::string> headers;
    headers.reserve(ids.size());
    for (const std::int16_t id : ids)
        headers.push_back(columnHeader(type, id, session));
    return headers;
}

} // namespace tamarok::cli
