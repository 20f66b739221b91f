#include <array>
#include <map>
#include <string>
#include <vector>

#include "check/checks.h"
#include "check/remedies.h"
#include "check/rows.h"

namespace tamarok::cli::check {

namespace {

constexpr std::array<std::string_view, 3> languages{"GERMAN", "ENGLISH", "FRENCH"};
constexpr std::string_view query = "SELECT ID_STRING, GERMAN, ENGLISH, FRENCH FROM STRINGS";

/// Orders whole numbers above 0 that are written as texts.
struct NumberLess {
    bool operator()(const std::string& a, const std::string& b) const
    {
        return a.size() != b.size() ? a.size() < b.size() : a < b;
    }
};

/// The texts of a number, in the order of the languages.
using Texts = std::map<std::string, std::vector<std::string>, NumberLess>;

Texts readAll(const ado::ConnectionRef& connection)
{
    Texts all;
    for (const std::vector<std::string>& row : readTexts(connection, query))
        all[row.front()] = {row.begin() + 1, row.end()};
    return all;
}

struct Findings {
    std::vector<std::string> missing;
    std::array<std::vector<std::string>, languages.size()> empty; ///< numbers without a text in a language
    std::size_t reworded = 0;
};

void compare(const std::string& number, const std::vector<std::string>& expected, const std::vector<std::string>& found,
             Findings& findings)
{
    bool reworded = false;
    for (std::size_t language = 0; language < languages.size(); ++language) {
        if (found[language].empty() && !expected[language].empty())
            findings.empty[language].push_back(number);
        else if (found[language] != expected[language])
            reworded = true;
    }
    if (reworded) ++findings.reworded;
}

Findings compareAll(const Texts& expected, const Texts& found)
{
    Findings findings;
    for (const auto& [number, texts] : expected) {
        const auto actual = found.find(number);
        if (actual == found.end())
            findings.missing.push_back(number);
        else
            compare(number, texts, actual->second, findings);
    }
    return findings;
}

std::string remedyOf(const Context& context)
{
    if (context.installation.isFile()) return ": copy them from a new database (tamarok init)";
    return ": run " + std::string{textsScript} + " again";
}

} // namespace

/// The texts by their numbers. Another wording is the customer's right.
void checkTexts(Context& context)
{
    const Texts expected = readAll(context.reference.database);
    const Findings findings = compareAll(expected, readAll(context.installation.connection()));
    std::string remark = std::to_string(expected.size() - findings.missing.size()) + " of " +
                         std::to_string(expected.size()) + " texts are there";
    if (findings.reworded > 0) remark += "; " + std::to_string(findings.reworded) + " have another wording";
    if (findings.missing.size() < expected.size()) context.report.add(State::Ok, "texts", remark);
    if (!findings.missing.empty())
        context.report.add(State::Missing, "texts",
                           std::to_string(findings.missing.size()) + " are missing (" + shortList(findings.missing) +
                               ")" + remedyOf(context));
    for (std::size_t language = 0; language < languages.size(); ++language)
        if (!findings.empty[language].empty())
            context.report.add(State::Missing, "texts in " + std::string{languages[language]},
                               std::to_string(findings.empty[language].size()) + " are empty (" +
                                   shortList(findings.empty[language]) + ")" + remedyOf(context));
}

} // namespace tamarok::cli::check
