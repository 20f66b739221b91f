#include "ado/ado_fixture.h"
#include "runtime/support.h"

#include "tamarok/comm_get.h"
#include "tamarok/tmkvar.h"

// Look-ups on a back end that delivers any type of column, and tells what is left open.

namespace tamarok {
namespace {

using ado::DataType;

class FieldTypes : public ado::AdoTest {
protected:
    FieldTypes() { session.db_ADO = connection; }

    /// A table of one column behind a statement.
    void prepare(const char* statement, DataType type, std::int32_t definedSize, const std::vector<Variant>& values)
    {
        auto table = std::make_shared<test::Table>();
        table->columns = {{"C", "T", "C", type, definedSize}};
        for (const Variant& value : values)
            table->rows.emplace(static_cast<std::int64_t>(table->rows.size()) + 1, test::Row{value});
        database->answerTable(statement, table);
    }

    TmkVar session;
    Comm_Get get;
};

TEST_F(FieldTypes, FieldSizeOfEveryType)
{
    struct Row {
        DataType type;
        std::int32_t size;
    };
    constexpr std::int32_t defined = 37;
    const Row rows[] = {
        {DataType::Empty, 0},
        {DataType::SmallInt, 0},
        {DataType::Integer, 0},
        {DataType::Single, 0},
        {DataType::Double, 11},
        {DataType::Currency, 0},
        {DataType::Date, defined},
        {DataType::BSTR, 0},
        {DataType::Boolean, 0},
        {DataType::Variant, 0},
        {DataType::Decimal, 0},
        {DataType::TinyInt, 0},
        {DataType::UnsignedTinyInt, 0},
        {DataType::BigInt, 0},
        {DataType::GUID, 0},
        {DataType::Binary, 0},
        {DataType::Char, defined},
        {DataType::WChar, defined},
        {DataType::Numeric, 0},
        {DataType::DBDate, defined},
        {DataType::DBTime, 0},
        {DataType::DBTimeStamp, defined},
        {DataType::VarChar, defined},
        {DataType::LongVarChar, defined},
        {DataType::VarWChar, defined},
        {DataType::LongVarWChar, 0},
        {DataType::VarBinary, 0},
        {DataType::LongVarBinary, 0},
    };
    for (const Row& row : rows) {
        prepare("SELECT TOP 0 C FROM T", row.type, defined, {});
        prepare("SELECT C FROM T WHERE rownum=1", row.type, defined, {Null{}});
        for (const bool oracle : {false, true}) {
            session.bolOracle = oracle;
            EXPECT_EQ(get.Get_FieldSize("T", "C", session), row.size) << static_cast<int>(row.type) << oracle;
        }
    }
    EXPECT_EQ(database->openCursors, 0);
}

TEST_F(FieldTypes, NoLookUpLeavesItsRowsOpen)
{
    prepare("SELECT TOP 1 C FROM T", DataType::VarWChar, 40, {"  Fichte ", "Tanne"});
    prepare("SELECT TOP 1 C FROM T WHERE 1=0", DataType::VarWChar, 40, {});
    EXPECT_EQ(get.Get_FieldValue(session, "C", "T", ""), "Fichte");
    EXPECT_EQ(get.Get_FieldValue(session, "C", "T", "1=0"), "");
    EXPECT_EQ(get.Get_FieldValueN(session, "C", "T", "1=0"), 0.0);
    EXPECT_EQ(test::errorNumber([&] { get.Get_FieldValueN(session, "C", "T", ""); }), errors::typeMismatch)
        << "a text that is no number";
    EXPECT_EQ(database->openCursors, 0);

    const auto primary = open();
    prepare("SELECT C FROM T WHERE ID = 1", DataType::Double, 8, {2.5});
    const ado::ConnectionRef related = connection;
    EXPECT_EQ(get.Get_RelatedText("ID", "SELECT C FROM T WHERE ID = ", *primary, related), "2.5");
    EXPECT_EQ(database->openCursors, 1) << "the caller's own";
}

} // namespace
} // namespace tamarok
