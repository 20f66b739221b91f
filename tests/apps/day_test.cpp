#include <string>

#include "apps/program.h"

namespace tamarok::test {
namespace {

/// The part of the day that begins with that heading.
std::string stepOf(const std::string& day, const std::string& heading)
{
    const std::size_t begin = day.find(heading);
    if (begin == std::string::npos) return {};
    return day.substr(begin, day.find("\n7. ", begin) - begin);
}

/// The statement behind `start` in `text`, up to the end of its line.
std::string lineOf(const std::string& text, const std::string& start, std::size_t from = 0)
{
    const std::size_t begin = text.find(start, from);
    return begin == std::string::npos ? std::string{} : text.substr(begin, text.find('\n', begin) - begin);
}

TEST(Day, AMeasuredLineIsTypedSavedReadAndPutBack)
{
    const ScratchFolder folder;
    const std::string file = makeDatabase(folder, 300);
    const auto stored = [&] {
        const Outcome rows =
            run({"call", "--db", file},
                R"({"query":"SELECT ID_LOG, LAENGE, DURCH, LISTDATUM, FREI1 FROM LOGS ORDER BY ID_LOG"})"
                "\n");
        return rows.output;
    };
    const std::string before = stored();
    const Outcome outcome = run({"day", "--db", file});
    EXPECT_EQ(outcome.status, 0) << outcome.errors;
    const std::string step = stepOf(outcome.output, "6. A measured line typed key by key");
    for (const char* wanted :
         {"4 -> 4   , -> 4,   x refused   5 -> 4,5   leaving -> 04,50\n",
          "3 -> 3   2 -> 32   - refused   leaving -> 032\n",
          "5 -> 5   . -> 5.   3 -> 5.3   . -> 5.3.   / refused   2 -> 5.3.2",
          "UPDATE LOGS SET LAENGE = 04.50 WHERE ID_LOG = ", "UPDATE LOGS SET DURCH = 032 WHERE ID_LOG = ",
          "UPDATE LOGS SET FREI1 = 'Weg d''Or' WHERE ID_LOG = ", "SELECT TOP 1 LAENGE FROM LOGS WHERE ID_LOG = ",
          "  Length in m     4,5\n", "  Diameter in cm  32\n", "  Date            05.03.2024\n",
          "  Remark          Weg d'Or\n", "Putting the old line back sends\n"})
        EXPECT_NE(step.find(wanted), std::string::npos) << wanted << "\n" << step;
    EXPECT_EQ(lineOf(step, "UPDATE LOGS SET LISTDATUM = ").substr(0, 38), "UPDATE LOGS SET LISTDATUM = '5.3.2024'");
    EXPECT_EQ(stored(), before) << "the day can be shown again";
}

} // namespace
} // namespace tamarok::test
