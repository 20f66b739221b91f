#include <array>
#include <gtest/gtest.h>
#include <string>

#include "tamarok/spelling.h"

namespace tamarok::spelling {
namespace {

constexpr std::array<std::string_view, 7> words{"list", "columns", "select", "volume", "Länge", "id", ""};

struct Case {
    std::string_view word;
    std::string_view nearest;
};

struct Row {
    std::string_view name;
    int number;
};

TEST(Spelling, NamesTheNearestWord)
{
    constexpr std::array cases{
        Case{"lst", "list"},         // a letter is missing
        Case{"liist", "list"},       // a letter too many
        Case{"lust", "list"},        // another letter
        Case{"lsit", "list"},        // two neighbours swapped count once
        Case{"LIST", "list"},        // case does not count
        Case{"LSIT", "list"},        //
        Case{"colunms", "columns"},  //
        Case{"colummmns", "columns"} // three edits of nine letters
    };
    for (const Case& each : cases)
        EXPECT_EQ(nearest(each.word, words), each.nearest) << each.word;
}

TEST(Spelling, NamesNothingForAnotherWord)
{
    constexpr std::array<std::string_view, 5> unknown{"", "frobnicate", "lt", "solemn", "tsil"};
    for (const std::string_view word : unknown)
        EXPECT_EQ(nearest(word, words), "") << word;
    EXPECT_EQ(nearest("list", {}), "");
}

TEST(Spelling, OfEquallyNearWordsTheFirst)
{
    constexpr std::array<std::string_view, 2> known{"GetB", "GetC"};
    EXPECT_EQ(nearest("GetA", known), "GetB");
}

TEST(Spelling, ComparesNoWordOfExcessiveLength)
{
    const std::string longWord(101, 'a');
    const std::array<std::string_view, 1> known{longWord};
    EXPECT_EQ(nearest(longWord, known), "");
    EXPECT_EQ(nearest("a", known), "");
}

TEST(Spelling, SuggestionIsReadyForAMessage)
{
    EXPECT_EQ(suggestion("colums", words), "; did you mean 'columns'?");
    EXPECT_EQ(suggestion("xyz", words), "");
    EXPECT_EQ(suggestionOrPoint("colums", words), "; did you mean 'columns'?");
    EXPECT_EQ(suggestionOrPoint("xyz", words), ".");
}

TEST(Spelling, NamesOfRowsStandBehindTheOthers)
{
    constexpr std::array rows{Row{"Value", 1}, Row{"Caption", 2}};
    EXPECT_EQ(namesOf(rows), (std::vector<std::string_view>{"Value", "Caption"}));
    EXPECT_EQ(namesOf(rows, {"Name"}), (std::vector<std::string_view>{"Name", "Value", "Caption"}));
    EXPECT_EQ(suggestionByName("Captoin", rows), "; did you mean 'Caption'?");
}

} // namespace
} // namespace tamarok::spelling
