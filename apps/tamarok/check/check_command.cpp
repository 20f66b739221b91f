#include "check/check_command.h"

#include <memory>
#include <string>

#include "check/checks.h"
#include "check/failure_remark.h"
#include "host_platform.h"
#include "print/progress_bar.h"

#include "tamarok/error.h"
#include "tamarok/platform.h"

namespace tamarok::cli {

namespace {

using check::Check;
using check::Context;
using check::State;

/// A message of the library, such as that of an unknown date format, is not printed: the report has a line instead.
Platform quietPlatform()
{
    Platform platform = commandPlatform({});
    platform.messageBox = std::make_shared<RecordingMessageBox>();
    return platform;
}

/// Runs one check. Its failure is a line of the report and stops no other check, unless the connection is lost.
void runOne(const Check& check, Context& context)
{
    if (!context.installation.obstacle.empty()) {
        context.report.add(State::Skipped, std::string{check.name}, context.installation.obstacle);
        return;
    }
    try {
        check.run(context);
    } catch (const Error& error) {
        context.report.add(State::Failed, std::string{check.name}, check::failureRemark(error));
        if (!context.installation.answers())
            context.installation.obstacle = "the connection to the database is lost; run the check again";
    }
}

void runAll(Context& context)
{
    ProgressBar bar;
    const auto all = check::checks();
    std::int64_t done = 0;
    const check::Concerns other = context.installation.isFile() ? check::Concerns::Server : check::Concerns::File;
    for (const Check& each : all) {
        bar.show({each.name, done++, static_cast<std::int64_t>(all.size())});
        if (each.concerns == other) continue;
        runOne(each, context);
    }
}

} // namespace

int runCheck(const CheckOptions& options, Output& output)
{
    const PlatformScope scope{quietPlatform()};
    check::Installation installation{options.database, options.dateFormat};
    const check::Reference reference;
    check::Report report;
    Context context{installation, reference, report};
    runAll(context);
    report.print(options.format, output);
    return report.isRight() ? 0 : 1;
}

} // namespace tamarok::cli
