#pragma once

#include <QString>
#include <cstdint>
#include <string_view>

namespace tamarok::workbench {

/// The languages of the workbench and of its lists.
enum class Language : std::uint8_t { German, English, French };

/// Returns the language of a name as the session record has it: "GERMAN", "ENGLISH", "FRENCH"; German for any other.
Language languageOf(std::string_view name);
/// Returns that name.
std::string_view nameOf(Language language);

/// Makes a language that of all texts from now on, and of Qt's own: it is kept as QLocale's default.
void useLanguage(Language language);
Language usedLanguage();

/// The texts of the workbench's windows. Those of lists and dialogs come from the database.
enum class Text : std::uint8_t {
    Program,
    LogIn,
    User,
    Password,
    LoggingIn,
    Level,
    LanguageWord,
    WrongPassword,
    Cancel,
    Close,
    Lists,
    ReadOnly,
    Search,
    SearchHint,
    Columns,
    ColumnsHint,
    Available,
    Shown,
    Add,
    Remove,
    Up,
    Down,
    Group,
    GroupHint,
    Chart,
    ChartHint,
    By,
    Measure,
    Others,
    Export,
    ExportHint,
    Statement,
    StatementHint,
    Copy,
    Copied,
    Refresh,
    RefreshHint,
    FilterBy,
    FilterEmpty,
    RemoveFilters,
    CopyCell,
    ShowRecords,
    Rows,
    OneRow,
    Reading,
    Stop,
    StopHint,
    Stopped,
    Total,
    Saved,
    Deleted,
    Settlement,
    File,
    View,
    Help,
    Quit,
    LightColours,
    DarkColours,
    SystemColours,
    CloseList,
    Welcome,
    WelcomeText,
    About,
    MakingSample,
    Shortcuts,
    NoRows,
    Groups,
    MeasureList,
    TimberList,
    Locking,
    Species,
    Assortment,
    Quality,
    BarkKey,
    Diameter,
    Length,
    Pieces,
    Volume,
    Bark,
    Class,
    SaveLine,
    LineSaved,
    LineUnsaved,
    Discard,
    SaveWord,
    LookUpHint,
    Options,
    OptionsHint,
    Option,
    WholeNumber,
    DecimalNumber,
    TextWord,
    DateWord,
    OptionSaved,
    count_ ///< of the texts
};

/// Returns a text in the language of the workbench.
QString textOf(Text text);

} // namespace tamarok::workbench
