#pragma once

#include <gtest/gtest.h>
#include <iostream>
#include <string>
#include <unistd.h>

#include "odbc/support/servers.h"
#include "tamarok_odbc/connect.h"

#include "tamarok/ado.h"
#include "tamarok/error.h"

namespace tamarok::test {

/// A new, empty database of the T-SQL server, dropped at the end.
class ServerDatabase {
public:
    ServerDatabase() : name_{"tamarok_move_" + std::to_string(::getpid()) + "_" + std::to_string(++count())}
    {
        text_ = tsqlDatabase(name_);
    }
    ~ServerDatabase()
    {
        try {
            dropTsqlDatabase(name_);
        } catch (const Error& error) {
            std::cerr << name_ << " stays: " << error.description << '\n';
        }
    }
    ServerDatabase(const ServerDatabase&) = delete;
    ServerDatabase& operator=(const ServerDatabase&) = delete;

    const std::string& text() const { return text_; }
    ado::ConnectionRef connect() const { return odbc::connectText(text_); }

private:
    static int& count()
    {
        static int number = 0;
        return number;
    }

    std::string name_;
    std::string text_;
};

/// Skips without a server.
class OnServer : public testing::Test {
protected:
    void SetUp() override
    {
        if (!tsqlServer()) GTEST_SKIP() << "no T-SQL server";
    }
};

} // namespace tamarok::test
