#include <algorithm>
#include <array>
#include <cstdint>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <regex>
#include <string>

#include "apps/program.h"

namespace tamarok::test {
namespace {

TEST(Volume, OneLog)
{
    EXPECT_EQ(run({"volume", "--d", "30", "--l", "5", "--locale", "en-GB"}).output, "0.35\n");
    EXPECT_EQ(run({"volume", "--d", "30", "--l", "5", "--pieces", "10", "--locale", "de-AT"}).output, "3,50\n");
    EXPECT_EQ(
        run({"volume", "--d", "30", "--l", "5", "--bark", "10", "--mode", "%", "--places", "4", "--locale", "de-AT"})
            .output,
        "0,3181\n");
    EXPECT_EQ(run({"volume", "--d", "32,5", "--l", "4,1", "--bark", "1,2", "--mode", "cm", "--places", "3", "--format",
                   "0.0000", "--locale", "de-AT"})
                  .output,
              "0,3150\n");
}

TEST(Volume, WrongUsage)
{
    for (const std::vector<std::string>& words : {std::vector<std::string>{"volume"},
                                                  {"volume", "--d", "30"},
                                                  {"volume", "--l", "5"},
                                                  {"volume", "--d", "30", "--l", "5", "--bark", "2"},
                                                  {"volume", "--d", "30", "--l", "5", "--mode", "mm"},
                                                  {"volume", "--d", "30", "--l", "5", "--places", "-1"},
                                                  {"volume", "--d", "30", "--csv", "x.csv"}}) {
        const Outcome outcome = run(words);
        EXPECT_EQ(outcome.status, 2) << outcome.errors;
        EXPECT_EQ(outcome.output, "");
    }
}

TEST(Volume, WhatIsNoNumberIsToldWithItsOption)
{
    struct Slip {
        std::vector<std::string> words;
        std::string option;
        std::string text;
    };
    for (const Slip& slip : {Slip{{"--d", "3o", "--l", "5"}, "--d", "3o"}, Slip{{"--d", "", "--l", "5"}, "--d", ""},
                             Slip{{"--d", "30", "--l", "5 m"}, "--l", "5 m"}, Slip{{"--d", "30", "--l", ""}, "--l", ""},
                             Slip{{"--d", "1.030,5", "--l", "5"}, "--d", "1.030,5"},
                             Slip{{"--d", "30", "--l", "5", "--pieces", "ten"}, "--pieces", "ten"},
                             Slip{{"--d", "30", "--l", "5", "--bark", "x", "--mode", "cm"}, "--bark", "x"},
                             Slip{{"--csv", "none.csv", "--pieces", "ten"}, "--pieces", "ten"},
                             Slip{{"--csv", "none.csv", "--bark", ""}, "--bark", ""}}) {
        std::vector<std::string> words{"volume"};
        words.insert(words.end(), slip.words.begin(), slip.words.end());
        const Outcome outcome = run(words);
        EXPECT_EQ(outcome.status, 1);
        EXPECT_EQ(outcome.output, "");
        EXPECT_EQ(outcome.errors, "tamarok: " + slip.option + ": \"" + slip.text +
                                      "\" is no number; decimals have a comma or a point, and there is no grouping\n");
    }
}

TEST(Volume, DecimalsHaveACommaOrAPointUnderAnySettings)
{
    for (const char* number : {"32,5", "32.5"}) {
        EXPECT_EQ(run({"volume", "--d", number, "--l", "4", "--locale", "en-GB"}).output, "0.33\n") << number;
        EXPECT_EQ(run({"volume", "--d", number, "--l", "4", "--locale", "de-AT"}).output, "0,33\n") << number;
        EXPECT_EQ(run({"volume", "--d", number, "--l", "4", "--locale", "de-CH"}).output, "0.33\n") << number;
    }
    // A pattern may group all the same.
    EXPECT_EQ(run({"volume", "--d", "200", "--l", "1000", "--format", "#,##0.0", "--places", "1", "--locale", "de-DE"})
                  .output,
              "3.141,6\n");
}

TEST(Volume, MeasuresOfZeroAreMeasured)
{
    const auto volume = [](std::vector<std::string> words) {
        words.insert(words.begin(), {"volume", "--locale", "en-GB"});
        return run(words).output;
    };
    EXPECT_EQ(volume({"--d", "0", "--l", "5"}), "0.00\n");
    EXPECT_EQ(volume({"--d", "30", "--l", "0"}), "0.00\n");
    EXPECT_EQ(volume({"--d", "30", "--l", "5", "--pieces", "0"}), "0.00\n");
    EXPECT_EQ(volume({"--d", "30", "--l", "5", "--bark", "100", "--mode", "%"}), "0.00\n");
    EXPECT_EQ(volume({"--d", "30", "--l", "5", "--bark", "30", "--mode", "cm"}), "0.00\n");
}

TEST(Volume, MeasuresOutOfRangeAreRefused)
{
    struct Case {
        std::vector<std::string> words;
        std::string fault;
    };
    const std::vector<Case> cases{
        {{"--d", "-30", "--l", "5"}, "diameter -30 is not from 0 to below 1000 cm"},
        {{"--d", "1000", "--l", "5"}, "diameter 1000 is not from 0 to below 1000 cm"},
        {{"--d", "1e3", "--l", "5"}, "diameter 1e3 is not from 0 to below 1000 cm"},
        {{"--d", "30", "--l", "-5"}, "length -5 is not from 0 to below 10000 m"},
        {{"--d", "30", "--l", "10000"}, "length 10000 is not from 0 to below 10000 m"},
        {{"--d", "30", "--l", "5", "--pieces", "-1"}, "pieces -1 is not from 0 to below 1000000"},
        {{"--d", "30", "--l", "5", "--pieces", "1000000"}, "pieces 1000000 is not from 0 to below 1000000"},
        {{"--d", "30", "--l", "5", "--bark", "100.5", "--mode", "%"}, "bark 100.5 is not from 0 to 100 %"},
        {{"--d", "30", "--l", "5", "--bark", "-1", "--mode", "%"}, "bark -1 is not from 0 to 100 %"},
        {{"--d", "30", "--l", "5", "--bark", "30.1", "--mode", "cm"}, "bark 30.1 is not from 0 cm to the diameter"},
        {{"--d", "30", "--l", "5", "--bark", "-0.1", "--mode", "cm"}, "bark -0.1 is not from 0 cm to the diameter"},
        {{"--csv", "/dev/null", "--pieces", "-1"}, "pieces -1 is not from 0 to below 1000000"},
        {{"--csv", "/dev/null", "--bark", "101", "--mode", "%"}, "bark 101 is not from 0 to 100 %"},
    };
    for (const Case& each : cases) {
        std::vector<std::string> words{"volume", "--locale", "en-GB"};
        words.insert(words.end(), each.words.begin(), each.words.end());
        const Outcome outcome = run(words);
        EXPECT_EQ(outcome.status, 2) << each.fault;
        EXPECT_EQ(outcome.output, "") << each.fault;
        EXPECT_EQ(outcome.errors, "tamarok: " + each.fault + " (see tamarok --help)\n");
    }
}

class VolumeTable : public ::testing::Test {
protected:
    /// Measures a table of this content.
    Outcome measure(const std::string& content, std::vector<std::string> options = {})
    {
        std::ofstream{folder_ / "logs.csv", std::ios::binary} << content;
        std::vector<std::string> words{"volume", "--csv", folder_ / "logs.csv"};
        words.insert(words.end(), options.begin(), options.end());
        return run(words);
    }
    void expectTable(const std::string& content, const std::string& expected, std::vector<std::string> options = {})
    {
        const Outcome outcome = measure(content, std::move(options));
        EXPECT_EQ(outcome.output, expected);
        EXPECT_EQ(outcome.errors, "");
        EXPECT_EQ(outcome.status, 0);
    }

    /// A table of so many logs, all the same.
    std::string tableOf(int lines)
    {
        std::string file = folder_ / "logs.csv";
        std::ofstream table{file, std::ios::binary};
        table << "d;l\n";
        for (int line = 0; line < lines; ++line)
            table << "30;5\n";
        return file;
    }

    ScratchFolder folder_;
};

TEST_F(VolumeTable, CommasWithPoints)
{
    expectTable("d,l,pieces,bark,mode\n30,5,10,0,cm\n32.5,4.1,1,1.2,cm\n",
                "d,l,pieces,bark,mode,volume\n30,5,10,0,cm,3.50\n32.5,4.1,1,1.2,cm,0.32\n");
}

TEST_F(VolumeTable, SemicolonsWithCommas)
{
    expectTable("Nr;LÄNGE;Durchmesser;Stück;Rinde;Modus\r\n1;4,1;32,5;2;10;%\r\n",
                "Nr;LÄNGE;Durchmesser;Stück;Rinde;Modus;volume\n1;4,1;32,5;2;10;%;0,62\n");
    expectTable("laenge;durchmesser;stueck;rinde;modus\n5;30;1;;\n",
                "laenge;durchmesser;stueck;rinde;modus;volume\n5;30;1;;;0,35\n");
}

TEST_F(VolumeTable, ColumnsAsTheTableOfLogsCallsThem)
{
    expectTable("ID_LOG;DURCH;Laenge;stk\n7;30;5;10\n", "ID_LOG;DURCH;Laenge;stk;volume\n7;30;5;10;3,50\n");
}

TEST_F(VolumeTable, SemicolonsWithPoints)
{
    expectTable("d;l\n32.5;4.1\n", "d;l;volume\n32.5;4.1;0.34\n");
}

TEST_F(VolumeTable, MixedSeparatorsAreReadAlike)
{
    expectTable("d;l\n32,5;4.1\n32.5;4,1\n", "d;l;volume\n32,5;4.1;0,34\n32.5;4,1;0,34\n");
    expectTable("d,l\n\"32,5\",\"4,1\"\n", "d,l,volume\n\"32,5\",\"4,1\",0.34\n");
}

TEST_F(VolumeTable, QuotesAndBlanks)
{
    expectTable("\"note\", d , l\n\"a, \"\"b\"\"\", 30 ,\"5\"\n",
                "\"note\", d , l,volume\n\"a, \"\"b\"\"\", 30 ,\"5\",0.35\n");
}

TEST_F(VolumeTable, ByteOrderMarkAndMissingLastLineEnd)
{
    expectTable("\xEF\xBB\xBF"
                "d;l\n\n30;5",
                "d;l;volume\n30;5;0,35\n");
}

TEST_F(VolumeTable, OptionsStandInForColumns)
{
    expectTable("d;l\n30;5\n", "d;l;volume\n30;5;3,181\n",
                {"--pieces", "10", "--bark", "10", "--mode", "%", "--places", "4", "--format", "0.000"});
    expectTable("d;l;pieces\n30;5;\n", "d;l;pieces;volume\n30;5;;0.70\n", {"--pieces", "2", "--locale", "en-GB"});
    expectTable("d,l\n30,5\n", "d,l,volume\n30,5,\"0,35\"\n", {"--locale", "de-AT"});
}

TEST_F(VolumeTable, BadLinesAreNumberedAndLeftOut)
{
    const Outcome outcome = measure("d;l;pieces;bark;mode\n30;5;1;0;cm\n3o;5;1;0;cm\n30;5\n;5;1;0;cm\n30;5;1;2;\n"
                                    "30;5;1;2;mm\n1E300;5;1;0;\n30;\"5;1;0;\n30;1.234,5;1;0;cm\n30;5;2;0;cm\n");
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.output, "d;l;pieces;bark;mode;volume\n30;5;1;0;cm;0,35\n30;5;2;0;cm;0,70\n");
    EXPECT_EQ(outcome.errors, "tamarok: line 3: \"3o\" in column d is no number\n"
                              "tamarok: line 4: there are 2 fields instead of 5\n"
                              "tamarok: line 5: column d is empty\n"
                              "tamarok: line 6: bark \"2\" has no mode\n"
                              "tamarok: line 7: mode \"mm\" is neither % nor cm\n"
                              "tamarok: line 8: diameter 1E300 is not from 0 to below 1000 cm\n"
                              "tamarok: line 9: a quote is not closed, or text stands behind one\n"
                              "tamarok: line 10: \"1.234,5\" in column l is no number\n");
}

TEST_F(VolumeTable, LinesOutOfRangeAreNumberedAndLeftOut)
{
    const Outcome outcome = measure("d;l;pieces;bark;mode\n-30;5;1;0;cm\n1000;5;1;0;cm\n999,9;5;1;0;cm\n30;-5;1;0;cm\n"
                                    "30;5;-1;0;cm\n30;5;1;31;cm\n30;5;1;101;%\n-30.5;5;1;0;cm\n",
                                    {"--locale", "de-AT"});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.output, "d;l;pieces;bark;mode;volume\n999,9;5;1;0;cm;392,62\n");
    EXPECT_EQ(outcome.errors, "tamarok: line 2: diameter -30 is not from 0 to below 1000 cm\n"
                              "tamarok: line 3: diameter 1000 is not from 0 to below 1000 cm\n"
                              "tamarok: line 5: length -5 is not from 0 to below 10000 m\n"
                              "tamarok: line 6: pieces -1 is not from 0 to below 1000000\n"
                              "tamarok: line 7: bark 31 is not from 0 cm to the diameter\n"
                              "tamarok: line 8: bark 101 is not from 0 to 100 %\n"
                              "tamarok: line 9: diameter -30.5 is not from 0 to below 1000 cm\n");
}

TEST_F(VolumeTable, OfSeveralFaultsWhatIsNoNumberComesFirst)
{
    const Outcome outcome = measure("d;l;pieces;bark;mode\n-30;x;-1;0;cm\n-30;5;-1;2;\n-30;5;-1;0;cm\n");
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.errors, "tamarok: line 2: \"x\" in column l is no number\n"
                              "tamarok: line 3: bark \"2\" has no mode\n"
                              "tamarok: line 4: pieces -1 is not from 0 to below 1000000\n");
}

TEST_F(VolumeTable, ComplaintsNameTheTextAsItStands)
{
    const Outcome outcome = measure("d;l;bark\n30.5;4,1;0\n3.x;4,1;0\n30;4.1;1.5\n");
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.errors, "tamarok: line 3: \"3.x\" in column d is no number\n"
                              "tamarok: line 4: bark \"1.5\" has no mode\n");
}

TEST_F(VolumeTable, AVolumeIsOneFieldWhateverThePatternMakesOfIt)
{
    expectTable("d;l\n30;5\n", "d;l;volume\n30;5;\"0,35; about\"\n", {"--format", "0.00\"; about\""});
    expectTable("d;l\n30;5\n", "d;l;volume\n30;5;\"0,35\"\"\"\n", {"--format", "0.00\\\""});
    expectTable("d;l\n30;5\n", "d;l;volume\n30;5;\"0,35\nm\"\n", {"--format", "0.00\nm"});
    expectTable("d;l\n30;5\n", "d;l;volume\n30;5;0,35 m³\n", {"--format", "0.00 m³"});
}

TEST_F(VolumeTable, HeaderOnly)
{
    expectTable("d;l", "d;l;volume\n");
    expectTable("\xEF\xBB\xBF"
                "d,l\r\n",
                "d,l,volume\n");
}

TEST_F(VolumeTable, ALineTooLongIsLeftOutWhole)
{
    const Outcome outcome = measure("d;l\n30;5\n" + std::string(700'000, '9') + ";5\n30;6\n");
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.output, "d;l;volume\n30;5;0,35\n30;6;0,42\n");
    EXPECT_EQ(outcome.errors, "tamarok: line 3: the line is too long\n");
}

TEST_F(VolumeTable, ManyLinesKeepTheirOrder)
{
    std::string table = "n;d;l\n";
    std::string expected = "n;d;l;volume\n";
    for (int line = 0; line < 50'000; ++line) {
        const std::string row = std::to_string(line) + ";30;5";
        table.append(row).append("\n");
        expected.append(row).append(";0,35\n");
    }
    expectTable(table, expected);
}

TEST_F(VolumeTable, OnATerminalABarShowsTheWayAndMakesRoomForComplaints)
{
    constexpr int lines = 20'000;
    const std::string result = folder_ / "volumes.csv";
    const std::string file = tableOf(lines);
    std::ofstream{file, std::ios::binary | std::ios::app} << "3o;5\n";
    const Screen screen = runOnTerminal({"volume", "--csv", file}, result);
    EXPECT_EQ(screen.status, 1);
    EXPECT_NE(screen.text.find(" %  lines"), std::string::npos) << screen.text;
    EXPECT_NE(screen.text.find("\r\x1b[Ktamarok: line 20002: \"3o\" in column d is no number"), std::string::npos)
        << screen.text;
    EXPECT_TRUE(screen.text.ends_with("\r\x1b[K")) << screen.text;
    std::ifstream measured{result};
    EXPECT_EQ(std::count(std::istreambuf_iterator<char>{measured}, {}, '\n'), lines + 1);
    // A small table needs none.
    std::ofstream{file, std::ios::binary} << "d;l\n30;5\n";
    EXPECT_EQ(runOnTerminal({"volume", "--csv", file}, result).text, "\r\x1b[K");
}

TEST_F(VolumeTable, MemoryDoesNotGrowWithTheTable)
{
    const std::string result = folder_ / "volumes.csv";
    const Screen small = runOnTerminal({"volume", "--csv", tableOf(50'000)}, result);
    const Screen large = runOnTerminal({"volume", "--csv", tableOf(3'000'000)}, result);
    EXPECT_EQ(small.status, 0);
    EXPECT_EQ(large.status, 0);
    // A program that kept the table would need 15 MB more for it, and 30 MB with the volumes.
    constexpr long halfOfTheTable = 3'000'000L * 5 / 2 / 1024; // KiB
    EXPECT_LT(large.peakMemory - small.peakMemory, halfOfTheTable);
}

TEST(ProgressBar, ShowsNoRateFromTooShortATime)
{
    constexpr std::int64_t logs = 200'000; // enough for a rate: 20,000 took less than a quarter of a second
    const ScratchFolder folder;
    const Screen screen =
        runOnTerminal({"init", folder / "new.db", "--logs", std::to_string(logs), "--seed", "1"}, folder / "said.txt");
    EXPECT_EQ(screen.status, 0) << screen.text;
    EXPECT_NE(screen.text.find("] 100 %  Timber lists"), std::string::npos) << screen.text;
    // No rate is shown in the first quarter of a second, so none exceeds four times the work.
    const std::regex rate{R"((\d+)/s)"};
    std::size_t rates = 0;
    for (std::sregex_iterator found{screen.text.begin(), screen.text.end(), rate}; found != std::sregex_iterator{};
         ++found, ++rates)
        EXPECT_LE(std::stoll((*found)[1]), 4 * logs) << screen.text;
    EXPECT_GT(rates, 0U) << screen.text;
}

/// Each drawing ends with the control sequence that clears the rest of the line.
TEST(ProgressBar, IsNarrowerThanItsTerminal)
{
    const ScratchFolder folder;
    const std::string clear = "\x1b[K";
    for (const unsigned short columns : std::array<unsigned short, 6>{120, 80, 40, 20, 8, 2}) {
        const Screen screen =
            runOnTerminal({"init", folder / "new.db", "--logs", "2000", "--force"}, folder / "said.txt", columns);
        EXPECT_EQ(screen.status, 0) << screen.text;
        std::size_t drawings = 0;
        for (std::size_t at = 0, end = 0; (end = screen.text.find(clear, at)) != std::string::npos;
             at = end + clear.size(), ++drawings) {
            const std::string drawing = screen.text.substr(at, end - at);
            ASSERT_EQ(drawing.front(), '\r');
            EXPECT_LT(drawing.size() - 1, columns) << drawing;
            EXPECT_EQ(drawing.find('\n'), std::string::npos);
        }
        EXPECT_GT(drawings, 4U) << screen.text; // one for each phase
        // A wide terminal shows the whole bar, a narrow one a shorter bar, a very narrow one none.
        EXPECT_EQ(screen.text.find('[' + std::string(40, '#') + ']') != std::string::npos, columns >= 80);
        EXPECT_EQ(screen.text.find("[#") != std::string::npos, columns >= 20);
    }
}

TEST_F(VolumeTable, HeadersThatCannotBe)
{
    for (const auto& [content, fault] : {std::pair{"", "there are no column names"},
                                         {"\nd;l\n", "there are no column names"},
                                         {"a;b\n1;2\n", "there is no column d"},
                                         {"d;b\n1;2\n", "there is no column l"},
                                         {"d;l;Durchmesser\n1;2;3\n", "column d stands there twice"},
                                         {"\"d;l\n1;2\n", "a quote is not closed"}}) {
        const Outcome outcome = measure(content);
        EXPECT_EQ(outcome.status, 1) << content;
        EXPECT_EQ(outcome.output, "") << content;
        EXPECT_NE(outcome.errors.find(fault), std::string::npos) << outcome.errors;
    }
}

TEST_F(VolumeTable, FilesThatCannotBeRead)
{
    for (const std::string file : {folder_ / "missing.csv", folder_.path()}) {
        const Outcome outcome = run({"volume", "--csv", file});
        EXPECT_EQ(outcome.status, 1);
        EXPECT_NE(outcome.errors.find("cannot read " + file), std::string::npos) << outcome.errors;
    }
}

} // namespace
} // namespace tamarok::test
