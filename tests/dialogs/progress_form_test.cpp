#include <gmock/gmock.h>

#include "progress_form.h"
#include "recording_window.h"
#include "support/errors.h"
#include "support/platforms.h"

#include "tamarok/comm_forms.h"
#include "tamarok/platform.h"
#include "tamarok/scripted_windows.h"

namespace tamarok::dialogs {
namespace {

using tamarok::test::errorNumber;
using tamarok::test::expectError;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

/// Writes its verbs into a record that outlives it.
class RecordingProgress final : public test::RecordingVerbs<ProgressWindow> {
public:
    RecordingProgress(std::vector<std::string>& record, bool canBeShown) : record_{record}, canBeShown_{canBeShown} {}

    using test::RecordingVerbs<ProgressWindow>::text;
    void text(std::string_view control, std::string_view text) override
    {
        record_.push_back(std::string{control} + " " + std::string{text});
    }
    void show() override
    {
        record_.emplace_back("show");
        if (!canBeShown_) throw Error{401, "Cannot show this form while a modal form is displayed."};
    }
    void maximum(float maximum) override { record_.push_back("maximum " + std::to_string(maximum)); }
    void value(float value) override { record_.push_back("value " + std::to_string(value)); }
    void repaint() override { record_.emplace_back("repaint"); }
    void close() override { record_.emplace_back("close"); }

private:
    std::vector<std::string>& record_;
    bool canBeShown_;
};

class ProgressWindows final : public ScriptedWindows {
public:
    std::unique_ptr<ProgressWindow> makeProgress() override
    {
        record.emplace_back("make");
        return std::make_unique<RecordingProgress>(record, canBeShown);
    }

    std::vector<std::string> record;
    bool canBeShown = true;
};

class ProgressFormTest : public ::testing::Test {
protected:
    std::vector<std::string> taken() const { return std::exchange(windows->record, {}); }

    std::shared_ptr<ProgressWindows> windows = std::make_shared<ProgressWindows>();
    PlatformScope scope{[this] {
        Platform platform = tamarok::test::platformOf("de-AT");
        platform.dialogWindows = windows;
        return platform;
    }()};
    Comm_Forms forms;
};

TEST_F(ProgressFormTest, InitSetsTheRangeAndShowsTheWindowWithoutWaiting)
{
    forms.Info_Init(10, nullptr);
    EXPECT_THAT(taken(), ElementsAre("make", "maximum 10.000100", "show"));
}

TEST_F(ProgressFormTest, AValueOfMaxStaysWithinTheRange)
{
    for (const std::int32_t max : {0, 1, 10, 16'777'217, 2'000'000'000}) {
        forms.Info_Init(max, nullptr);
        EXPECT_NO_THROW(forms.Info_ProgressValue(max)) << max;
    }
    forms.Info_Init(10, nullptr);
    forms.Info_ProgressValue(10);
    EXPECT_EQ(forms.Info_ProgressValue(), 10);
}

TEST_F(ProgressFormTest, AValueIsWrittenAndPaintedAtOnce)
{
    forms.Info_Init(10, nullptr);
    taken();
    forms.Info_ProgressValue(3);
    EXPECT_THAT(taken(), ElementsAre("value 3.000100", "repaint"));
    EXPECT_EQ(forms.Info_ProgressValue(), 3);
    EXPECT_THAT(taken(), IsEmpty());
}

TEST_F(ProgressFormTest, TheLabelIsWrittenAndPaintedAtOnce)
{
    forms.Info_ProgressLabel("Row 3");
    EXPECT_THAT(taken(), ElementsAre("make", "LbInfo1 Row 3", "repaint"));
    EXPECT_EQ(forms.Info_ProgressLabel(), "Row 3");
}

TEST_F(ProgressFormTest, AnyAccessBeforeInitMakesAHiddenWindow)
{
    EXPECT_EQ(forms.Info_ProgressLabel(), "");
    EXPECT_EQ(forms.Info_ProgressValue(), 0);
    forms.Info_ProgressValue(50);
    EXPECT_THAT(taken(), ElementsAre("make", "value 50.000099", "repaint"));
    forms.Info_Init(200, nullptr);
    EXPECT_THAT(taken(), ElementsAre("maximum 200.000107", "show"));
    EXPECT_EQ(forms.Info_ProgressValue(), 50);
}

TEST_F(ProgressFormTest, AValueOutsideTheRangeIsRefusedAndChangesNothing)
{
    forms.Info_Init(10, nullptr);
    forms.Info_ProgressValue(4);
    taken();
    expectError(errors::invalidPropertyValue, "Value 11", [&] { forms.Info_ProgressValue(11); });
    expectError(errors::invalidPropertyValue, "0 to 10.", [&] { forms.Info_ProgressValue(-1); });
    expectError(errors::invalidPropertyValue, "Max -1", [&] { forms.Info_Init(-1, nullptr); });
    EXPECT_EQ(forms.Info_ProgressValue(), 4);
    EXPECT_THAT(taken(), IsEmpty());
}

TEST_F(ProgressFormTest, ASmallerRangeMovesTheValueToItsEnd)
{
    forms.Info_Init(10, nullptr);
    forms.Info_ProgressValue(10);
    forms.Info_Init(5, nullptr);
    EXPECT_EQ(forms.Info_ProgressValue(), 5);
}

TEST_F(ProgressFormTest, ALargeValueReadsAsTheBarHoldsIt)
{
    forms.Info_Init(20'000'000, nullptr);
    forms.Info_ProgressValue(16'777'217);
    EXPECT_EQ(forms.Info_ProgressValue(), 16'777'218); // single precision
    forms.Info_Init(2'147'483'647, nullptr);
    forms.Info_ProgressValue(2'147'483'647);
    EXPECT_EQ(errorNumber([&] { forms.Info_ProgressValue(); }), errors::overflow);
}

TEST_F(ProgressFormTest, AWindowThatCannotBeShownDoesNotStopTheWork)
{
    windows->canBeShown = false;
    EXPECT_NO_THROW(forms.Info_Init(10, nullptr));
    forms.Info_ProgressValue(3);
    EXPECT_EQ(forms.Info_ProgressValue(), 3);
}

TEST_F(ProgressFormTest, ReleaseClosesTheWindowAndTheNextAccessMakesAnother)
{
    forms.Info_Release(nullptr);
    EXPECT_THAT(taken(), IsEmpty());
    forms.Info_Init(10, nullptr);
    forms.Info_ProgressLabel("Row");
    forms.Info_ProgressValue(3);
    taken();
    forms.Info_Release(nullptr);
    EXPECT_THAT(taken(), ElementsAre("close"));
    EXPECT_EQ(forms.Info_ProgressLabel(), "");
    EXPECT_EQ(forms.Info_ProgressValue(), 0);
    EXPECT_THAT(taken(), ElementsAre("make"));
}

TEST_F(ProgressFormTest, TheWindowOutlivesTheInstanceThatShowedIt)
{
    Comm_Forms{}.Info_Init(10, nullptr);
    Comm_Forms{}.Info_ProgressLabel("Row");
    EXPECT_EQ(Comm_Forms{}.Info_ProgressLabel(), "Row");
}

TEST_F(ProgressFormTest, TheWindowEndsWithItsPlatform)
{
    {
        const PlatformScope inner{[this] {
            Platform platform = tamarok::test::platformOf("de-AT");
            platform.dialogWindows = windows;
            return platform;
        }()};
        forms.Info_Init(10, nullptr);
        taken();
    }
    EXPECT_THAT(taken(), ElementsAre("close"));
}

} // namespace
} // namespace tamarok::dialogs
