#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "tamarok/tmkvar.h"
#include "tamarok/variant.h"

namespace tamarok::workbench {

/// One column of a list type, as a user knows it.
struct ListColumn {
    std::int16_t id = 0;
    std::string label;
    std::string header;  ///< the short form, by which a list is headed
    std::string pattern; ///< number or date pattern of its cells, "" for a text
    bool isMeasure = false;
    bool isNumber = false; ///< its cells stand to the right
    bool canFilter = false;
};

/// Returns the columns of a list type by rising id, in the session's language.
std::vector<ListColumn> listColumns(const std::string& type, const TmkVar& session);

/// Returns the text of a cell under the regional settings of the calling thread.
std::string cellText(const Variant& value, const ListColumn& column);

/// Returns the columns with which a list of the type opens: as a rule the first ones, and its first measures.
/// @param columns  all of the type
std::vector<std::int16_t> firstColumns(const std::string& type, const std::vector<ListColumn>& columns);

} // namespace tamarok::workbench
