#pragma once

#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "support/child_process.h"
#include "support/scratch_folder.h"
#include "support/terminal.h"

/// The command-line program as a child process. TAMAROK_PROGRAM is its path.
namespace tamarok::test {

/// The running program.
class Program : public ChildProcess {
public:
    explicit Program(const std::vector<std::string>& arguments) : ChildProcess{TAMAROK_PROGRAM, arguments} {}
};

/// Runs the program to its end.
inline Outcome run(const std::vector<std::string>& arguments, std::string_view input = {})
{
    return runProgram(TAMAROK_PROGRAM, arguments, input);
}

/// Runs the program with standard error on a terminal and standard output into `outputFile`.
inline Screen runOnTerminal(const std::vector<std::string>& arguments, const std::string& outputFile,
                            unsigned short columns = 80)
{
    return runOnTerminal(TAMAROK_PROGRAM, arguments, outputFile, columns);
}

/// Makes a small database with the program itself and returns its path.
inline std::string makeDatabase(const ScratchFolder& folder, int logs = 200)
{
    const std::string file = folder / "demo.db";
    const Outcome made = run({"init", file, "--logs", std::to_string(logs), "--seed", "1"});
    if (made.status != 0) throw std::runtime_error{"init failed: " + made.errors};
    return file;
}

} // namespace tamarok::test
