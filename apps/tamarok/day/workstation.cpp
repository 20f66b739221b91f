#include "day/workstation.h"

#include "connections.h"

#include "tamarok/comm_lock.h"
#include "tamarok/error.h"

namespace tamarok::cli::day {

Platform Workstation::quietPlatform(const std::shared_ptr<RecordingMessageBox>& messages)
{
    Platform platform = Platform::current();
    platform.messageBox = messages;
    return platform;
}

Workstation::Workstation(const TmkVar& base, const DatabaseChoice& database, const Account& account) :
    session_{base}, dbLock_{openDatabase(database)}, scope_{quietPlatform(messages_)}
{
    session_.bolLan = true;
    session_.ID_User = account.user;
    session_.ID_Access_Levels = account.level;
}

Workstation::~Workstation()
{
    if (!loggedIn_) return;
    try {
        const Comm_Lock locks;
        locks.LockOff("", "", session_);
        locks.LogOut(&rsLock_, "True");
    } catch (const Error&) {
        // A destructor cannot report it. What remains is a dead session, which the next login removes.
    }
}

bool Workstation::logIn()
{
    loggedIn_ = Comm_Lock{}.LogIn(&rsLock_, session_, dbLock_);
    return loggedIn_;
}

bool Workstation::lockOn(const std::string& column, const std::string& key)
{
    return Comm_Lock{}.LockOn(column, key, session_);
}

std::string Workstation::message()
{
    std::string all;
    for (const RecordingMessageBox::Shown& shown : messages_->take())
        all += shown.text;
    return all;
}

} // namespace tamarok::cli::day
