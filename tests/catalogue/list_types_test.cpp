#include <algorithm>
#include <gtest/gtest.h>
#include <vector>

#include "list_types.h"

#include "tamarok/error.h"
#include "tamarok/list_catalogue.h"

namespace tamarok::catalogue {
namespace {

TEST(ListTypes, AreFortyOneAndFoundWithoutRegardToCase)
{
    EXPECT_EQ(listTypes().size(), 41U);
    EXPECT_EQ(listTypeKeys().size(), 41U);
    for (const ListType* type : listTypes()) {
        EXPECT_EQ(findListType(type->description().key), type);
        EXPECT_EQ(std::ranges::count(listTypeKeys(), type->description().key), 1);
    }
    EXPECT_EQ(findListType("bbf_Plann")->description().base, std::string_view{"ARBEITSAUFTRAG_KOPF_PLANN"});
    EXPECT_EQ(findListType("artıkel"), findListType("ARTIKEL")) << "a letter whose upper case is ASCII";
    for (const char* key : {"", "LOGS", "LO", " LOG", "BBF_", "LOG ", "ÄCL", "SAPAGRUPPESAPAGRUPPE", "LOG\x01"}) {
        EXPECT_EQ(findListType(key), nullptr) << key;
    }
}

TEST(ListTypes, DescribeTheirRows)
{
    EXPECT_EQ(&logList(), findListType("LOG"));
    EXPECT_EQ(logList().description().columns.size(), 580U);
    EXPECT_EQ(deductionList().description().columns.size(), 22U);
    for (const ListType* type : listTypes()) {
        for (const Column& column : type->description().columns) {
            EXPECT_EQ(type->column(column.id), &column) << type->description().key << " " << column.id;
        }
    }
}

TEST(ListTypes, FindNothingOutsideTheirIds)
{
    for (const int number : {-32768, -1, 0, 485, 1042, 32767}) {
        const auto id = static_cast<std::int16_t>(number);
        EXPECT_EQ(logList().column(id), nullptr) << id;
        EXPECT_EQ(logList().join(id), nullptr) << id;
        EXPECT_EQ(logList().selectExpression(id), nullptr) << id;
    }
    EXPECT_EQ(findListType("BBKLR")->column(0), nullptr);
    EXPECT_EQ(findListType("BBKLR")->join(1), nullptr);
}

std::vector<int> idsOf(std::string_view list)
{
    std::vector<int> ids;
    forEachId(list, [&](std::int16_t id) { ids.push_back(id); });
    return ids;
}

TEST(IdLists, HoldIdsAndRanges)
{
    EXPECT_EQ(idsOf(""), std::vector<int>{});
    EXPECT_EQ(idsOf("5, 182, 289-291"), (std::vector<int>{5, 182, 289, 290, 291}));
    EXPECT_EQ(idsOf("32766-32767"), (std::vector<int>{32766, 32767}));
    for (const char* list : {"x", "5,6", "5, ", "5-", "-5", "32768", "5 6"}) {
        EXPECT_THROW(idsOf(list), Error) << list;
    }
}

} // namespace
} // namespace tamarok::catalogue
