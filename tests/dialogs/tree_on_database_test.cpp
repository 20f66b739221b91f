#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "support/platforms.h"
#include "tamarok_database/reference_database.h"
#include "tamarok_embedded/connect.h"
#include "tamarok_loc/loc_service.h"

#include "tamarok/convert.h"
#include "tamarok/grid_help.h"
#include "tamarok/scripted_windows.h"

// The tree of budget titles on the sample database, by scripts.

namespace tamarok::dialogs {
namespace {

using ::testing::ElementsAre;

class RecordingMessages final : public MessageBox {
public:
    std::int16_t show(std::string_view text, std::int32_t, std::string_view) override
    {
        shown.emplace_back(text);
        return 1;
    }
    std::vector<std::string> shown;
};

class TreeOnDatabase : public ::testing::Test {
protected:
    static void SetUpTestSuite()
    {
        sample_ = embedded::connectInMemory();
        database::createReferenceDatabase(*sample_, {.logs = 0});
    }
    static void TearDownTestSuite() { sample_.reset(); }

    TreeOnDatabase() : scope_{makePlatform()}
    {
        session_.db_ADO = sample_;
        session_.strLanguage = "ENGLISH";
    }

    std::string run(std::string_view mode, std::string_view defaultKey = {})
    {
        return Grid_Help{}.TreeviewHelp(session_, mode, "Budget", defaultKey);
    }

    void prepare(DialogScript script) { windows_->scripts().add(std::move(script)); }
    static DialogStep read(std::string name) { return {StepKind::Read, std::move(name), {}, {}, {}}; }
    static DialogStep select(std::string key) { return {StepKind::SelectNode, std::move(key), {}, {}, {}}; }
    static DialogStep ok() { return {StepKind::Ok, {}, {}, {}, {}}; }

    std::vector<std::string> texts()
    {
        std::vector<std::string> read;
        for (const Variant& value : windows_->scripts().takeReport().read)
            read.push_back(value.isObject() ? "none" : convert::toText(value));
        return read;
    }

    std::shared_ptr<RecordingMessages> messages_ = std::make_shared<RecordingMessages>();

private:
    Platform makePlatform()
    {
        Platform platform = test_platform();
        platform.messageBox = messages_;
        platform.dialogWindows = windows_;
        platform.makeLocService = loc::makeLocService;
        return platform;
    }
    static Platform test_platform() { return tamarok::test::platformOf("en-GB"); }

    static inline ado::ConnectionRef sample_;
    TmkVar session_;
    std::shared_ptr<ScriptedWindows> windows_ = std::make_shared<ScriptedWindows>();
    PlatformScope scope_;
};

TEST_F(TreeOnDatabase, ShowsTitlesAndLevelsOfAChapter)
{
    prepare({read("Caption"), read("TreeView1.Nodes(1).Text"), read("TreeView1.Nodes(\"|1\").Text"),
             read("TreeView1.Nodes(\"|1|1|1|1|1\").Text"), read("TreeView1.Nodes(\"|1|1|1|1|1\").Parent.Key"),
             read("TreeView1.Nodes(1).Expanded"), read("TreeView1.SelectedItem"), read("TreeView1.Indentation")});
    EXPECT_EQ(run("EBENE1"), "");
    EXPECT_THAT(texts(), ElementsAre("Budget", "Budget", "1001/111 Holzerlöse", "1111 Holzernte", "|1|1|1|1", "True",
                                     "none", "300"));
}

TEST_F(TreeOnDatabase, ALeafIsTakenAfterABranchWasRefused)
{
    prepare({select("|1|1"), ok(), read("ActiveControl.Name"), select("|1|1|1|1|2"), ok()});
    EXPECT_EQ(run("EBENE1"), "|1|1|1|1|2");
    EXPECT_THAT(messages_->shown, ElementsAre("The value entered is not valid."));
    EXPECT_THAT(texts(), ElementsAre("TreeView1"));
}

TEST_F(TreeOnDatabase, TheDefaultIsSelectedWithItsParentsExpanded)
{
    prepare({read("TreeView1.SelectedItem.Key"), read("TreeView1.Nodes(\"|1|1|1|1\").Expanded"), ok()});
    EXPECT_EQ(run("EBENE1", "|1|1|1|1|1"), "|1|1|1|1|1");
    EXPECT_THAT(texts(), ElementsAre("|1|1|1|1|1", "True"));
}

TEST_F(TreeOnDatabase, RowsWithADisabledLevelFallOutInFull)
{
    // Title 5 has one level, which is disabled: the title does not appear either. Title 6 has none.
    prepare({read("TreeView1.Nodes.Count"), read("TreeView1.Nodes(2).Key"), select("|6"), ok()});
    EXPECT_EQ(run("EBENE3"), "|6");
    EXPECT_THAT(texts(), ElementsAre("2", "|6"));
}

TEST_F(TreeOnDatabase, AnUnknownChapterHasAnEmptyTree)
{
    prepare({read("TreeView1.Nodes.Count"), ok()});
    EXPECT_EQ(run("EBENE999", "|1"), "");
    EXPECT_THAT(texts(), ElementsAre("0"));
}

} // namespace
} // namespace tamarok::dialogs
