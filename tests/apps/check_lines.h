#pragma once

#include <map>
#include <sstream>
#include <string>
#include <vector>

#include "apps/program.h"

namespace tamarok::test {

/// What `tamarok check` has printed as csv: "state: remark" by the first column. Of several lines with one first column
/// the last one counts that is not "ok".
class CheckLines {
public:
    explicit CheckLines(const std::string& csv)
    {
        std::istringstream input{csv};
        std::string line;
        std::getline(input, line); // the headers
        while (std::getline(input, line)) {
            const std::vector<std::string> fields = split(line);
            std::string& text = lines_[fields.at(0)];
            if (text.empty() || fields.at(1) != "ok") text = fields.at(1) + ": " + fields.at(2);
            if (fields.at(1) != "ok" && fields.at(1) != "skipped") wrong_.push_back(fields.at(0));
        }
    }

    /// The line of a thing; "no line" where it has none.
    std::string of(const std::string& what) const
    {
        const auto found = lines_.find(what);
        return found == lines_.end() ? "no line" : found->second;
    }

    /// What is missing, different or failed, in the order of the lines.
    const std::vector<std::string>& wrong() const { return wrong_; }

private:
    static std::vector<std::string> split(const std::string& line)
    {
        std::vector<std::string> fields(1);
        bool quoted = false;
        for (const char letter : line) {
            if (letter == '"')
                quoted = !quoted;
            else if (letter == ',' && !quoted)
                fields.emplace_back();
            else
                fields.back().push_back(letter);
        }
        return fields;
    }

    std::map<std::string, std::string> lines_;
    std::vector<std::string> wrong_;
};

/// Runs the check with these words and with csv.
inline Outcome runCheck(std::vector<std::string> words)
{
    words.insert(words.begin(), "check");
    words.insert(words.end(), {"--format", "csv"});
    return run(words);
}

} // namespace tamarok::test
