#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "print/list_printer.h"
#include "print/output.h"

namespace tamarok::cli::check {

enum class State : std::uint8_t {
    Ok,
    Missing,   ///< something of the reference is not there
    Different, ///< it is there, but not as the library needs it
    Failed,    ///< the database refused the trial
    Skipped    ///< not tried; the remark tells why
};

/// What the checks have found: one line for each thing that is right or wrong.
class Report {
public:
    /// @param remark  for a wrong thing with its remedy
    void add(State state, std::string what, std::string remark = {});

    /// Adds the lines of another report.
    void append(const Report& other);

    /// True if nothing is missing, different or failed.
    bool isRight() const noexcept;

    void print(ListFormat format, Output& output) const;

private:
    struct Line {
        std::string what;
        State state = State::Ok;
        std::string remark;
    };
    std::vector<Line> lines_;
};

/// Names in one text, such as "A, B and 12 more".
std::string shortList(const std::vector<std::string>& names);

} // namespace tamarok::cli::check
