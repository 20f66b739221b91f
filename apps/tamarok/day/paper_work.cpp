#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>
#include <string>
#include <string_view>
#include <unistd.h>

#include "day/steps.h"
#include "day/workstation.h"

#include "tamarok/comm_act.h"
#include "tamarok/comm_get.h"
#include "tamarok/error.h"
#include "tamarok/platform.h"

namespace tamarok::cli::day {

namespace {

/// A folder of its own, which goes with its files.
class WorkFolder {
public:
    WorkFolder()
    {
        std::string name = (std::filesystem::temp_directory_path() / "tamarok-day-XXXXXX").string();
        if (::mkdtemp(name.data()) == nullptr)
            throw Error{errors::pathAccess, "A folder for the protocol of the day cannot be made: " + name};
        path_ = name;
    }
    ~WorkFolder()
    {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }
    WorkFolder(const WorkFolder&) = delete;
    WorkFolder& operator=(const WorkFolder&) = delete;

    std::string file(std::string_view name) const { return (path_ / name).string(); }
    void print(std::string_view name, Output& output) const
    {
        std::ifstream file{path_ / name, std::ios::binary};
        std::string line;
        while (std::getline(file, line))
            output.write("    " + line.substr(0, line.find_last_not_of(" \r") + 1) + "\n");
    }

private:
    std::filesystem::path path_;
};

/// The next numbers of a timber list and of an invoice, and the report that is printed.
std::string proposeNumbers(const Context& context)
{
    const Comm_Get get;
    const std::string list = get.GetNewNumber(1, context.session, std::to_string(ranger.level));
    constexpr std::string_view lastInvoice = "SELECT MAX(R_NAME) FROM HEADERRECH";
    std::string invoice = get.GetNewNumber(0, context.session, lastInvoice);
    context.output.write("Next timber list of EDER's district: " + list + "\nNext invoice: " + invoice + " (" +
                         std::string{lastInvoice} + ")\nReports: " + get.Get_Print_Name(context.session, "HV 31Z") +
                         "; " + get.Get_Print_Name(context.session, "STEH_STKL") + "\n\n");
    return invoice;
}

void keepParameters(const WorkFolder& folder, Output& output)
{
    const Comm_Act act;
    const std::string file = folder.file("tamarok.ini");
    act.SaveParam("PRINTER", "Forstb\xC3\xBCro", file);
    act.SaveParam("COPIES", "1", file);
    act.SaveParam("copies", "2", file);
    output.write("Parameter file, COPIES saved twice: " + act.GetParam("COPIES", "", file) + " copies for " +
                 act.GetParam("printer", "", file) + "\n\n");
    folder.print("tamarok.ini", output);
}

} // namespace

/// The number of a new document, a parameter file and the action protocol.
void showPaperWork(const Context& context)
{
    const std::string invoice = proposeNumbers(context);
    const WorkFolder folder;
    keepParameters(folder, context.output);
    // The protocol tells the same time whenever the day is shown: that of the last working day of the data.
    Platform evening = Platform::current();
    evening.clock = std::make_shared<FixedClock>(fromCivil({.year = 2024, .month = 12, .day = 30, .hour = 17}));
    const PlatformScope scope{evening};
    const Comm_Act act;
    act.WriteReport("Faktura", invoice, "angelegt", "EDER", folder.file("protocol.txt"));
    act.WriteReport("Faktura", invoice, "gedruckt", "EDER", folder.file("protocol.txt"));
    context.output.write("\nAction protocol:\n\n");
    folder.print("protocol.txt", context.output);
}

} // namespace tamarok::cli::day
