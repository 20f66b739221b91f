#include <array>
#include <gtest/gtest.h>
#include <random>
#include <string>
#include <string_view>

#include "catalogue/group_list.h"
#include "support/errors.h"
#include "support/surroundings.h"

#include "tamarok/comm_csel.h"
#include "tamarok/error.h"

// The list that grows in place gives what the operation gives, text for text and message for message.

namespace tamarok {
namespace {

constexpr std::array<std::string_view, 22> expressions{
    "LOGS.STK",
    "logs.stk",
    " LOGS.STK ",
    "ISNULL(A.X,0)",
    "isnull(a.x, 0)",
    "A.X, B.Y",
    "A.X,",
    ",B.Y",
    "CASE WHEN A.X=1 THEN 'Ja' ELSE 'Nein' END",
    "'a,b'",
    "'('",
    "F(A",
    "A)",
    ")(",
    "[A].[X]",
    "WARENKATALOG_TEMP.[PLAN]",
    "WARENKATALOG_TEMP.PLANNUMMER",
    "ROW_NUMBER() OVER(ORDER BY NN_POSITIONEN.NN_ID ASC)",
    "FROM A",
    "from",
    "\xC3\xA4.X",
    "",
};

TEST(GroupLists, GiveTheTextAndMessagesOfTheOperation)
{
    std::mt19937 random{11};
    std::uniform_int_distribution<std::size_t> pick{0, expressions.size() - 1};
    for (int run = 0; run < 3000; ++run) {
        const test::Surroundings with;
        catalogue::GroupList grown;
        std::string built;
        std::string added;
        for (int step = 0; step < 6; ++step) {
            const std::string_view expression = expressions[pick(random)];
            added.append(" | ").append(expression);
            const std::size_t shown = with.messages->shown.size();
            built = Comm_CSel{}.InsertToStr2(built, expression, "R");
            const std::size_t expected = with.messages->shown.size() - shown;
            grown.add(expression);
            ASSERT_EQ(grown.text(), built) << added;
            ASSERT_EQ(with.messages->shown.size(), shown + 2 * expected) << added;
        }
    }
}

TEST(GroupLists, RefuseAListBeyondTheCountersRange)
{
    catalogue::GroupList list;
    list.add(std::string(32767, 'A'));
    list.add("B");
    EXPECT_EQ(test::errorNumber([&] { list.add("C"); }), errors::overflow);
}

} // namespace
} // namespace tamarok
