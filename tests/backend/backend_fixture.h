#pragma once

#include <gtest/gtest.h>
#include <memory>
#include <optional>
#include <string>

#include "backend_context.h"
#include "support/errors.h"

#include "tamarok/error.h"

namespace tamarok::ado::backend {

using tamarok::test::errorNumber;
using tamarok::test::failureOf;

/// One connection and one empty table of the standard columns. Leftovers are dropped before and after.
class BackendTest : public ::testing::Test {
protected:
    BackendTest();
    ~BackendTest() override;

    /// Reason of a quirk of this back end, or nothing.
    std::optional<std::string> quirk(std::string_view name) const;

    /// Whether a name is the expected one, in any case where the server folds names.
    void expectName(const std::string& name, std::string_view wanted) const;

    /// Whether a count or sum of whole numbers is the expected one, of the type that the server gives it.
    void expectCount(const Variant& value, std::int32_t wanted) const;

    /// A text with characters of each length in UTF-8 that the driver lets pass.
    std::string tree() const { return quirk("no_wide_planes") ? "Lärche €" : "Lärche 🌲"; }

    /// Inserts rows (WHOLE 1 to `count`, SHORT_TEXT "row 1" ...).
    void fill(int count);
    /// "SELECT columns FROM table rest".
    std::string select(std::string_view columns, std::string_view rest = {}) const;
    std::string insert(std::string_view columns, std::string_view values) const;
    std::shared_ptr<Recordset> open(std::string_view statement, CursorType cursor = CursorType::OpenForwardOnly,
                                    LockType lock = LockType::ReadOnly) const;
    /// First field of the first row on a connection of the test.
    static Variant scalar(const ConnectionRef& on, std::string_view statement);
    Variant scalar(std::string_view statement) const { return scalar(connection, statement); }
    std::int64_t count(std::string_view rest = {}) const;

    std::unique_ptr<BackendContext> context;
    Words words;
    std::string table;
    ConnectionRef connection;
};

} // namespace tamarok::ado::backend
