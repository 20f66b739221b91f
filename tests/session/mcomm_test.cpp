#include <gtest/gtest.h>

#include "support/errors.h"
#include "support/surroundings.h"

#include "tamarok/c_version.h"
#include "tamarok/mcomm.h"

namespace tamarok {
namespace {

TEST(ShowMessage, EmptyTitleIsTheProductsName)
{
    const test::Surroundings with;
    with.messages->answer = 6;
    EXPECT_EQ(mComm::ShowMessage("text", 48), 6);
    EXPECT_EQ(mComm::ShowMessage("other", 64, "Title", "help.chm", 3), 6);
    EXPECT_EQ(with.messages->shown, (std::vector<test::ShownMessage>{{"text", 48, "Tamarok"}, {"other", 64, "Title"}}));
}

TEST(ShowMessage, WithoutABoxTheCallFails)
{
    Platform silent;
    silent.messageBox = nullptr;
    const PlatformScope scope{std::move(silent)};
    EXPECT_EQ(test::errorNumber([&] { mComm::ShowMessage("text", 0); }), errors::objectNotSet);
}

TEST(Version, IsMajorAndMinor)
{
    EXPECT_EQ(C_Version{}.DLL_Version(), "2.0");
}

} // namespace
} // namespace tamarok
