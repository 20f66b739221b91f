#include <vector>

#include "component/probe.h"
#include "support/errors.h"

#include "tamarok/error.h"
#include "tamarok/platform.h"

namespace tamarok::component {
namespace {

using test::probe;

std::int32_t probeError(std::string_view name, std::vector<Variant> args)
{
    return tamarok::test::errorNumber([&] { probe(name, args); });
}

TEST(Invoke, TooManyAndTooFewArgumentsAreError450)
{
    EXPECT_EQ(probeError("text", {}), errors::wrongArgumentCount);
    EXPECT_EQ(probeError("text", {Variant{"a"}, Variant{"b"}}), errors::wrongArgumentCount);
    EXPECT_EQ(probeError("optional", {}), errors::wrongArgumentCount);
    EXPECT_EQ(probeError("optional", {Variant{"a"}, Variant{"b"}, Variant{true}, Variant{1.0}}),
              errors::wrongArgumentCount);
    EXPECT_EQ(probeError("optional", {Variant{"a"}}), 0);
}

TEST(Invoke, AMissingArgumentThatIsNotOptionalIsError449)
{
    EXPECT_EQ(probeError("optional", {missingArgument()}), 449);
    EXPECT_EQ(probeError("text", {missingArgument()}), 449);
}

TEST(Invoke, OptionalArgumentsCountAsTheTypesZero)
{
    std::vector<Variant> one{Variant{"a"}};
    EXPECT_TRUE(probe("optional", one) == Variant{"a||false"});
    std::vector<Variant> gap{Variant{"a"}, missingArgument(), Variant{true}};
    EXPECT_TRUE(probe("optional", gap) == Variant{"a||true"});
    EXPECT_TRUE(isMissing(gap[1]));
    EXPECT_TRUE(probe("optionalAny", std::span<Variant>{}) == Variant{Empty{}});
    EXPECT_TRUE(probe("optionalAny", missingArgument()) == Variant{Empty{}});
}

TEST(Invoke, ALeftOutReferenceHasNoVariableToChange)
{
    Variant missing = missingArgument();
    probe("optionalChange", {&missing, 1});
    EXPECT_TRUE(isMissing(missing));
    Variant given{std::int16_t{1}};
    probe("optionalChange", {&given, 1});
    EXPECT_TRUE(given == Variant{std::int16_t{7}});
}

TEST(Invoke, OnlyTheMarkIsMissing)
{
    EXPECT_TRUE(isMissing(missingArgument()));
    EXPECT_FALSE(isMissing(Variant{}));
    EXPECT_FALSE(isMissing(Variant{ObjectRef{}}));
}

TEST(Invoke, AnOperationWithoutResultGivesEmpty)
{
    EXPECT_TRUE(probe("changeText", Variant{"a"}).isEmpty());
}

TEST(Invoke, AnErrorWithoutSourceGetsClassAndOperation)
{
    const Error error = tamarok::test::failureOf([] { probe("changeThenFail", Variant{"a"}); });
    EXPECT_EQ(error.number, errors::invalidArgument);
    EXPECT_EQ(error.source, "Probe.changeThenFail");
    EXPECT_EQ(error.description, "refused");
}

TEST(Invoke, ByNameOnAFreshInstance)
{
    EXPECT_TRUE(invoke("C_Version", "DLL_Version", {}) == Variant{"2.0"});
    std::vector<Variant> args{Variant{"A"}, Variant{"B"}};
    EXPECT_TRUE(invoke("comm_csel", "inserttostr", args) == Variant{"A, B"});
}

TEST(Invoke, ChangesByReferenceArguments)
{
    std::vector<Variant> args{Variant{"FROM LOGS WHERE A IN (SELECT B FROM C WHERE D=1)"}, Variant{}, Variant{}};
    EXPECT_TRUE(invoke("Comm_CSel", "SplitClause", args).isEmpty());
    EXPECT_TRUE(args[1] == Variant{"LOGS"});
    EXPECT_TRUE(args[2] == Variant{"A IN (SELECT B FROM C WHERE D=1)"});
}

TEST(Invoke, ComposesASelectListFromAnArrayOfIds)
{
    TmkVar session;
    const Variant ids{VariantArray{{Variant{std::int32_t{36}}, Variant{std::int32_t{0}}}}};
    std::vector<Variant> args{Variant{"LOG"}, ids,          Variant{""},
                              Variant{"0"},   Variant{"R"}, Variant{makeRecordObject(session)},
                              Variant{""},    Variant{""},  Variant{false}};
    EXPECT_TRUE(invoke("Comm_CSel", "CorrectStrSelect", args) == Variant{"LOGS.KUBATUR, 0"});
    EXPECT_TRUE(args[2] == Variant{"LOGS.KUBATUR"});
    EXPECT_TRUE(args[1] == ids);
}

class CountingBox final : public MessageBox {
public:
    std::int16_t show(std::string_view text, std::int32_t flags, std::string_view title) override
    {
        shown = std::string{text} + "|" + std::to_string(flags) + "|" + std::string{title};
        return 6;
    }
    std::string shown;
};

TEST(Invoke, ModuleFunctionsAndOptionalTitle)
{
    Platform platform;
    const auto box = std::make_shared<CountingBox>();
    platform.messageBox = box;
    const PlatformScope scope{platform};
    std::vector<Variant> args{Variant{"Really?"}, Variant{std::int32_t{4}}};
    EXPECT_TRUE(invoke("mComm", "ShowMessage", args) == Variant{std::int16_t{6}});
    EXPECT_EQ(box->shown, "Really?|4|Tamarok");
}

TEST(Invoke, ALanguageServiceThatIsNotInstalledIsError91)
{
    const PlatformScope scope{Platform{}};
    TmkVar session;
    std::vector<Variant> args{Variant{std::int32_t{5}}, Variant{makeRecordObject(session)}};
    EXPECT_EQ(tamarok::test::errorNumber([&] { invoke("LocService", "GetText", args); }), errors::objectNotSet);
}

TEST(Invoke, APropertyIsChosenByTheNumberOfArguments)
{
    const OperationInfo& put = requireOperation(test::probeClass, "Caption", 1);
    const OperationInfo& get = requireOperation(test::probeClass, "Caption", 0);
    EXPECT_EQ(put.kind, MemberKind::PropertyPut);
    EXPECT_EQ(get.kind, MemberKind::PropertyGet);
    const ObjectRef instance = makeInstance(test::probeClass);
    Variant text{"title"};
    EXPECT_TRUE(invoke(test::probeClass, put, *instance, {&text, 1}).isEmpty());
    EXPECT_TRUE(invoke(test::probeClass, get, *instance, {}) == Variant{"title"});
}

TEST(Invoke, AnInstanceOfAnotherClassIsError13)
{
    const ObjectRef other = makeInstance("Comm_CSel");
    Variant text{"a"};
    tamarok::test::expectError(errors::typeMismatch, "Comm_CSel", [&] {
        invoke(test::probeClass, requireOperation(test::probeClass, "text", 1), *other, {&text, 1});
    });
}

} // namespace
} // namespace tamarok::component
