#include <iostream>
#include <memory>
#include <string>

#include "support/platforms.h"
#include "support/surroundings.h"
#include "tamarok_odbc/connect.h"

#include "tamarok/comm_lock.h"
#include "tamarok/error.h"
#include "tamarok/tmkvar.h"

// A workstation that logs in, locks an object and waits: session_child CONNECTION-TEXT USER COLUMN KEY

int main(int, char** arguments)
{
    using namespace tamarok;
    test::LocScript texts;
    Platform platform = test::platformOf("de-AT");
    platform.messageBox = std::make_shared<test::RecordingMessageBox>();
    platform.makeLocService = [&texts] { return std::make_unique<test::ScriptedLocService>(texts); };
    const PlatformScope scope{platform};
    try {
        const Comm_Lock locks;
        TmkVar session;
        session.db_ADO = odbc::connectText(arguments[1]);
        session.bolLan = true;
        session.ID_User = std::stoi(arguments[2]);
        const auto dbLock = odbc::connectText(arguments[1]);
        ado::Recordset rsLock;
        const bool held = locks.LogIn(&rsLock, session, dbLock) && locks.LockOn(arguments[3], arguments[4], session);
        std::cout << (held ? "held" : "refused") << std::endl;
        std::string line;
        std::getline(std::cin, line);
        locks.LockOff(arguments[3], arguments[4], session);
        std::cout << "released" << std::endl;
        std::getline(std::cin, line);
    } catch (const Error& error) {
        std::cout << "error " << error.number << " " << error.what() << std::endl;
        return 1;
    }
    return 0;
}
