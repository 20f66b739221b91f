#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "row_fields.h"

#include "tamarok/object.h"
#include "tamarok/tmkvar.h"

namespace tamarok::lists {

/// What a list view is filled from.
struct ListStatement {
    std::string text;
    std::vector<std::string> formats;  ///< of each column
    const RowFields* fields = nullptr; ///< nullptr: the last column names the record
};

/// What to compose.
struct ListRequest {
    const TmkVar& session;
    std::string_view version;   ///< version key
    std::string_view type;      ///< list type, or "BRUTTOSCH"
    std::string_view selection; ///< "FROM ... WHERE ..."
};

/// Composes the statement of a list view from the columns of its headers, and aligns the headers by their formats.
/// Errors: 13 and 6 for a header whose Key holds no column id, 9 for a sort column that the view lacks, those of the
/// database and of the view.
ListStatement composeListStatement(const ListRequest& request, Object& view, Object& headers);

} // namespace tamarok::lists
