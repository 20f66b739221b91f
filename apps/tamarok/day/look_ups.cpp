#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "day/kept_widths.h"
#include "day/steps.h"
#include "host_platform.h"

#include "tamarok/comm_set.h"
#include "tamarok/convert.h"
#include "tamarok/grid_help.h"
#include "tamarok/platform.h"
#include "tamarok/scripted_windows.h"

namespace tamarok::cli::day {

namespace {

using dialogs::DialogScript;
using dialogs::DialogStep;
using dialogs::StepKind;

DialogStep step(StepKind kind, std::string text = {})
{
    return {.kind = kind, .text = std::move(text), .numbers = {}, .value = {}, .written = {}};
}

DialogStep clickHead(std::int32_t column)
{
    return {.kind = StepKind::Head, .text = {}, .numbers = {column}, .value = {}, .written = {}};
}

DialogStep write(std::string box, std::string_view text)
{
    return {.kind = StepKind::Set, .text = std::move(box), .numbers = {}, .value = text, .written = {}};
}

constexpr std::string_view newCode = "TAG";
constexpr std::string_view newName = "Arbeitstag";

/// Dialogs in which scripts act for the user. The row that they add is removed, also that of a day that was broken off.
class ScriptedDialogs {
public:
    explicit ScriptedDialogs(const Context& context) :
        context_{context}, widths_{context.session.db_ADO, {"GH_HOLZARTHAHANU", "GH_RELTABLEKULA"}}, scope_{platform()}
    {
        remove();
    }
    ~ScriptedDialogs()
    {
        try {
            remove();
        } catch (...) { // NOLINT(bugprone-empty-catch): the step has failed already
        }
    }
    ScriptedDialogs(const ScriptedDialogs&) = delete;
    ScriptedDialogs& operator=(const ScriptedDialogs&) = delete;

    /// Shows the lookup of a selection, and prints what the script read and the code that it took.
    void lookUp(std::string_view selection, std::string_view config, DialogScript script)
    {
        const std::string select = Comm_Set{}.CreateSQL(context_.session, selection, "");
        windows_->scripts().add(std::move(script));
        tell(selection, Grid_Help{}.GridHelp(context_.session, select, selection, "", config));
    }

    void lookUpBudget(DialogScript script)
    {
        windows_->scripts().add(std::move(script));
        tell("EBENE1", Grid_Help{}.TreeviewHelp(context_.session, "EBENE1", "Budget", ""));
    }

private:
    void remove()
    {
        context_.session.db_ADO->Execute(std::string{"DELETE FROM RELTABLE WHERE RELTABLE_ID = 3 AND KURZNAME = '"}
                                             .append(newCode)
                                             .append("' AND LANGNAME = '")
                                             .append(newName)
                                             .append("'"));
    }
    Platform platform() const
    {
        Platform platform = Platform::current();
        platform.dialogWindows = windows_;
        platform.keyboard = std::make_shared<RecordingKeyboard>();
        return platform;
    }

    void tell(std::string_view what, const std::string& result)
    {
        std::string line{what};
        for (const Variant& value : windows_->scripts().takeReport().read)
            line += " | " + convert::toText(value);
        context_.output.write(line + " | taken: " + result + "\n");
    }

    const Context& context_;
    KeptWidths widths_;
    std::shared_ptr<dialogs::ScriptedWindows> windows_ = std::make_shared<dialogs::ScriptedWindows>();
    PlatformScope scope_;
};

} // namespace

/// A species found by typing in a sorted column, a row of a free list that is added and taken, a budget title.
void showLookUps(const Context& context)
{
    ScriptedDialogs dialogs{context};
    dialogs.lookUp("HOLZART_GRID", "",
                   {clickHead(1), step(StepKind::Read, "DataGrid1.Columns(1).Caption"), step(StepKind::Type, "tan"),
                    step(StepKind::Read, "Frame1.Caption"), step(StepKind::Read, "DataGrid1.Columns(1).Text"),
                    step(StepKind::Ok)});
    dialogs.lookUp("RELTABLE3_KURZ_GRID", "001",
                   {step(StepKind::Click, "cmdNew"), step(StepKind::Type, std::string{newCode}),
                    write("Text2", newName), step(StepKind::Read, "cmdNew.Caption"), step(StepKind::Click, "cmdNew"),
                    step(StepKind::Read, "DataGrid1.Columns(1).Text"), step(StepKind::Ok)});
    dialogs.lookUpBudget({step(StepKind::Read, "TreeView1.Nodes.Count"), step(StepKind::SelectNode, "|1|1|1|1|1"),
                          step(StepKind::Read, "TreeView1.SelectedItem"), step(StepKind::Ok)});
}

} // namespace tamarok::cli::day
