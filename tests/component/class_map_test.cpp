#include <algorithm>
#include <set>
#include <string>

#include "component/interface_slots.h"
#include "component/probe.h"
#include "support/errors.h"

#include "tamarok/comm_csel.h"
#include "tamarok/component.h"
#include "tamarok/error.h"
#include "tamarok/mcomm.h"

namespace tamarok::component {
namespace {

const test::InterfaceSlots* slotsOf(std::string_view className)
{
    const auto found = std::ranges::find(test::interfaceSlots(), className, &test::InterfaceSlots::className);
    return found == test::interfaceSlots().end() ? nullptr : &*found;
}

TEST(ClassMap, EveryOperationStandsInItsSlot)
{
    ASSERT_FALSE(classes().empty());
    for (const ClassInfo& classInfo : classes()) {
        const test::InterfaceSlots* slots = slotsOf(classInfo.name);
        ASSERT_NE(slots, nullptr) << classInfo.name;
        for (const OperationInfo& operation : classInfo.operations) {
            const auto index = static_cast<std::size_t>(operation.slot) - 1;
            ASSERT_LT(index, slots->operations.size()) << operation.name;
            EXPECT_EQ(operation.name, slots->operations[index]) << classInfo.name;
        }
    }
}

TEST(ClassMap, SlotsAscendWithinAClass)
{
    for (const ClassInfo& classInfo : classes()) {
        EXPECT_TRUE(std::ranges::is_sorted(classInfo.operations, std::ranges::less_equal{}, &OperationInfo::slot))
            << classInfo.name;
        EXPECT_EQ(std::ranges::adjacent_find(classInfo.operations, {}, &OperationInfo::slot),
                  classInfo.operations.end())
            << classInfo.name;
    }
}

TEST(ClassMap, ClassesStandInTheOrderOfTheInterface)
{
    std::size_t at = 0;
    const auto& slots = test::interfaceSlots();
    for (const ClassInfo& classInfo : classes()) {
        while (at < slots.size() && slots[at].className != classInfo.name)
            ++at;
        ASSERT_LT(at, slots.size()) << classInfo.name << " stands out of order";
    }
}

TEST(ClassMap, HoldsEveryOperationOfTheInterfaceButThoseNotBuilt)
{
    std::size_t built = 0;
    for (const test::InterfaceSlots& slots : test::interfaceSlots()) {
        const ClassInfo* classInfo = findClass(slots.className);
        std::set<std::string_view> missing;
        for (const std::string_view name : slots.operations) {
            const bool known = classInfo != nullptr && findOperation(*classInfo, name, 0) != nullptr;
            if (!known) missing.insert(name);
            built += known ? 1U : 0U;
        }
        EXPECT_EQ(missing, std::set(slots.notBuilt.begin(), slots.notBuilt.end())) << slots.className;
    }
    EXPECT_EQ(built, 152U);
}

TEST(ClassMap, ANameIsTakenFromTheMemberPointer)
{
    static_assert(memberName<&Comm_CSel::GetColumn>() == "GetColumn");
    static_assert(memberName<&mComm::ShowMessage>() == "ShowMessage");
    static_assert(memberName<&test::Probe::twice>() == "twice");
    // Overloads, as a property has them, share their name.
    static_assert(memberName<static_cast<std::string (test::Probe::*)() const>(&test::Probe::caption)>() == "caption");
}

TEST(ClassMap, EveryEntryIsDescribed)
{
    for (const ClassInfo& classInfo : classes()) {
        EXPECT_FALSE(classInfo.help.empty()) << classInfo.name;
        EXPECT_NE(classInfo.make, nullptr) << classInfo.name;
        for (const OperationInfo& operation : classInfo.operations) {
            EXPECT_TRUE(operation.help.ends_with(".")) << operation.name;
            EXPECT_NE(operation.invoker, nullptr) << operation.name;
            for (const ParameterInfo& parameter : operation.parameters()) {
                EXPECT_FALSE(parameter.name.empty()) << operation.name;
                EXPECT_NE(parameter.type, ValueType::None) << operation.name << " " << parameter.name;
            }
        }
    }
}

TEST(ClassMap, NamesCompareWithoutCase)
{
    const ClassInfo* columns = findClass("comm_csel");
    ASSERT_NE(columns, nullptr);
    EXPECT_EQ(columns->name, "Comm_CSel");
    const OperationInfo* operation = findOperation(*columns, "GETCOLUMN", 3);
    ASSERT_NE(operation, nullptr);
    EXPECT_EQ(operation->name, "GetColumn");
    EXPECT_EQ(findClass("Comm"), nullptr);
    EXPECT_EQ(findOperation(*columns, "GetColum", 3), nullptr);
}

TEST(ClassMap, AMissingNameIsAnErrorThatNamesIt)
{
    tamarok::test::expectError(429, "Comm_Nothing", [&] { requireClass("Comm_Nothing"); });
    const Error error = tamarok::test::failureOf([] { requireOperation(requireClass("Comm_CSel"), "GetNothing", 0); });
    EXPECT_EQ(error.number, errors::noSuchMember);
    EXPECT_NE(error.description.find("Comm_CSel"), std::string::npos);
    EXPECT_NE(error.description.find("GetNothing"), std::string::npos);
}

TEST(ClassMap, DescribesParametersWithTypeDirectionAndOptionality)
{
    const OperationInfo& select = requireOperation(requireClass("Comm_CSel"), "CorrectStrSelect", 9);
    ASSERT_EQ(select.parameters().size(), 9U);
    EXPECT_EQ(select.parameters()[0].name, "Typ");
    EXPECT_EQ(select.parameters()[0].type, ValueType::String);
    EXPECT_FALSE(select.parameters()[0].byReference);
    EXPECT_EQ(select.parameters()[1].type, ValueType::IntegerArray);
    EXPECT_TRUE(select.parameters()[1].byReference);
    EXPECT_EQ(select.parameters()[2].type, ValueType::String);
    EXPECT_TRUE(select.parameters()[2].byReference);
    EXPECT_EQ(select.parameters()[5].type, ValueType::Record);
    EXPECT_TRUE(select.parameters()[5].byReference);
    EXPECT_EQ(select.parameters()[8].type, ValueType::Boolean);
    EXPECT_EQ(select.result, ValueType::String);

    const OperationInfo& box = requireOperation(requireClass("mComm"), "ShowMessage", 2);
    EXPECT_FALSE(box.parameters()[1].optional);
    EXPECT_TRUE(box.parameters()[2].optional);
    EXPECT_EQ(box.result, ValueType::Integer);

    const OperationInfo& split = requireOperation(requireClass("Comm_CSel"), "SplitClause", 3);
    EXPECT_EQ(split.result, ValueType::None);
}

TEST(ClassMap, TypeNamesAreThoseOfTheInterface)
{
    EXPECT_EQ(name(ValueType::Boolean), "Boolean");
    EXPECT_EQ(name(ValueType::IntegerArray), "Integer()");
    EXPECT_EQ(name(ValueType::Connection), "ADODB.Connection");
    EXPECT_EQ(name(ValueType::Command), "ADODB.Command");
    EXPECT_EQ(name(ValueType::Record), "TmkVar");
    EXPECT_EQ(name(MemberKind::PropertyPut), "put");
}

} // namespace
} // namespace tamarok::component
