#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "catalogue/group_list.h"

#include "tamarok/tmkvar.h"

namespace tamarok::catalogue {

/// Composes the texts of an aggregated list column by column: what InsertToStr, GetFrom and InsertToStr2 of Comm_CSel
/// return, without a copy of the three texts for each column.
class ListComposer {
public:
    /// @param type     list type, compared without regard to case
    /// @param version  version key
    /// @param session  must outlive this object
    /// @param from     FROM body to begin with
    ListComposer(std::string_view type, std::string_view version, const TmkVar& session, std::string from);

    /// Adds a column to the SELECT list, its joins to the FROM body and its group expression to the GROUP BY list.
    void addColumn(std::int16_t id);

    /// Adds an expression to the SELECT list. An empty one adds nothing.
    void addSelected(std::string_view expression);
    /// Adds the joins that a column needs.
    void addJoins(std::int16_t id);
    /// Adds an expression to the GROUP BY list unless it is empty or there already.
    void addGroup(std::string_view expression) { group_.add(expression); }

    const std::string& select() const noexcept { return select_; }
    const std::string& from() const noexcept { return from_; }
    const std::string& group() const noexcept { return group_.text(); }

private:
    std::string type_;
    std::string version_;
    const TmkVar& session_;
    std::string select_;
    std::string from_;
    GroupList group_;
};

} // namespace tamarok::catalogue
