#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>
#include <optional>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include "apps/program.h"
#include "server_sample.h"
#include "support/tsql_server.h"
#include "tamarok_embedded/connect.h"

/// The working day on the T-SQL server prints what it prints on the embedded database with the same data.
namespace tamarok::test {
namespace {

/// Runs the day on a file and on its copy in the server.
class DayOnServer : public ::testing::Test {
protected:
    static void SetUpTestSuite()
    {
        if (!tsqlServer()) return;
        folder_ = std::make_unique<ScratchFolder>();
        const std::string file = makeDatabase(*folder_, 300);
        sample_.emplace(embedded::connect(file));
        onFile_ = run({"day", "--db", file, "--locale", "de-AT"});
    }
    static void TearDownTestSuite()
    {
        sample_.reset();
        folder_.reset();
    }
    void SetUp() override
    {
        if (!sample_) GTEST_SKIP() << "no T-SQL server: the day was not run on one";
    }

    static std::vector<std::string> words()
    {
        return {"day", "--odbc", sample_->connectionText(), "--locale", "de-AT"};
    }
    static const Outcome& onFile() { return onFile_; }

private:
    static inline std::unique_ptr<ScratchFolder> folder_;
    static inline std::optional<database::test::ServerSample> sample_;
    static inline Outcome onFile_;
};

/// Twice: the first day leaves everything as it was.
TEST_F(DayOnServer, PrintsTheSame)
{
    ASSERT_EQ(onFile().status, 0) << onFile().errors;
    for (int day = 1; day <= 2; ++day) {
        const Outcome onServer = run(words());
        EXPECT_EQ(onServer.status, 0) << onServer.errors;
        EXPECT_EQ(onServer.output, onFile().output) << "day " << day;
        EXPECT_EQ(onServer.errors, "");
    }
}

std::string contentOf(const std::filesystem::path& file)
{
    std::ifstream stream{file, std::ios::binary};
    return {std::istreambuf_iterator<char>{stream}, {}};
}

/// The words of the command lines of a process's children, which all users of the machine see.
std::vector<std::string> wordsOfChildren(pid_t parent)
{
    const std::string id = std::to_string(parent);
    std::istringstream children{contentOf("/proc/" + id + "/task/" + id + "/children")};
    std::vector<std::string> all;
    for (std::string child; children >> child;)
        all.push_back(contentOf("/proc/" + child + "/cmdline"));
    return all;
}

/// The password as the connection text writes it.
std::string passwordOf(std::string_view text)
{
    const std::size_t begin = text.find("PWD=");
    if (begin == std::string_view::npos) return {};
    const std::string_view rest = text.substr(begin + 4);
    return std::string{rest.substr(0, rest.find(';'))};
}

TEST_F(DayOnServer, NobodySeesThePasswordOfTheSecondProcess)
{
    const std::string password = passwordOf(words().at(2));
    ASSERT_NE(password, "");
    Program day{words()};
    constexpr int linesAtMost = 200;
    std::string line;
    for (int count = 0; count < linesAtMost && !line.starts_with("EDER opens the same list"); ++count)
        line = day.line();
    ASSERT_TRUE(line.starts_with("EDER opens the same list")) << line;
    // The second process holds the list now; the check whether it lives takes seconds.
    const std::vector<std::string> children = wordsOfChildren(day.id());
    ASSERT_EQ(children.size(), 1U);
    EXPECT_EQ(children[0], std::string("tamarok\0call\0", 13));
    EXPECT_EQ(children[0].find(password), std::string::npos);
}

} // namespace
} // namespace tamarok::test
