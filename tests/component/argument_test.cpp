#include <optional>
#include <vector>

#include "component/probe.h"
#include "support/errors.h"

#include "tamarok/error.h"
#include "tamarok/platform.h"

namespace tamarok::component {
namespace {

using test::probe;

struct Coercion {
    const char* operation;
    Variant given;
    std::optional<Variant> expected; ///< nothing where it fails
    std::int32_t error = 0;
};

std::vector<Coercion> coercions()
{
    return {
        {"boolean", true, Variant{true}},
        {"boolean", std::int32_t{0}, Variant{false}},
        {"boolean", std::int32_t{5}, Variant{true}},
        {"boolean", "Wahr", Variant{true}},
        {"boolean", "True", Variant{true}},
        {"boolean", "maybe", {}, errors::typeMismatch},
        {"boolean", Null{}, {}, errors::invalidUseOfNull},
        {"integer", std::int32_t{32767}, Variant{std::int16_t{32767}}},
        {"integer", std::int32_t{32768}, {}, errors::overflow},
        {"integer", std::int32_t{-32768}, Variant{std::int16_t{-32768}}},
        {"integer", std::int32_t{-32769}, {}, errors::overflow},
        {"integer", "12", Variant{std::int16_t{12}}},
        {"integer", "1,5", Variant{std::int16_t{2}}},
        {"integer", 2.5, Variant{std::int16_t{2}}},
        {"integer", "twelve", {}, errors::typeMismatch},
        {"integer", Empty{}, Variant{std::int16_t{0}}},
        {"integer", Null{}, {}, errors::invalidUseOfNull},
        {"integer", true, Variant{std::int16_t{-1}}},
        {"number", std::int64_t{2147483647}, Variant{std::int32_t{2147483647}}},
        {"number", std::int64_t{2147483648}, {}, errors::overflow},
        {"number", "1.234", Variant{std::int32_t{1234}}},
        {"real", "1,5", Variant{1.5}},
        {"real", std::int32_t{3}, Variant{3.0}},
        {"real", "x", {}, errors::typeMismatch},
        {"date", "05.03.2024", Variant{makeDate(2024, 3, 5)}},
        {"date", 45356.0, Variant{makeDate(2024, 3, 5)}},
        {"date", "no date", {}, errors::typeMismatch},
        {"text", 1.5, Variant{"1,5"}},
        {"text", std::int32_t{36}, Variant{"36"}},
        {"text", true, Variant{"Wahr"}},
        {"text", makeDate(2024, 3, 5), Variant{"05.03.2024"}},
        {"text", Empty{}, Variant{""}},
        {"text", Null{}, {}, errors::invalidUseOfNull},
        {"text", VariantArray{{Variant{1.0}}}, {}, errors::typeMismatch},
        {"any", Null{}, Variant{Null{}}},
        {"any", Empty{}, Variant{Empty{}}},
        {"any", std::int16_t{4}, Variant{std::int16_t{4}}},
        {"count", VariantArray{{Variant{std::int32_t{1}}, Variant{"2"}, Variant{2.5}}}, Variant{std::int32_t{3}}},
        {"count", VariantArray{}, Variant{std::int32_t{0}}},
        {"count", VariantArray{{Variant{std::int32_t{40000}}}}, {}, errors::overflow},
        {"count", std::int32_t{1}, {}, errors::typeMismatch},
        {"typeOf", ObjectRef{}, {}, errors::objectNotSet},
        {"typeOf", std::make_shared<ado::Recordset>(), Variant{"Recordset"}},
        {"typeOf", "a text", {}, errors::typeMismatch},
        {"isConnected", ObjectRef{}, Variant{false}},
        {"isConnected", std::make_shared<ado::Recordset>(), {}, errors::typeMismatch},
        {"isConnected", "a text", {}, errors::typeMismatch},
        {"customer", ObjectRef{}, {}, errors::objectNotSet},
        {"customer", std::make_shared<ado::Recordset>(), {}, errors::typeMismatch},
        {"customer", Null{}, {}, errors::typeMismatch},
        {"twice", "21", Variant{std::int32_t{42}}},
    };
}

class Arguments : public ::testing::Test {
protected:
    static Platform german()
    {
        Platform platform;
        platform.regional = Regional::named("de-AT");
        return platform;
    }
    PlatformScope scope_{german()};
};

TEST_F(Arguments, ConvertToTheDeclaredType)
{
    for (const Coercion& row : coercions()) {
        SCOPED_TRACE(std::string{row.operation} + " of " + std::string{name(row.given.kind())});
        try {
            const Variant result = probe(row.operation, row.given);
            ASSERT_TRUE(row.expected) << "was not refused";
            EXPECT_EQ(result.kind(), row.expected->kind());
            EXPECT_TRUE(result == *row.expected);
        } catch (const Error& error) {
            EXPECT_FALSE(row.expected) << error.what();
            EXPECT_EQ(error.number, row.error) << error.what();
        }
    }
}

TEST_F(Arguments, AFailedConversionNamesParameterAndOperation)
{
    const Error error = tamarok::test::failureOf([] { probe("integer", Variant{std::int32_t{70000}}); });
    EXPECT_EQ(error.source, "Probe.integer");
    EXPECT_NE(error.description.find("value"), std::string::npos) << error.description;
}

struct Change {
    const char* operation;
    Variant before;
    Variant after;
};

TEST_F(Arguments, ByReferenceComeBackInTheDeclaredType)
{
    const std::vector<Change> changes{
        {"changeBoolean", false, true},
        {"changeBoolean", std::int32_t{3}, false},
        {"changeInteger", std::int32_t{4}, std::int16_t{5}},
        {"changeInteger", "4", std::int16_t{5}},
        {"changeLong", std::int16_t{4}, std::int32_t{5}},
        {"changeDouble", std::int32_t{1}, 1.5},
        {"changeDate", "05.03.2024", makeDate(2024, 3, 6)},
        {"changeText", std::int32_t{12}, "12!"},
        {"changeAny", Null{}, "changed"},
    };
    for (const Change& row : changes) {
        SCOPED_TRACE(row.operation);
        Variant value = row.before;
        probe(row.operation, {&value, 1});
        EXPECT_EQ(value.kind(), row.after.kind());
        EXPECT_TRUE(value == row.after);
    }
}

TEST_F(Arguments, ByValueStayAsTheyWere)
{
    Variant value{"12"};
    EXPECT_TRUE(probe("integer", {&value, 1}) == Variant{std::int16_t{12}});
    EXPECT_TRUE(value == Variant{"12"});
}

TEST_F(Arguments, AnOperationSetsTheLowerBoundOfItsArray)
{
    for (const std::int32_t lower : {0, 1, 7}) {
        std::vector<Variant> args{VariantArray({Variant{std::int32_t{5}}}, lower), Variant{"nowhere"},
                                  Variant{"p.ini"}};
        const PlatformScope scope{Platform{}};
        Platform::current().files = nullptr; // the array is set before a file is opened
        EXPECT_THROW(invoke("Comm_Act", "GetPhotoesFormats", args), Error);
        EXPECT_TRUE(args[0] == Variant{VariantArray({Variant{"jpg"}, Variant{"gif"}, Variant{"bmp"}}, 1)});
    }
    std::vector<Variant> args{Variant{"no array"}, Variant{"nowhere"}, Variant{"p.ini"}};
    tamarok::test::expectError(errors::typeMismatch, "argument s",
                               [&] { invoke("Comm_Act", "GetPhotoesFormats", args); });
}

TEST_F(Arguments, AFailedOperationHandsBackWhatItHadWritten)
{
    Variant value{"text"};
    EXPECT_THROW(probe("changeThenFail", {&value, 1}), Error);
    EXPECT_TRUE(value == Variant{"text!"});

    std::vector<Variant> args{Variant{"1"}, VariantArray({Variant{"given"}}, 1), Variant{"third"}};
    EXPECT_THROW(probe("changeOneThenFail", args), Error);
    EXPECT_TRUE(args[0] == Variant{std::int16_t{7}});
    EXPECT_TRUE(args[1] == Variant{VariantArray({Variant{"given"}, Variant{"added"}}, 1)}) << "with its lower bound";
    EXPECT_TRUE(args[2] == Variant{"third"});
}

TEST_F(Arguments, AnArgumentThatDoesNotConvertLeavesAllAsGiven)
{
    std::vector<Variant> args{Variant{"1"}, VariantArray{{Variant{"given"}}}, Variant{Null{}}};
    EXPECT_THROW(probe("changeOneThenFail", args), Error);
    EXPECT_TRUE(args[0] == Variant{"1"});
    EXPECT_TRUE(args[2] == Variant{Null{}});
}

TEST_F(Arguments, OnlyTheTableStatesWhatIsByReference)
{
    const OperationInfo& operation = requireOperation(test::probeClass, "readByReference", 2);
    EXPECT_TRUE(operation.parameters()[0].byReference);
    EXPECT_FALSE(operation.parameters()[1].byReference);
}

TEST_F(Arguments, TheRecordIsPassedByReference)
{
    TmkVar session;
    const ObjectRef record = makeRecordObject(session);
    session.strCustomer = "BB";
    EXPECT_TRUE(probe("customer", Variant{record}) == Variant{"BB"});
}

} // namespace
} // namespace tamarok::component
