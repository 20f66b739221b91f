#include <algorithm>
#include <span>
#include <utility>
#include <vector>

#include "line_append.h"
#include "line_reader.h"
#include "numbered_file.h"
#include "parameter_line.h"

#include "tamarok/comm_act.h"
#include "tamarok/error.h"

// Writing of parameter files. A new key is appended; for an existing one the file is written anew, line by line, into
// the temporary file, which is then copied over it. The file itself is not touched before the temporary file is
// complete and on the disk.

namespace tamarok {

namespace {

using settings::LineReader;
using settings::NumberedFile;
using settings::ParameterLine;

/// The content of a file that is written in pieces of some size.
class Output {
public:
    Output(File& file, std::string_view lineEnd) : file_{file}, lineEnd_{lineEnd} {}

    void addMark() { buffer_ += settings::byteOrderMark; }
    void addLine(std::string_view line)
    {
        buffer_.append(line).append(lineEnd_);
        constexpr std::size_t enough = std::size_t{1} << 16U;
        if (buffer_.size() >= enough) flush();
    }
    void flush()
    {
        file_.write(buffer_);
        buffer_.clear();
    }

private:
    File& file_;
    std::string_view lineEnd_;
    std::string buffer_;
};

/// Writes the lines of a key anew: its first line, its second line and so on become the given ones.
class Rewriter {
public:
    /// @param lines  the new lines of the key, in the encoding of the file
    Rewriter(std::string_view key, std::vector<std::string> lines, settings::TextEncoding encoding) :
        wanted_{settings::comparableKey(key)}, lines_{std::move(lines)}, encoding_{encoding}
    {}

    /// Returns what is written for a line.
    /// Required by the contract: all lines are trimmed, comments as well, and a comment that has the key's name before
    /// its "=" counts as a line of the key. Do not correct.
    std::string_view operator()(std::string_view given)
    {
        const std::string_view line = text::trim(given);
        const auto parameter = ParameterLine::split(line);
        const bool isReplaced = parameter && next_ < lines_.size() && parameter->hasKey(wanted_, encoding_);
        return isReplaced ? std::string_view{lines_[next_++]} : line;
    }

private:
    std::string wanted_;
    std::vector<std::string> lines_;
    settings::TextEncoding encoding_;
    std::size_t next_ = 0;
};

std::string entryOf(std::string_view key, std::string_view value)
{
    return std::string{key}.append(" = ").append(value);
}

/// The new lines of a key that has values.
/// Required by the contract: the lines of DATABASENAME receive the values of the list, so that a single one keeps the
/// value that it has. Do not correct.
std::vector<std::string> newLines(std::string_view key, std::string_view value, const std::vector<std::string>& values,
                                  settings::TextEncoding encoding)
{
    const bool isList = text::toUpper(key) == settings::repeatedKey;
    std::vector<std::string> lines;
    lines.reserve(values.size());
    for (const std::string& listed : values)
        lines.push_back(settings::encode(entryOf(key, isList ? listed : value), encoding));
    return lines;
}

/// Writes the temporary file: the lines of the input, and then the added ones.
void writeTemporary(const File& input, std::string_view temporary, std::string_view filename, Rewriter& rewrite,
                    std::span<const std::string> added)
{
    const std::string_view lineEnd = settings::lineEndOf(input);
    const NumberedFile output = NumberedFile::forReplacement(settings::outputNumber, temporary, filename);
    try {
        Output content{output.file(), lineEnd};
        LineReader lines{input};
        while (lines.next()) {
            if (lines.count() == 1 && lines.hasByteOrderMark()) content.addMark();
            content.addLine(rewrite(lines.line()));
        }
        for (const std::string& line : added)
            content.addLine(rewrite(line));
        content.flush();
        output.file().sync();
    } catch (...) {
        // The room of an incomplete temporary file is given back.
        Platform::fileSystem().remove(temporary);
        throw;
    }
}

/// Gives the lines of a key the values of a list, or all of them `value`.
/// @param added  lines to be added at the end of the file before, as text
void rewriteFile(std::string_view key, std::string_view value, std::string_view filename,
                 const std::vector<std::string>& values, std::vector<std::string> added)
{
    const std::string temporary = std::string{filename} + "~";
    {
        const NumberedFile input = NumberedFile::forInput(settings::inputNumber, filename);
        const auto encoding = settings::encodingOf(input.file());
        for (std::string& line : added)
            line = settings::encode(line, encoding);
        Rewriter rewrite{key, newLines(key, value, values, encoding), encoding};
        writeTemporary(input.file(), temporary, filename, rewrite, added);
    }
    Platform::fileSystem().copyOver(temporary, filename);
}

/// Reads the values of a key. @return false if it has none
bool readExisting(const Comm_Act& reader, std::string_view key, std::string_view filename, StringArray& values)
{
    try {
        reader.GetExistingParam(key, filename, values);
        return true;
    } catch (const Error& error) {
        if (error.number != errors::parameterNotFound) throw;
        return false;
    }
}

/// Error 5 for a text that cannot stand in a line of any file.
void requireOneLine(std::string_view text, std::string_view what)
{
    if (text.find_first_of("\r\n") != std::string_view::npos) {
        throw Error{errors::invalidArgument,
                    "Invalid argument: the " + std::string{what} + " of a parameter has a line end"};
    }
    settings::encode(text, settings::TextEncoding::Utf8);
}

} // namespace

void Comm_Act::SaveParam(std::string_view Key, std::string_view value, std::string_view filename) const
{
    requireOneLine(Key, "key");
    requireOneLine(value, "value");
    FileSystem& files = Platform::fileSystem();
    if (!files.exists(filename)) files.create(filename);
    StringArray existing;
    const bool exists = readExisting(*this, Key, filename, existing);
    auto& values = existing.values;
    // An added entry has an empty line behind it.
    std::vector<std::string> added{entryOf(Key, value), ""};
    if (values.size() > 1) {
        if (const auto found = std::ranges::find(values, value); found != values.end()) {
            std::swap(values.front(), *found);
            added.clear();
        } else {
            values.push_back(std::exchange(values.front(), std::string{value}));
        }
    } else if (exists) {
        added.clear();
    } else {
        return settings::appendLines(filename, added, settings::Durability::OnDisk);
    }
    rewriteFile(Key, value, filename, values, std::move(added));
}

} // namespace tamarok
