#include "ado_fixture.h"

namespace tamarok::ado {

class LateBindingTest : public AdoTest {
protected:
    static Variant get(const ObjectRef& object, std::string_view name, std::vector<Variant> arguments = {})
    {
        return object->get(name, arguments);
    }
    static Variant call(const ObjectRef& object, std::string_view name, std::vector<Variant> arguments = {})
    {
        return object->call(name, arguments);
    }
    static ObjectRef object(const Variant& value) { return value.asObject(); }

    ObjectRef openLate(std::int32_t cursor = 3, std::int32_t lock = 3)
    {
        const auto rows = std::make_shared<Recordset>();
        call(rows, "Open", {query, connection, cursor, lock});
        return rows;
    }
};

TEST_F(LateBindingTest, TypeNames)
{
    const auto rows = openLate();
    EXPECT_EQ(rows->typeName(), "Recordset");
    EXPECT_EQ(connection->typeName(), "Connection");
    EXPECT_EQ(Command{}.typeName(), "Command");
    EXPECT_EQ(object(get(rows, "Fields"))->typeName(), "Fields");
    EXPECT_EQ(object(get(rows, "Fields", {0}))->typeName(), "Field");
}

TEST_F(LateBindingTest, RecordsetWalks)
{
    const auto rows = openLate();
    EXPECT_EQ(get(rows, "eof"), Variant{false});
    EXPECT_EQ(get(rows, "BOF"), Variant{false});
    EXPECT_EQ(get(rows, "State"), Variant{1});
    EXPECT_EQ(get(rows, "RecordCount"), Variant{std::int64_t{3}});
    call(rows, "MOVENEXT");
    EXPECT_EQ(get(rows, "AbsolutePosition"), Variant{std::int64_t{2}});
    const Variant mark = get(rows, "Bookmark");
    call(rows, "MoveLast");
    call(rows, "MovePrevious");
    call(rows, "MoveFirst");
    call(rows, "Move", {2});
    EXPECT_EQ(get(rows, "AbsolutePosition"), Variant{std::int64_t{3}});
    rows->put("Bookmark", mark);
    EXPECT_EQ(get(object(get(rows, "Fields", {"id"})), "Value"), Variant{2});
    rows->put("AbsolutePosition", 1);
    call(rows, "Find", {"NAME LIKE 'L*'"});
    EXPECT_EQ(get(object(get(rows, "Fields", {0})), "Value"), Variant{3});
    call(rows, "Find", {"ID > 0", 1, -1});
    EXPECT_EQ(get(object(call(rows, "Fields", {0})), "Value"), Variant{2});
    EXPECT_EQ(call(rows, "GetRows", {1}).asArray().at(1, 0), Variant{"Tanne"});
    EXPECT_EQ(call(rows, "GetRows").asArray().at(0, 0), Variant{3});
    EXPECT_EQ(call(rows, "EOF"), Variant{true});
    EXPECT_EQ(get(object(call(rows, "Clone")), "AbsolutePosition"), Variant{std::int64_t{1}});
    call(rows, "Close");
    EXPECT_EQ(get(rows, "State"), Variant{0});
}

TEST_F(LateBindingTest, RecordsetEdits)
{
    const auto rows = openLate();
    call(rows, "AddNew");
    object(get(rows, "Fields", {"NAME"}))->put("Value", "Kiefer");
    call(rows, "Update");
    EXPECT_EQ(species->rows.at(4)[1], Variant{"Kiefer"});
    object(get(rows, "Fields", {"NAME"}))->put("Value", "x");
    call(rows, "CancelUpdate");
    call(rows, "Delete");
    call(rows, "MoveFirst");
    call(rows, "Delete", {1});
    EXPECT_EQ(species->rows.size(), 2U);
}

TEST_F(LateBindingTest, FieldsCollection)
{
    const auto rows = openLate();
    const auto fields = object(get(rows, "Fields"));
    EXPECT_EQ(get(fields, "Count"), Variant{3});
    EXPECT_EQ(get(object(get(fields, "Item", {1})), "Name"), Variant{"Name"});
    EXPECT_EQ(get(object(call(fields, "Item", {"PRICE"})), "Value"), Variant{80.5});
    EXPECT_EQ(errorNumber([&] { get(fields, "Item", {"NOTHING"}); }), errors::itemNotFound);
    EXPECT_EQ(errorNumber([&] { get(fields, "Item"); }), errors::wrongArgumentCount);
    EXPECT_EQ(errorNumber([&] { get(rows, "Fields", {9}); }), errors::itemNotFound);
    EXPECT_EQ(errorNumber([&] { get(fields, "Nothing"); }), errors::noSuchMember);
}

TEST_F(LateBindingTest, FieldMembersAndProperties)
{
    const auto rows = openLate();
    const auto field = object(get(rows, "Fields", {"NAME"}));
    EXPECT_EQ(get(field, "value"), Variant{"Fichte"});
    EXPECT_EQ(get(field, "Type"), Variant{202});
    EXPECT_EQ(get(field, "DefinedSize"), Variant{40});
    EXPECT_EQ(get(field, "BASECOLUMNNAME"), Variant{"NAME"});
    EXPECT_EQ(get(field, "BaseTableName"), Variant{"SPECIES"});
    EXPECT_EQ(call(field, "Name"), Variant{"Name"});
    const auto property = object(get(field, "Properties", {"basecolumnname"}));
    EXPECT_EQ(get(property, "Value"), Variant{"NAME"});
    EXPECT_EQ(get(property, "Name"), Variant{"BASECOLUMNNAME"});
    const auto properties = object(get(field, "Properties"));
    EXPECT_EQ(get(properties, "Count"), Variant{2});
    EXPECT_EQ(get(object(get(properties, "Item", {1})), "Value"), Variant{"SPECIES"});
    EXPECT_EQ(errorNumber([&] { get(field, "Properties", {"KEYCOLUMN"}); }), errors::itemNotFound);
    EXPECT_EQ(errorNumber([&] { get(properties, "Item", {2}); }), errors::itemNotFound);
}

TEST_F(LateBindingTest, Connection)
{
    EXPECT_EQ(get(connection, "ConnectionString"), Variant{"recording"});
    connection->put("CommandTimeout", "5");
    EXPECT_EQ(get(connection, "commandtimeout"), Variant{5});
    database->affectedRows = 3;
    std::vector<Variant> arguments{"DELETE FROM SPECIES", Variant{}, -1};
    connection->call("Execute", arguments);
    EXPECT_EQ(arguments[1], Variant{std::int64_t{3}});
    call(connection, "BeginTrans");
    call(connection, "CommitTrans");
    call(connection, "BeginTrans");
    call(connection, "RollbackTrans");
    EXPECT_EQ(database->log, (Log{"execute DELETE FROM SPECIES", "begin", "commit", "begin", "rollback"}));
    EXPECT_EQ(get(connection, "State"), Variant{1});
    call(connection, "Close");
    EXPECT_EQ(get(connection, "State"), Variant{0});
}

TEST_F(LateBindingTest, CommandWithParameters)
{
    const auto command = std::make_shared<Command>();
    command->put("CommandText", "tmk_OPTIONEN_INS");
    command->put("CommandType", 4);
    command->put("ActiveConnection", connection);
    EXPECT_EQ(get(command, "CommandText"), Variant{"tmk_OPTIONEN_INS"});
    EXPECT_EQ(get(command, "CommandType"), Variant{4});
    EXPECT_EQ(object(get(command, "ActiveConnection")), connection);

    const auto parameters = object(get(command, "Parameters"));
    const Variant first = call(command, "CreateParameter", {"", 200, 1, 30, "NATWAHRUNG"});
    call(parameters, "Append", {first});
    call(parameters, "Append", {call(command, "CreateParameter", {"KIND", 20, 1, 0, 2})});
    EXPECT_EQ(get(parameters, "Count"), Variant{2});
    EXPECT_EQ(get(object(get(parameters, "Item", {"kind"})), "Value"), Variant{2});
    object(get(command, "Parameters", {1}))->put("Value", 3);
    object(first)->put("Value", "ALPHA");
    EXPECT_EQ(get(object(first), "Size"), Variant{30});
    EXPECT_EQ(get(object(first), "Type"), Variant{200});
    EXPECT_EQ(get(object(first), "Direction"), Variant{1});

    Log told;
    connection->listen([&](std::string_view statement) { told.emplace_back(statement); });
    call(command, "Execute");
    EXPECT_EQ(told, Log{"EXEC tmk_OPTIONEN_INS 'ALPHA', 3"});
    EXPECT_EQ(errorNumber([&] { get(parameters, "Item", {2}); }), errors::itemNotFound);
    EXPECT_EQ(errorNumber([&] { get(parameters, "Item", {"x"}); }), errors::itemNotFound);
    EXPECT_EQ(errorNumber([&] { call(parameters, "Append", {command}); }), errors::typeMismatch);
}

TEST_F(LateBindingTest, ParameterKeptBeyondItsCommand)
{
    auto command = std::make_shared<Command>();
    const auto parameter = object(call(command, "CreateParameter", {"P", 3, 1, 0, 5}));
    call(object(get(command, "Parameters")), "Append", {parameter});
    command->Parameters().clear();
    EXPECT_EQ(errorNumber([&] { get(parameter, "Value"); }), errors::itemNotFound);
    command.reset();
    EXPECT_EQ(errorNumber([&] { get(parameter, "Value"); }), errors::itemNotFound);
}

TEST_F(LateBindingTest, MisspeltMembersAreNamedWithTheNearestOne)
{
    const auto rows = openLate();
    const auto command = std::make_shared<Command>();
    const auto field = object(get(rows, "Fields", {0}));
    struct Case {
        ObjectRef target;
        const char* word;
        const char* nearest;
    };
    const Case table[] = {
        {connection, "Exekute", "Execute"},
        {rows, "MoveNxt", "MoveNext"},
        {rows, "Feilds", "Fields"},
        {object(get(rows, "Fields")), "Itm", "Item"},
        {field, "Valeu", "Value"},
        {object(get(field, "Properties")), "Cuont", "Count"},
        {object(get(field, "Properties", {0})), "Nmae", "Name"},
        {command, "CommandTxt", "CommandText"},
        {command, "Parameter", "Parameters"},
        {object(get(command, "Parameters")), "Apend", "Append"},
        {object(call(command, "CreateParameter")), "Directoin", "Direction"},
    };
    for (const Case& row : table) {
        // Names of their own: a binding cannot be captured.
        const ObjectRef& target = row.target;
        const char* const word = row.word;
        const char* const nearest = row.nearest;
        const std::string message = "An object of the type " + std::string{target->typeName()} +
                                    " has no property or method \"" + word + "\"; did you mean '" + nearest + "'?";
        for (const Error& error : {failureOf([&] { get(target, word); }), failureOf([&] { target->put(word, 1); }),
                                   failureOf([&] { call(target, word); })}) {
            EXPECT_EQ(error.number, errors::noSuchMember) << word;
            EXPECT_EQ(error.description, message);
        }
    }
}

TEST_F(LateBindingTest, MisspeltItemsAreNamedWithTheNearestOne)
{
    const auto rows = openLate();
    const auto named = [](auto&& action) { return failureOf(action).description; };
    EXPECT_EQ(named([&] { get(rows, "Fields", {"NAEM"}); }), "There is no column named \"NAEM\"; did you mean 'Name'?");
    EXPECT_EQ(named([&] { get(rows, "Fields", {"VOLUME"}); }), "There is no column named \"VOLUME\".");
    EXPECT_EQ(named([&] { get(object(get(rows, "Fields", {0})), "Properties", {"BASECOLUMNAME"}); }),
              "A field has no property \"BASECOLUMNAME\"; did you mean 'BASECOLUMNNAME'?");
    const auto command = std::make_shared<Command>();
    const auto parameters = object(get(command, "Parameters"));
    for (const char* name : {"", "KIND", "1"})
        call(parameters, "Append", {call(command, "CreateParameter", {name})});
    EXPECT_EQ(named([&] { get(parameters, "Item", {"KNID"}); }),
              "The command has no parameter \"KNID\"; did you mean 'KIND'?");
    EXPECT_EQ(named([&] { get(parameters, "Item", {3}); }), "The command has no parameter \"3\".");
}

TEST_F(LateBindingTest, UnknownMembersAndWrongArguments)
{
    const auto rows = openLate();
    const auto command = std::make_shared<Command>();
    const auto field = object(get(rows, "Fields", {0}));
    for (const ObjectRef& target : {ObjectRef{rows}, ObjectRef{connection}, ObjectRef{command}, field}) {
        EXPECT_EQ(errorNumber([&] { get(target, "Nothing"); }), errors::noSuchMember) << target->typeName();
        EXPECT_EQ(errorNumber([&] { target->put("Nothing", 1); }), errors::noSuchMember) << target->typeName();
        EXPECT_EQ(errorNumber([&] { call(target, "Nothing"); }), errors::noSuchMember) << target->typeName();
    }
    EXPECT_EQ(errorNumber([&] { rows->put("EOF", true); }), errors::noSuchMember);
    EXPECT_EQ(errorNumber([&] { call(rows, "MoveNext", {1}); }), errors::wrongArgumentCount);
    EXPECT_EQ(errorNumber([&] { call(rows, "Open", {query}); }), errors::wrongArgumentCount);
    EXPECT_EQ(errorNumber([&] { call(connection, "Execute"); }), errors::wrongArgumentCount);
    const auto fresh = std::make_shared<Recordset>();
    EXPECT_EQ(errorNumber([&] { call(fresh, "Open", {query, Variant{}}); }), errors::objectNotSet);
    EXPECT_EQ(errorNumber([&] { call(fresh, "Open", {query, rows}); }), errors::typeMismatch);
    EXPECT_EQ(errorNumber([&] { command->put("ActiveConnection", rows); }), errors::typeMismatch);
    EXPECT_EQ(errorNumber([&] { call(command, "Execute"); }), errors::connectionClosed);
}

TEST_F(LateBindingTest, OpenLeavesTypesToTheirDefaults)
{
    const auto rows = std::make_shared<Recordset>();
    call(rows, "Open", {query, connection});
    EXPECT_EQ(errorNumber([&] { call(rows, "MovePrevious"); }), errors::badCursorOperation);
    EXPECT_EQ(errorNumber([&] { call(rows, "AddNew"); }), errors::readOnlyRecordset);
}

} // namespace tamarok::ado
