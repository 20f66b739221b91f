#include "day/kept_widths.h"

#include <utility>

#include "tamarok/comm_get.h"
#include "tamarok/comm_set.h"

namespace tamarok::cli::day {

KeptWidths::KeptWidths(ado::ConnectionRef connection, std::initializer_list<std::string_view> relations) :
    connection_{std::move(connection)}
{
    for (const std::string_view relation : relations) {
        const std::string where = std::string{" WHERE NAME = 'STANDARD' AND RELATION = '"}.append(relation).append("'");
        ado::Recordset rows;
        rows.Open("SELECT MODEL FROM MODELS" + where, connection_);
        std::string statement = "DELETE FROM MODELS";
        if (!rows.AtEOF())
            statement = "UPDATE MODELS SET MODEL = " +
                        Comm_Set{}.Set_StrVal(Comm_Get{}.Get_String(rows.Fields().Item(0).Value(), true));
        returns_.push_back(statement + where);
    }
}

KeptWidths::~KeptWidths()
{
    try {
        for (const std::string& statement : returns_)
            connection_->Execute(statement);
    } catch (...) { // NOLINT(bugprone-empty-catch): the step has failed already
    }
}

} // namespace tamarok::cli::day
