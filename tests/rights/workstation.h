#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "support/surroundings.h"

namespace tamarok::test {

/// A workstation in multi-user operation: user 7, a second connection for the session row, and command
/// time-outs of 41 s (main connection) and 17 s (session row) that differ from the default. A text shows its
/// number. A statement without a prepared answer has no rows.
class Workstation : public Surroundings {
public:
    explicit Workstation(std::string_view locale = "de-AT") : Surroundings{locale, Unanswered::HasNoRows}
    {
        for (const int number :
             {625, 629, 632, 638, 642, 646, 649, 652, 655, 4887, 4888, 4889, 4890, 4891, 4892, 4893}) {
            loc.texts[number] = std::string{"T"}.append(std::to_string(number));
        }
        session.db_ADO = database.connect("main");
        session.db_ADO->CommandTimeout(41);
        dbLock->CommandTimeout(17);
        database.clearRecord();
        session.ID_User = 7;
        session.bolLan = true;
        session.strDateFormat = "DD.MM.YYYY";
    }

    /// Everything that was asked of the database, in order.
    const std::vector<std::string>& sent() const { return database.log; }

    ado::ConnectionRef dbLock = database.connect("lock");
};

} // namespace tamarok::test
