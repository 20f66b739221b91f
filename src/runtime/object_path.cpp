#include "tamarok/object_path.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <optional>

#include "tamarok/convert.h"
#include "tamarok/error.h"
#include "tamarok/text.h"

namespace tamarok {

namespace {

bool isNameCharacter(char character)
{
    const auto byte = static_cast<unsigned char>(character);
    return (byte >= '0' && byte <= '9') || (byte >= 'A' && byte <= 'Z') || (byte >= 'a' && byte <= 'z') ||
           byte == '_' || byte >= 0x80;
}

/// Parses a dotted name: names, each with an optional list of arguments in parentheses, joined by points.
class PathReader {
public:
    explicit PathReader(std::string_view path) : path_{path} {}

    std::vector<PathStep> steps()
    {
        std::vector<PathStep> steps;
        do
            steps.push_back(step());
        while (take('.'));
        if (at_ != path_.size()) fail("'.' or the end");
        return steps;
    }

private:
    PathStep step()
    {
        PathStep step;
        while (at_ < path_.size() && isNameCharacter(path_[at_]))
            step.member += path_[at_++];
        if (step.member.empty()) fail("a member's name");
        if (!take('(')) return step;
        skipBlanks();
        if (take(')')) return step;
        do
            step.args.push_back(argument());
        while (take(','));
        if (!take(')')) fail("',' or ')'");
        return step;
    }

    Variant argument()
    {
        skipBlanks();
        Variant value = take('"') ? Variant{quoted()} : word();
        skipBlanks();
        return value;
    }

    std::string quoted()
    {
        std::string text;
        while (at_ < path_.size()) {
            if (path_[at_] != '"') {
                text += path_[at_++];
                continue;
            }
            ++at_;
            if (!take('"')) return text;
            text += '"';
        }
        fail("a closing quote");
    }

    Variant word()
    {
        const std::size_t end = std::min(path_.find_first_of(",) ", at_), path_.size());
        const std::string_view word = path_.substr(at_, end - at_);
        if (text::equalsNoCase(word, "True")) return at_ = end, Variant{true};
        if (text::equalsNoCase(word, "False")) return at_ = end, Variant{false};
        const std::optional<double> number = convert::parsePlainNumber(word);
        if (!number) fail("a number or a quoted text");
        at_ = end;
        constexpr double limit = std::numeric_limits<std::int32_t>::max();
        if (std::nearbyint(*number) == *number && std::abs(*number) <= limit) {
            return static_cast<std::int32_t>(*number);
        }
        return *number;
    }

    void skipBlanks()
    {
        while (take(' ')) {}
    }

    bool take(char wanted)
    {
        if (at_ >= path_.size() || path_[at_] != wanted) return false;
        ++at_;
        return true;
    }

    [[noreturn]] void fail(std::string_view wanted) const
    {
        throw Error{errors::invalidArgument, "name '" + std::string{path_} + "': " + std::string{wanted} +
                                                 " is needed at position " + std::to_string(at_ + 1)};
    }

    std::string_view path_;
    std::size_t at_ = 0;
};

/// Walks all steps but the last from `root`, not an empty reference, and returns the object that has the last member.
ObjectRef owner(const ObjectRef& root, std::span<const PathStep> steps)
{
    ObjectRef object = root;
    for (const PathStep& step : steps.first(steps.size() - 1)) {
        const Variant next = object->get(step.member, step.args);
        if (!next.isObject()) {
            throw Error{errors::typeMismatch, std::string{object->typeName()} + "." + step.member + " is no object"};
        }
        require(next.asObject(), step.member);
        object = next.asObject();
    }
    return object;
}

} // namespace

std::vector<PathStep> parsePath(std::string_view path)
{
    return PathReader{path}.steps();
}

Variant getPath(const ObjectRef& root, std::string_view path)
{
    const auto steps = parsePath(path);
    return owner(root, steps)->get(steps.back().member, steps.back().args);
}

void putPath(const ObjectRef& root, std::string_view path, const Variant& value)
{
    const auto steps = parsePath(path);
    const ObjectRef object = owner(root, steps);
    const PathStep& last = steps.back();
    if (last.args.empty()) return object->put(last.member, value);
    object->putIndexed(last.member, last.args, value);
}

Variant callPath(const ObjectRef& root, std::string_view path, std::span<Variant> args)
{
    auto steps = parsePath(path);
    const ObjectRef object = owner(root, steps);
    PathStep& last = steps.back();
    if (last.args.empty()) return object->call(last.member, args);
    std::vector<Variant> all = last.args;
    all.insert(all.end(), args.begin(), args.end());
    // The caller receives changed arguments also where the method fails.
    const auto handBack = [&] { std::ranges::copy(std::span{all}.subspan(last.args.size()), args.begin()); };
    try {
        Variant result = object->call(last.member, all);
        handBack();
        return result;
    } catch (...) {
        handBack();
        throw;
    }
}

} // namespace tamarok
