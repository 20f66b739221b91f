#include "backend_fixture.h"

#include <iostream>
#include <random>

#include "tamarok/convert.h"
#include "tamarok/text.h"

namespace tamarok::ado::backend {

const std::string& processToken()
{
    static const std::string token = std::to_string(std::random_device{}());
    return token;
}

BackendTest::BackendTest() :
    context{makeBackendContext()}, words{context->words()}, table{"TMT_ROWS_"}, connection{context->connect()}
{
    table += processToken();
    connection->Execute(context->dropTable(table));
    connection->Execute(context->createTable(table));
}

BackendTest::~BackendTest()
{
    connection->listen({}); // a derived fixture's listener has gone with it
    try {
        if (connection->State() == ObjectState::Closed) connection = context->connect();
        connection->Execute(context->dropTable(table));
    } catch (const Error& error) {
        ADD_FAILURE() << "the table could not be dropped: " << error.what();
    }
}

std::optional<std::string> BackendTest::quirk(std::string_view name) const
{
    for (const Quirk& known : context->quirks())
        if (known.name == name) return known.reason;
    return std::nullopt;
}

void BackendTest::expectName(const std::string& name, std::string_view wanted) const
{
    if (quirk("folded_names"))
        EXPECT_EQ(text::toUpper(name), text::toUpper(wanted));
    else
        EXPECT_EQ(name, wanted);
}

void BackendTest::expectCount(const Variant& value, std::int32_t wanted) const
{
    EXPECT_EQ(value, quirk("wide_counts") ? Variant{std::int64_t{wanted}} : Variant{wanted});
}

void BackendTest::fill(int count)
{
    for (int row = 1; row <= count; ++row) {
        const std::string number = std::to_string(row);
        std::string values{"'row "};
        values.append(number).append("', ").append(number);
        connection->Execute(insert("SHORT_TEXT, WHOLE", values));
    }
}

std::string BackendTest::select(std::string_view columns, std::string_view rest) const
{
    std::string text{"SELECT "};
    text.append(columns).append(" FROM ").append(table);
    if (!rest.empty()) text.append(" ").append(rest);
    return text;
}

std::string BackendTest::insert(std::string_view columns, std::string_view values) const
{
    std::string text{"INSERT INTO "};
    return text.append(table).append(" (").append(columns).append(") VALUES (").append(values).append(")");
}

std::shared_ptr<Recordset> BackendTest::open(std::string_view statement, CursorType cursor, LockType lock) const
{
    auto rows = std::make_shared<Recordset>();
    rows->Open(statement, connection, cursor, lock);
    return rows;
}

Variant BackendTest::scalar(const ConnectionRef& on, std::string_view statement)
{
    Recordset rows;
    rows.Open(statement, on);
    return rows.AtEOF() ? Variant{} : rows.Fields().Item(0).Value();
}

std::int64_t BackendTest::count(std::string_view rest) const
{
    return convert::toLongLong(scalar(select("COUNT(*)", rest)));
}

int runBackendSuite(int argc, char** argv, int expectedRuns, int expectedSkips)
{
    ::testing::InitGoogleTest(&argc, argv);
    const int status = RUN_ALL_TESTS();
    if (::testing::GTEST_FLAG(list_tests) || ::testing::GTEST_FLAG(filter) != "*") return status;
    const auto& results = *::testing::UnitTest::GetInstance();
    const int skipped = results.skipped_test_count();
    const int ran = results.successful_test_count() + results.failed_test_count();
    std::cout << "Back-end suite: " << ran << " cases ran, " << skipped << " were skipped.\n";
    if (ran == expectedRuns && skipped == expectedSkips && results.disabled_test_count() == 0) return status;
    std::cerr << "Back-end suite: " << expectedRuns << " cases should have run and " << expectedSkips
              << " been skipped.\n";
    return 1;
}

} // namespace tamarok::ado::backend
