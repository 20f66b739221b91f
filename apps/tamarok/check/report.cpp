#include "check/report.h"

#include <algorithm>
#include <array>
#include <utility>

#include "tamarok/variant.h"

namespace tamarok::cli::check {

namespace {

/// The words of the states, indexed by State.
constexpr std::array<std::string_view, 5> stateWords{"ok", "missing", "different", "failed", "skipped"};

bool isWrong(State state)
{
    return state != State::Ok && state != State::Skipped;
}

} // namespace

void Report::add(State state, std::string what, std::string remark)
{
    lines_.push_back({std::move(what), state, std::move(remark)});
}

void Report::append(const Report& other)
{
    lines_.insert(lines_.end(), other.lines_.begin(), other.lines_.end());
}

bool Report::isRight() const noexcept
{
    return std::ranges::none_of(lines_, isWrong, &Line::state);
}

void Report::print(ListFormat format, Output& output) const
{
    const auto printer = makeListPrinter(format, output, {"what", "state", "remark"});
    for (const Line& line : lines_)
        printer->row(
            {Variant{line.what}, Variant{stateWords.at(static_cast<std::size_t>(line.state))}, Variant{line.remark}});
    printer->finish();
}

std::string shortList(const std::vector<std::string>& names)
{
    constexpr std::size_t most = 12;
    std::string text;
    for (std::size_t i = 0; i < std::min(names.size(), most); ++i)
        text.append(i == 0 ? "" : ", ").append(names[i]);
    if (names.size() > most) text += " and " + std::to_string(names.size() - most) + " more";
    return text;
}

} // namespace tamarok::cli::check
