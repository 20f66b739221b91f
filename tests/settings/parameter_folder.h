#pragma once

#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <string>
#include <string_view>

#include "support/errors.h"
#include "support/scratch_folder.h"
#include "support/surroundings.h"

#include "tamarok/comm_act.h"

namespace tamarok::test {

/// A folder for parameter files, and the class that works on them.
class ParameterFolder : public ::testing::Test {
protected:
    std::string path(const std::string& name = "params.ini") const { return folder / name; }

    /// Writes a file. @return its path
    std::string make(std::string_view bytes, const std::string& name = "params.ini") const
    {
        std::ofstream{folder / name, std::ios::binary} << bytes;
        return path(name);
    }

    /// The bytes of a file; "(none)" where there is none.
    std::string content(const std::string& name = "params.ini") const
    {
        std::ifstream file{folder / name, std::ios::binary};
        if (!file) return "(none)";
        return {std::istreambuf_iterator<char>{file}, {}};
    }

    /// Writes a parameter into a file with that content. @return the content then
    std::string saved(std::string_view bytes, std::string_view key, std::string_view value) const
    {
        make(bytes);
        act.SaveParam(key, value, path());
        return content();
    }

    /// Returns the value of a key in a file with that content.
    std::string valueIn(std::string_view bytes, std::string_view key) const
    {
        return act.GetExistingParam(key, make(bytes), values());
    }

    /// Receives the values of a call that does not look at them.
    static StringArray& values()
    {
        static thread_local StringArray unused;
        return unused;
    }

    ScratchFolder folder;
    Surroundings with;
    Comm_Act act;
};

} // namespace tamarok::test
