#pragma once

#include <cstdlib>
#include <filesystem>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include "embedded/engine/child.h"
#include "tamarok_database/reference_database.h"
#include "tamarok_embedded/connect.h"

namespace tamarok::testing {

/// A folder of its own with a reference database and what the workstations on it need.
class LockDatabase {
public:
    LockDatabase() : folder_{makeFolder()}
    {
        embedded::OpenOptions options;
        options.mode = embedded::OpenMode::Create;
        connection = embedded::connect(file(), options);
        database::ReferenceOptions small;
        small.logs = 60;
        database::createReferenceDatabase(*connection, small);
    }
    LockDatabase(const LockDatabase&) = delete;
    LockDatabase& operator=(const LockDatabase&) = delete;
    ~LockDatabase()
    {
        connection.reset();
        std::error_code ignored;
        std::filesystem::remove_all(folder_, ignored);
    }

    std::string file() const { return (folder_ / "locks.db").string(); }

    /// A workstation process of that user, not yet logged in.
    std::unique_ptr<embedded::test::Child> station(int user) const;

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

    ado::ConnectionRef connection;

private:
    static std::filesystem::path makeFolder()
    {
        std::string name = (std::filesystem::temp_directory_path() / "tamarok-locks-XXXXXX").string();
        if (::mkdtemp(name.data()) == nullptr) throw std::runtime_error{"no folder " + name};
        return name;
    }

    std::filesystem::path folder_;
};

/// One command to a workstation and its answer.
std::string ask(embedded::test::Child& station, const std::string& command);

} // namespace tamarok::testing
