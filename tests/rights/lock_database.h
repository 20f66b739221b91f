#pragma once

#include <memory>
#include <string>
#include <vector>

#include "support/child_process.h"
#include "support/scratch_folder.h"
#include "tamarok_database/reference_database.h"
#include "tamarok_embedded/connect.h"

namespace tamarok::test {

/// A reference database in a scratch folder, and the workstations on it, each a process of rights_lock_child.
class LockDatabase {
public:
    LockDatabase()
    {
        embedded::OpenOptions options;
        options.mode = embedded::OpenMode::Create;
        connection = embedded::connect(file(), options);
        database::ReferenceOptions small;
        small.logs = 60;
        small.records = 0;
        database::createReferenceDatabase(*connection, small);
    }
    std::string file() const { return folder_ / "locks.db"; }

    /// Starts a workstation of a user, who has not logged in yet.
    std::unique_ptr<ChildProcess> station(int user) const;
    /// Starts a workstation that runs under the system's account without rights. Only root can do that.
    std::unique_ptr<ChildProcess> stationOfNobody(int user) const;
    /// Lets every account read and write the database and all files beside it.
    void openToAll() const;

    std::vector<Variant> column(const std::string& statement) const
    {
        ado::Recordset rows;
        rows.Open(statement, connection);
        std::vector<Variant> values;
        for (; !rows.AtEOF(); rows.MoveNext())
            values.push_back(rows.Fields().Item(0).Value());
        return values;
    }
    std::int32_t count(const std::string& condition) const
    {
        return column(std::string{"SELECT COUNT(*) FROM LOCK WHERE "}.append(condition)).at(0).asLong();
    }

private:
    std::unique_ptr<ChildProcess> start(const std::string& program, std::vector<std::string> arguments, int user) const;

    ScratchFolder folder_; // outlives the connection

public:
    ado::ConnectionRef connection;
};

} // namespace tamarok::test
