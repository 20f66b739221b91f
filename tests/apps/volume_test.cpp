#include <fstream>
#include <gtest/gtest.h>
#include <string>

#include "apps/child_process.h"
#include "apps/scratch_folder.h"

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
    const Outcome outcome = run({"volume", "--d", "3o", "--l", "5"});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_NE(outcome.errors.find("\"3o\""), std::string::npos) << outcome.errors;
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
                              "tamarok: line 8: Overflow: the volume is too large.\n"
                              "tamarok: line 9: a quote is not closed, or text stands behind one\n"
                              "tamarok: line 10: \"1,234,5\" in column l is no number\n");
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
    for (const std::string& file : {folder_ / "missing.csv", folder_.path().string()}) {
        const Outcome outcome = run({"volume", "--csv", file});
        EXPECT_EQ(outcome.status, 1);
        EXPECT_NE(outcome.errors.find("cannot read " + file), std::string::npos) << outcome.errors;
    }
}

TEST(MeasuringDay, LeavesTheDatabaseAsItWas)
{
    const ScratchFolder folder;
    const std::string database = makeDatabase(folder, 30);
    std::string counts;
    for (const char* query : {"SELECT COUNT(*) AS N FROM LOGS", "SELECT COUNT(*) AS N FROM LOGS_RECH",
                              "SELECT COUNT(*) AS N FROM LOGS_HISTORY", "SELECT MAX(ID_LOG) AS N FROM LOGS"})
        counts.append("{\"query\":\"").append(query).append("\"}\n");
    const Outcome before = run({"call", "--db", database}, counts);
    const Outcome day = run({"day", "--db", database});
    EXPECT_EQ(day.status, 0) << day.errors;
    EXPECT_NE(day.output.find("Ten logs measured"), std::string::npos);
    EXPECT_NE(day.output.find("Archived: 10 lines"), std::string::npos) << day.output;
    EXPECT_NE(before.output.find("[[30]]"), std::string::npos) << before.output;
    EXPECT_EQ(run({"call", "--db", database}, counts).output, before.output);
    EXPECT_EQ(run({"day", "--db", database}).output, day.output);
}

} // namespace
} // namespace tamarok::test
