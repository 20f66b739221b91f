#include <cstdlib>
#include <iostream>
#include <map>
#include <string>

#include "fuzz_input.h"

#include "tamarok/comm_act.h"
#include "tamarok/error.h"
#include "tamarok/platform.h"
#include "tamarok/text.h"

/// Parameter files of any bytes, in memory. The first line of an input is a key, the second a value, the rest the file.
/// A saved value is found again, except where the contract says otherwise, and a failed call leaves the file as it was.
namespace {

using namespace tamarok;

using Contents = std::map<std::string, std::string, std::less<>>;

class MemoryFile final : public File {
public:
    explicit MemoryFile(std::string& bytes) : bytes_{bytes} {}
    std::uint64_t size() const override { return bytes_.size(); }
    std::size_t readAt(std::uint64_t position, std::span<char> buffer) const override
    {
        return position < bytes_.size() ? bytes_.copy(buffer.data(), buffer.size(), position) : 0;
    }
    void write(std::string_view bytes) override { bytes_ += bytes; }
    bool isOnlyWriter() override { return true; }
    void sync() override {}

private:
    std::string& bytes_;
};

class MemoryFiles final : public FileSystem {
public:
    bool exists(std::string_view path) const override { return contents.contains(path); }
    void create(std::string_view path) override { contents.try_emplace(std::string{path}); }
    std::shared_ptr<File> openInput(std::string_view path) override { return open(path); }
    std::shared_ptr<File> openAppend(std::string_view path) override { return open(path); }
    std::shared_ptr<File> createBeside(std::string_view path, std::string_view) override
    {
        contents[std::string{path}].clear();
        return open(path);
    }
    void copyOver(std::string_view from, std::string_view to) override
    {
        contents[std::string{to}] = contents[std::string{from}];
    }
    void remove(std::string_view path) noexcept override
    {
        if (const auto found = contents.find(path); found != contents.end()) contents.erase(found);
    }

    Contents contents;

private:
    std::shared_ptr<File> open(std::string_view path)
    {
        return std::make_shared<MemoryFile>(contents.at(std::string{path}));
    }
};

[[noreturn]] void broken(std::string_view what)
{
    std::cerr << what << '\n';
    std::abort();
}

/// Saving the value, and reading it again.
void saveAndRead(MemoryFiles& files, std::string_view key, std::string_view value)
{
    const Comm_Act act;
    const std::string before = files.contents["f"];
    try {
        act.SaveParam(key, value, "f");
    } catch (const Error& error) {
        if (files.contents["f"] != before) broken("a failed call changed the file");
        if (error.number == 0) broken("an error without a number");
        return;
    }
    StringArray values;
    try {
        act.GetExistingParam(key, "f", values);
    } catch (const Error& error) {
        // An empty value counts as none; lines of the key beyond its values make it a duplicate.
        if (error.number != errors::parameterNotFound && error.number != errors::parameterDuplicate)
            broken("a saved file cannot be read: " + error.description);
        return;
    }
    const bool isList = text::equalsNoCase(key, "DATABASENAME");
    const bool isKey = !text::trim(key).starts_with('%') && key.find('=') == std::string_view::npos;
    // A file may become valid UTF-8 by a change, so that its bytes stand for other characters. An empty value is
    // passed over for that of a further line.
    const bool isPlain = text::length(value) == value.size() && !text::trim(value).empty();
    if (isKey && !isList && isPlain && values.values.front() != text::trim(value))
        broken("a saved value is not found again");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    Platform platform;
    const auto files = std::make_shared<MemoryFiles>();
    platform.files = files;
    const PlatformScope scope{std::move(platform)};
    std::string_view rest = fuzz::textOf(data, size);
    const std::string_view key = fuzz::takeUpTo(rest, '\n');
    const std::string_view value = fuzz::takeUpTo(rest, '\n');
    files->contents["f"] = rest;
    saveAndRead(*files, key, value);
    return 0;
}
