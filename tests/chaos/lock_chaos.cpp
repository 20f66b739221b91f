// Chaos run of the object locks. Eight users, each a process of its own, log in and out, lock and release objects
// without a pause; again and again one of them is killed and started again. A run must show that no object ever has
// two holders and that no holder loses a lock.
//
// CHAOS_SECONDS is the length of the run, 60 by default; CHAOS_SEED repeats the random choices of one. The counts
// go to standard output. The status is 1 if anything was violated.

#include <algorithm>
#include <array>
#include <atomic>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <iostream>
#include <memory>
#include <new>
#include <random>
#include <stdexcept>
#include <string>
#include <sys/mman.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>
#include <vector>

#include "tamarok_database/reference_database.h"
#include "tamarok_embedded/connect.h"
#include "tamarok_loc/loc_service.h"

#include "tamarok/comm_lock.h"
#include "tamarok/error.h"
#include "tamarok/platform.h"
#include "tamarok/tmkvar.h"

namespace {

using namespace tamarok;
namespace fs = std::filesystem;

constexpr std::size_t users = 8;
constexpr std::size_t objects = 1000;
constexpr std::size_t heldAtMost = 4;
constexpr int firstUser = 101;

using Clock = std::chrono::steady_clock;

std::size_t indexOf(int user)
{
    return static_cast<std::size_t>(user - firstUser);
}

using Count = std::atomic<std::int64_t>;

/// What all processes share. It survives the kill of any of them.
struct Shared {
    Count grants, refusals, logIns, refusedLogIns, logOuts, releases, timeouts, kills;
    Count doubleHolders, lostLocks, failures, brokenStations;
    std::atomic<bool> ends{false};
    /// Hints for the choice of the next object; nothing depends on their being right.
    std::array<std::atomic<int>, objects> holder;          ///< user, 0 for none
    std::array<std::atomic<bool>, objects> hasOrphanedRow; ///< left by a user who was killed or logged out
    std::array<std::atomic<bool>, users> isRestless;       ///< whose session may end at any moment
    std::array<std::atomic<int>, users> testedBy;          ///< whose session a user is testing, 0 for nobody's

    std::int64_t violations() const { return doubleHolders + lostLocks + failures + brokenStations; }
};

/// Knows the holders by other means: one byte a lock object in a file of its own. These record locks belong to the
/// process. The system takes them from a killed process before it closes any file, and so before the row lock of
/// the session ends.
class Witness {
public:
    explicit Witness(const std::string& file) : file_{::open(file.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600)}
    {
        if (file_ < 0) throw std::runtime_error{"cannot open " + file};
    }
    Witness(const Witness&) = delete;
    Witness& operator=(const Witness&) = delete;
    ~Witness() { ::close(file_); }

    /// Returns false if another process has the object.
    bool take(std::size_t object) const { return set(object, F_WRLCK); }
    void leave(std::size_t object) const { set(object, F_UNLCK); }

private:
    bool set(std::size_t object, short type) const
    {
        struct flock lock {};
        lock.l_type = type;
        lock.l_whence = SEEK_SET;
        lock.l_start = static_cast<off_t>(object);
        lock.l_len = 1;
        return ::fcntl(file_, F_SETLK, &lock) == 0;
    }
    int file_;
};

/// Presses the button of every message box.
class ImpatientUser final : public MessageBox {
public:
    std::int16_t show(std::string_view, std::int32_t, std::string_view) override { return 1; }
};

Platform platform()
{
    Platform made;
    made.regional = Regional::named("de-AT");
    made.makeLocService = loc::makeLocService;
    made.messageBox = std::make_shared<ImpatientUser>();
    return made;
}

struct Paths {
    explicit Paths(const std::string& folder) : database{folder + "/chaos.db"}, witness{folder + "/witness"} {}
    std::string database;
    std::string witness;
};

class Station {
public:
    Station(const Paths& paths, int user, unsigned seed, Shared& shared) :
        shared_{shared}, random_{seed}, witness_{paths.witness}, scope_{platform()},
        dbLock_{embedded::connect(paths.database)}, user_{user}
    {
        session_.db_ADO = embedded::connect(paths.database);
        session_.ID_User = user;
        session_.bolLan = true;
        session_.strLanguage = "GERMAN";
    }

    void run()
    {
        while (!shared_.ends) {
            try {
                act();
            } catch (const Error& error) {
                // A wait that timed out is no violation: the rows stand as they did, and the user goes on.
                ++(error.number == errors::timeout ? shared_.timeouts : shared_.failures);
                std::cerr << "user " << user_ << ": " << error.what() << "\n";
            }
        }
    }

private:
    std::size_t index() const { return indexOf(user_); }
    std::size_t random(std::size_t below) { return std::uniform_int_distribution<std::size_t>{0, below - 1}(random_); }

    void act()
    {
        if (!rsLock_) return logIn();
        const bool isRestless = Clock::now() >= settledUntil_;
        shared_.isRestless.at(index()) = isRestless;
        const std::size_t dice = random(1000);
        if (isRestless && dice < 60)
            logOut();
        else if (isRestless && dice < 260)
            release();
        else if (held_.size() == heldAtMost)
            check();
        else
            take(choose());
    }

    void logIn()
    {
        auto rsLock = std::make_unique<ado::Recordset>();
        // Refused only where a probe has deleted the new session row before it was locked.
        const bool isLoggedIn = lock_.LogIn(rsLock.get(), session_, dbLock_);
        ++(isLoggedIn ? shared_.logIns : shared_.refusedLogIns);
        if (!isLoggedIn) return;
        rsLock_ = std::move(rsLock);
        // Somebody is testing the former session: these locks must outlast whatever he then deletes.
        if (!isTested()) return;
        settledUntil_ = Clock::now() + std::chrono::seconds{7};
        take(random(objects));
        take(random(objects));
    }

    bool isTested() const
    {
        return std::ranges::any_of(shared_.testedBy, [&](const std::atomic<int>& tested) { return tested == user_; });
    }

    /// Half of the times the locks stay behind, as they do when a program forgets them.
    void logOut()
    {
        if (random(2) == 0)
            release();
        else
            abandon(true);
        const auto rsLock = std::move(rsLock_);
        lock_.LogOut(rsLock.get(), "True");
        ++shared_.logOuts;
    }

    /// Mostly any object, often one whose row a user has left behind. Sometimes one that a user with a restless session
    /// holds, who is going to log out while his session is tested, and rarely one that any other user holds: its
    /// refusal takes five seconds.
    std::size_t choose()
    {
        const std::size_t dice = random(1000);
        const std::size_t start = random(objects);
        for (std::size_t step = 0; step < objects && dice < 400; ++step) {
            const std::size_t object = (start + step) % objects;
            const int holder = shared_.holder.at(object);
            const bool isForeign = holder != 0 && holder != user_;
            const bool isChosen = dice < 4   ? isForeign && shared_.isRestless.at(indexOf(holder))
                                  : dice < 5 ? isForeign
                                             : shared_.hasOrphanedRow.at(object).exchange(false);
            if (isChosen) return object;
        }
        return start;
    }

    static std::string key(std::size_t object) { return "'L" + std::to_string(object) + "'"; }

    void take(std::size_t object)
    {
        if (std::ranges::find(held_, object) != held_.end()) return;
        shared_.testedBy.at(index()) = shared_.holder.at(object).load();
        const bool isGranted = lock_.LockOn("LISTE", key(object), session_);
        shared_.testedBy.at(index()) = 0;
        if (!isGranted) {
            ++shared_.refusals;
            return;
        }
        ++shared_.grants;
        if (!witness_.take(object)) {
            ++shared_.doubleHolders;
            std::cerr << "DOUBLE HOLDER: user " << user_ << " was granted " << key(object) << ", held by user "
                      << shared_.holder.at(object) << "\n";
            return;
        }
        shared_.holder.at(object) = user_;
        held_.push_back(object);
    }

    void release()
    {
        abandon(false);
        lock_.LockOff("", "", session_);
        ++shared_.releases;
    }

    /// Each lock must still have its row.
    void check()
    {
        for (const std::size_t object : held_) {
            if (hasRow(object)) continue;
            ++shared_.lostLocks;
            shared_.ends = true;
            std::cerr << "LOST LOCK: user " << user_ << " holds " << key(object) << ", and its row has gone\n";
        }
    }

    /// Gives up what the user holds.
    void abandon(bool leavesRows)
    {
        check();
        for (const std::size_t object : held_) {
            shared_.holder.at(object) = 0;
            if (leavesRows) shared_.hasOrphanedRow.at(object) = true;
            witness_.leave(object);
        }
        held_.clear();
    }

    bool hasRow(std::size_t object) const
    {
        ado::Recordset rows;
        rows.Open("SELECT ID FROM LOCK WHERE ID_USERS = " + std::to_string(user_) + " AND LISTE = " + key(object),
                  session_.db_ADO);
        return !rows.AtEOF();
    }

    Shared& shared_;
    std::mt19937 random_;
    Witness witness_;
    PlatformScope scope_;
    ado::ConnectionRef dbLock_;
    int user_;
    TmkVar session_;
    std::unique_ptr<ado::Recordset> rsLock_; ///< null while logged out
    Clock::time_point settledUntil_;         ///< the user keeps his session and his locks until then
    std::vector<std::size_t> held_;
    Comm_Lock lock_;
};

/// Memory that all processes see. It lasts as long as they do.
Shared& sharedMemory()
{
    void* const memory = ::mmap(nullptr, sizeof(Shared), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
    if (memory == MAP_FAILED) throw std::runtime_error{"no memory to share"};
    return *::new (memory) Shared;
}

/// Runs `work` in a process of its own. The parent never opens the database, so that its children start clean.
template <class Work>
pid_t start(Work&& work)
{
    const pid_t child = ::fork();
    if (child < 0) throw std::runtime_error{"cannot start a process"};
    if (child > 0) return child;
    try {
        work();
        ::_exit(0);
    } catch (const std::exception& error) {
        std::cerr << "ENDED: " << error.what() << "\n";
        ::_exit(1);
    }
}

void createDatabase(const std::string& file)
{
    embedded::OpenOptions options;
    options.mode = embedded::OpenMode::Create;
    const auto connection = embedded::connect(file, options);
    database::ReferenceOptions small;
    small.logs = 1;
    small.records = 0;
    database::createReferenceDatabase(*connection, small);
}

class Chaos {
public:
    Chaos(const std::string& folder, unsigned seed) : paths_{folder}, random_{seed}, shared_{sharedMemory()}
    {
        int status = 0;
        ::waitpid(start([&] { createDatabase(paths_.database); }), &status, 0);
        if (status != 0) throw std::runtime_error{"the database could not be made"};
        for (std::size_t user = 0; user < users; ++user)
            open(user);
    }

    void run(std::chrono::seconds length)
    {
        const auto end = Clock::now() + length;
        while (Clock::now() < end && shared_.violations() == 0) {
            std::this_thread::sleep_for(std::chrono::milliseconds{std::uniform_int_distribution{0, 1000}(random_)});
            stall();
            kill(std::uniform_int_distribution<std::size_t>{0, users - 1}(random_));
        }
        // Some may wait for a lock for longer than the run lasts.
        shared_.ends = true;
        for (const pid_t station : stations_) {
            ::kill(station, SIGKILL);
            ::waitpid(station, nullptr, 0);
        }
    }

    const Shared& counts() const { return shared_; }

private:
    static int idOf(std::size_t user) { return firstUser + static_cast<int>(user); }

    void open(std::size_t user)
    {
        stations_.at(user) = start([&, seed = static_cast<unsigned>(random_())] {
            Station{paths_, idOf(user), seed, shared_}.run();
        });
    }

    /// Stops whoever is testing a session, so that its user can do a lot before the test goes on.
    void stall()
    {
        for (std::size_t user = 0; user < users; ++user) {
            if (shared_.testedBy.at(user) == 0) continue;
            ::kill(stations_.at(user), SIGSTOP);
            std::this_thread::sleep_for(std::chrono::milliseconds{200});
            ::kill(stations_.at(user), SIGCONT);
        }
    }

    void kill(std::size_t user)
    {
        ::kill(stations_.at(user), SIGKILL);
        int status = 0;
        ::waitpid(stations_.at(user), &status, 0);
        shared_.testedBy.at(user) = 0;
        ++(WIFSIGNALED(status) && WTERMSIG(status) == SIGKILL ? shared_.kills : shared_.brokenStations);
        for (std::size_t object = 0; object < objects; ++object) {
            int holder = idOf(user);
            if (shared_.holder.at(object).compare_exchange_strong(holder, 0)) shared_.hasOrphanedRow.at(object) = true;
        }
        open(user);
    }

    Paths paths_;
    std::mt19937 random_;
    Shared& shared_;
    std::array<pid_t, users> stations_{};
};

/// Reads a number from the environment.
unsigned setting(const char* name, unsigned otherwise)
{
    const char* const text = std::getenv(name);
    return text == nullptr || *text == '\0' ? otherwise : static_cast<unsigned>(std::stoul(text));
}

void print(const Shared& counts)
{
    std::cout << "grants " << counts.grants << ", refusals " << counts.refusals << ", releases " << counts.releases
              << ", log-ins " << counts.logIns << " (refused " << counts.refusedLogIns << "), log-outs "
              << counts.logOuts << ", kills " << counts.kills << ", time-outs " << counts.timeouts
              << "\ndouble holders " << counts.doubleHolders << ", lost locks " << counts.lostLocks
              << ", other failures " << counts.failures << ", broken stations " << counts.brokenStations << std::endl;
}

/// A run without grants, kills or log-outs shows nothing.
bool isPassed(const Shared& counts)
{
    return counts.violations() == 0 && counts.grants > 0 && counts.kills > 0 && counts.logOuts > 0;
}

} // namespace

int main()
{
    std::string folder = (fs::temp_directory_path() / "tamarok-chaos-XXXXXX").string();
    try {
        const unsigned seconds = setting("CHAOS_SECONDS", 60);
        const unsigned seed = setting("CHAOS_SEED", std::random_device{}());
        if (::mkdtemp(folder.data()) == nullptr) throw std::runtime_error{"no temporary folder"};
        std::cout << "lock_chaos: " << users << " users, " << seconds << " s, seed " << seed << std::endl;
        Chaos chaos{folder, seed};
        chaos.run(std::chrono::seconds{seconds});
        print(chaos.counts());
        fs::remove_all(folder);
        return isPassed(chaos.counts()) ? EXIT_SUCCESS : EXIT_FAILURE;
    } catch (const std::exception& error) {
        std::cerr << "lock_chaos: " << error.what() << "\n";
        return EXIT_FAILURE;
    }
}
