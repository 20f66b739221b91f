#pragma once

#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "support/errors.h"
#include "support/scratch_folder.h"
#include "tamarok_embedded/connect.h"

#include "tamarok/ado_backend.h"
#include "tamarok/error.h"

/// What the tests of the embedded engine share.
namespace tamarok::embedded::test {

using tamarok::test::failureOf;
using Folder = tamarok::test::ScratchFolder;

inline void write(const std::filesystem::path& file, const std::string& bytes)
{
    std::ofstream stream{file, std::ios::binary};
    stream << bytes;
}

inline ado::ConnectionRef create(const std::filesystem::path& file)
{
    OpenOptions options;
    options.mode = OpenMode::Create;
    return connect(file, options);
}

inline ado::Statement statement(std::string_view text, std::int32_t timeoutSeconds = 30)
{
    ado::Statement result;
    result.text = text;
    result.timeoutSeconds = timeoutSeconds;
    return result;
}

inline std::int64_t run(const ado::ConnectionRef& connection, std::string_view text, std::int32_t timeoutSeconds = 30)
{
    return connection->session().execute(statement(text, timeoutSeconds));
}

inline std::unique_ptr<ado::Cursor> open(const ado::ConnectionRef& connection, std::string_view text,
                                         std::int32_t timeoutSeconds = 30)
{
    return connection->session().open(statement(text, timeoutSeconds));
}

inline std::unique_ptr<ado::Cursor> openEditable(const ado::ConnectionRef& connection, std::string_view text,
                                                 std::int32_t timeoutSeconds = 30)
{
    ado::Statement wanted = statement(text, timeoutSeconds);
    wanted.cursorType = ado::CursorType::OpenDynamic;
    wanted.lockType = ado::LockType::Pessimistic;
    return connection->session().open(wanted);
}

/// First value of the first row; Empty where there is no row.
inline Variant valueOf(const ado::ConnectionRef& connection, std::string_view text)
{
    const auto cursor = open(connection, text);
    return cursor->next() ? cursor->value(0) : Variant{};
}

/// All values of the first column.
inline std::vector<Variant> columnOf(const ado::ConnectionRef& connection, std::string_view text)
{
    std::vector<Variant> values;
    for (const auto cursor = open(connection, text); cursor->next();) {
        values.push_back(cursor->value(0));
    }
    return values;
}

} // namespace tamarok::embedded::test
