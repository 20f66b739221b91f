#include "binder.h"
#include "class_tables.h"

#include "tamarok/c_version.h"
#include "tamarok/comm_conv.h"
#include "tamarok/comm_find.h"
#include "tamarok/loc_service.h"
#include "tamarok/mcomm.h"
#include "tamarok/platform.h"

namespace tamarok::component {

namespace {

/// The language service that the thread's platform makes.
std::shared_ptr<void> makeLocService()
{
    return std::shared_ptr<LocService>{Platform::locService()};
}

/// A module has functions and no instances.
std::shared_ptr<void> makeNothing()
{
    return nullptr;
}

// clang-format off
constexpr std::array versionOperations{
    operation<&C_Version::DLL_Version>(1, "DLL_Version", "", "Major and minor version of the library."),
};

constexpr std::array findOperations{
    operation<&Comm_find::FindNumOfChar>(1, "FindNumOfChar", "sTmpString, strFChar", "How often a text occurs in another one."),
    operation<&Comm_find::FindSubstring>(2, "FindSubstring", "sTmpString, strFChar, &tmp_Number", "One field of a separated text."),
};

constexpr std::array convOperations{
    operation<&Comm_Conv::TransDate>(1, "TransDate", "strDate, strDateFormat", "Date text in the format of the database."),
    operation<&Comm_Conv::NoComma>(2, "NoComma", "strVar, strThousantSep_dll", "Number text for SQL, without thousands marks."),
    operation<&Comm_Conv::NoComma3>(3, "NoComma3", "strVar", "Number text for SQL."),
    operation<&Comm_Conv::NoSpace>(4, "NoSpace", "strValue", "Text without blanks."),
    operation<&Comm_Conv::AddBrackets>(5, "AddBrackets", "rObjName", "Name of an object as SQL needs it."),
    operation<&Comm_Conv::AddSpaces>(6, "AddSpaces", "rstring, &rnumber", "Text moved right by blanks."),
    operation<&Comm_Conv::NationalDate>(7, "NationalDate", "USDate", "Regional date text of month/day/year."),
    operation<&Comm_Conv::USDate>(8, "USDate", "NationalDate, dbAdo", "Date text in the order of option USDATE."),
    operation<&Comm_Conv::USDateA>(9, "USDateA", "NationalDate", "Regional date text as month/day/year."),
    operation<&Comm_Conv::ConvBoolSQLColumnToStr>(10, "ConvBoolSQLColumnToStr", "TmkVar, strColumn, strLanguage", "Select expression that shows a 0/1 column as words."),
};

constexpr std::array locOperations{
    operation<&LocService::TranslateForm>(1, "TranslateForm", "TmkVar, form", "Puts the language's captions on a form."),
    operation<&LocService::GetText>(2, "GetText", "number, TmkVar", "Text of a number in the session's language."),
    operation<&LocService::GetText2>(3, "GetText2", "number, TmkVar", "The same look-up, for texts in computed columns."),
    operation<&LocService::RunProcedure>(4, "RunProcedure", "TmkVar, name, command", "Runs a stored procedure with the command's parameters."),
};

constexpr std::array moduleOperations{
    operation<&mComm::ShowMessage>(1, "ShowMessage", "strPrompt, lngButtons, [strTitle], [strHelpFile], [lngContext]", "Shows a message box and gives the button pressed."),
};
// clang-format on

} // namespace

constinit const ClassInfo cVersion{"C_Version", "Version of the library.", versionOperations, makeClass<C_Version>};
constinit const ClassInfo commFind{"Comm_find", "Scanners of text.", findOperations, makeClass<Comm_find>};
constinit const ClassInfo commConv{"Comm_Conv", "Conversions between forms and SQL.", convOperations,
                                   makeClass<Comm_Conv>};
constinit const ClassInfo locService{"LocService", "Language texts and stored procedures of the sibling library.",
                                     locOperations, makeLocService};
constinit const ClassInfo mCommModule{"mComm", "The library's plain message box.", moduleOperations, makeNothing};

} // namespace tamarok::component
