// A workstation for the tests of locks: a process with two connections that logs in, locks and releases objects
// as the lines on its standard input say. It answers each line with one line.
//
// lock_child FILE USER FOLDER

#include <cstdlib>
#include <fcntl.h>
#include <iostream>
#include <map>
#include <sstream>
#include <string>
#include <sys/file.h>
#include <unistd.h>
#include <vector>

#include "tamarok_embedded/connect.h"
#include "tamarok_loc/loc_service.h"

#include "tamarok/comm_lock.h"
#include "tamarok/error.h"
#include "tamarok/platform.h"
#include "tamarok/tmkvar.h"

namespace {

using namespace tamarok;

/// Keeps the last message, its lines joined by "|".
class LastMessage final : public MessageBox {
public:
    std::int16_t show(std::string_view text, std::int32_t, std::string_view) override
    {
        last.clear();
        for (const char letter : text) {
            if (letter != '\r') last += letter == '\n' ? '|' : letter;
        }
        return 1;
    }
    std::string last;
};

/// Checks the locks of the database by other means: one file an object, locked with flock by the process that
/// holds the object. The files are opened before the connections, so that the kernel releases them before it
/// releases the row lock of a dead session.
class Witness {
public:
    explicit Witness(const std::string& folder, int objects = 20)
    {
        for (int object = 1; object <= objects; ++object)
            files_.push_back(
                ::open((folder + "/" + std::to_string(object)).c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600));
    }
    Witness(const Witness&) = delete;
    Witness& operator=(const Witness&) = delete;
    ~Witness()
    {
        for (const int file : files_)
            ::close(file);
    }

    /// Returns "", or the number of the process that has the object already.
    std::string take(int object)
    {
        const int file = files_.at(static_cast<std::size_t>(object) - 1);
        if (::flock(file, LOCK_EX | LOCK_NB) == 0) {
            const std::string mine = std::to_string(::getpid());
            const bool written = ::ftruncate(file, 0) == 0 &&
                                 ::pwrite(file, mine.data(), mine.size(), 0) == static_cast<ssize_t>(mine.size());
            return written ? "" : "unwritable";
        }
        std::string holder(32, '\0');
        const ssize_t length = ::pread(file, holder.data(), holder.size(), 0);
        holder.resize(length > 0 ? static_cast<std::size_t>(length) : 0);
        return holder.empty() ? "unknown" : holder;
    }
    void leave(int object) { ::flock(files_.at(static_cast<std::size_t>(object) - 1), LOCK_UN); }

private:
    std::vector<int> files_;
};

class Station {
public:
    Station(const std::string& file, const std::string& user, const std::string& folder) :
        witness_{folder}, dbLock_{embedded::connect(file)}, scope_{platform()}
    {
        session_.db_ADO = embedded::connect(file);
        session_.ID_User = std::stoi(user);
        session_.bolLan = true;
        session_.strLanguage = "GERMAN";
    }

    std::string answer(const std::string& line)
    {
        std::istringstream words{line};
        std::string command;
        std::string first;
        std::string second;
        words >> command >> first >> second;
        if (command == "login") return verdict(lock_.LogIn(&rsLock_, session_, dbLock_));
        if (command == "logout") return verdict(lock_.LogOut(&rsLock_, "True"));
        if (command == "on") return verdict(lock_.LockOn(first, second, session_));
        if (command == "off") return verdict(lock_.LockOff("", "", session_));
        if (command == "invoice") return verdict(lock_.LockRechnung(second, first, session_));
        if (command == "keep") return take(std::stoi(first));
        if (command == "release") return release(std::stoi(first));
        if (command == "turn") return turn(std::stoi(first));
        if (command == "drop") {
            dbLock_->Close();
            return "dropped";
        }
        return "unknown command " + command;
    }

private:
    Platform platform() const
    {
        Platform made;
        made.regional = Regional::named("de-AT");
        made.makeLocService = loc::makeLocService;
        made.messageBox = messages_;
        return made;
    }

    std::string verdict(bool result)
    {
        const std::string shown = std::exchange(messages_->last, {});
        return result ? "true" : shown.empty() ? "false" : "false " + shown;
    }

    std::string take(int object)
    {
        if (!lock_.LockOn("BELEGE", std::to_string(object), session_)) return "refused";
        const std::string other = witness_.take(object);
        return other.empty() ? "held" : "shared " + other;
    }

    std::string release(int object)
    {
        witness_.leave(object);
        lock_.LockOff("", "", session_);
        return "released";
    }

    /// Locks an object, reads it some times, and releases it.
    std::string turn(int object)
    {
        std::string taken = take(object);
        if (taken != "held") return taken;
        ado::Recordset record;
        for (int look = 0; look < 10; ++look) {
            record.Open("SELECT BELEGNUMMER FROM BB_BELEGE_KOPF WHERE ID = " + std::to_string(object), session_.db_ADO);
            record.Close();
        }
        release(object);
        return taken;
    }

    Witness witness_;
    ado::ConnectionRef dbLock_;
    std::shared_ptr<LastMessage> messages_ = std::make_shared<LastMessage>();
    PlatformScope scope_;
    TmkVar session_;
    ado::Recordset rsLock_;
    Comm_Lock lock_;
};

} // namespace

int main(int count, char** values)
{
    if (count != 4) return 2;
    try {
        Station station{values[1], values[2], values[3]};
        std::cout << ::getpid() << std::endl;
        for (std::string line; std::getline(std::cin, line);) {
            try {
                std::cout << station.answer(line) << std::endl;
            } catch (const Error& error) {
                std::cout << "error " << error.number << " " << error.description << std::endl;
            }
        }
    } catch (const std::exception& error) {
        std::cout << "no station: " << error.what() << std::endl;
        return EXIT_FAILURE;
    }
    return EXIT_SUCCESS;
}
