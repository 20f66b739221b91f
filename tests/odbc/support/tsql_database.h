#pragma once

#include <string>
#include <string_view>

namespace tamarok::test {

/// Makes a database on the T-SQL server where it is missing. @return its connection text
std::string tsqlDatabase(const std::string& name);

/// Drops it; its connections must be closed.
void dropTsqlDatabase(const std::string& name);

/// A database on the T-SQL server (see support/tsql_server.h) that one process has for itself, so that runs beside each
/// other do not meet. The destructor drops it; its connections must be closed by then. A run that was killed leaves its
/// database behind: a later one drops those that are older than a day.
class TsqlDatabase {
public:
    /// @param purpose  part of the name: letters
    explicit TsqlDatabase(std::string_view purpose);
    ~TsqlDatabase();
    TsqlDatabase(const TsqlDatabase&) = delete;
    TsqlDatabase& operator=(const TsqlDatabase&) = delete;

    const std::string& name() const noexcept { return name_; }
    /// The connection text of this database.
    const std::string& connectionText() const noexcept { return text_; }

private:
    std::string name_;
    std::string text_;
};

} // namespace tamarok::test
