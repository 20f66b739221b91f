#include "odbc/support/servers.h"

#include <arpa/inet.h>
#include <cstdio>
#include <filesystem>
#include <iostream>
#include <netinet/in.h>
#include <stdexcept>
#include <sys/socket.h>
#include <unistd.h>

#include "support/child_process.h"

namespace tamarok::test {

namespace {

int freePort()
{
    const int socket = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t size = sizeof address;
    auto* const plain = static_cast<sockaddr*>(static_cast<void*>(&address));
    if (::bind(socket, plain, size) != 0 || ::getsockname(socket, plain, &size) != 0)
        throw std::runtime_error{"no free port"};
    ::close(socket);
    return ntohs(address.sin_port);
}

std::string findPrograms()
{
    std::string newest;
    std::error_code none;
    for (const auto& version : std::filesystem::directory_iterator{"/usr/lib/postgresql", none}) {
        const std::string folder = (version.path() / "bin").string();
        if (std::filesystem::exists(folder + "/initdb") && folder > newest) newest = folder;
    }
    return newest;
}

constexpr unsigned nobody = 65534;

} // namespace

bool PostgresServer::isInstalled()
{
    return !findPrograms().empty();
}

PostgresServer::PostgresServer() : programs_{findPrograms()}, port_{freePort()}
{
    const std::string folder = folder_.path().string();
    if (::geteuid() == 0 && ::chown(folder.c_str(), nobody, nobody) != 0) throw std::runtime_error{"chown failed"};
    command("initdb -D '" + folder + "/data' -E UTF8 --locale=C.UTF-8 -U tester -A trust --no-sync");
    start();
}

PostgresServer::~PostgresServer()
{
    try {
        stop();
    } catch (const std::exception& problem) {
        std::cerr << problem.what() << '\n';
    }
}

void PostgresServer::start()
{
    const std::string folder = folder_.path().string();
    command("pg_ctl -D '" + folder + "/data' -w -l '" + folder + "/log' -o \"-F -p " + std::to_string(port_) +
            " -c listen_addresses=127.0.0.1 -k '" + folder + "'\" start");
}

void PostgresServer::stop()
{
    if (!std::filesystem::exists(folder_ / "data/postmaster.pid")) return;
    command("pg_ctl -D '" + folder_.path().string() + "/data' -w -m immediate stop");
}

/// PostgreSQL refuses to run as root. Its output goes to a file: the server would keep a pipe open.
void PostgresServer::command(const std::string& arguments) const
{
    const std::string user = ::geteuid() == 0 ? "setpriv --reuid=65534 --regid=65534 --clear-groups " : std::string{};
    const std::string log = (folder_ / "commands.log").string();
    const std::string line =
        "cd '" + folder_.path().string() + "' && " + user + programs_ + "/" + arguments + " >>'" + log + "' 2>&1";
    if (runProgram("/bin/sh", {"-c", line}).status != 0)
        throw std::runtime_error{"PostgreSQL: " + arguments + " failed; see " + log};
}

std::string PostgresServer::connectionText() const
{
    return "DRIVER={PostgreSQL Unicode};SERVER=127.0.0.1;PORT=" + std::to_string(port_) +
           ";UID=tester;PWD=no secret;DATABASE=postgres";
}

std::string sqliteText(const std::string& file)
{
    return "DRIVER={SQLite3};Database=" + file;
}

} // namespace tamarok::test
