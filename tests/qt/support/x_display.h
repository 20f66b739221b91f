#pragma once

#include <QProcess>
#include <QStandardPaths>

/// A display of a program's own.
namespace tamarok::qt::acting {

/// Starts a display of its own and stops it at the end.
class Display {
public:
    Display()
    {
        server_.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        // The server chooses a free number and writes it to its standard output.
        server_.start("Xvfb", {"-displayfd", "1", "-screen", "0", "1280x1024x24", "-nolisten", "tcp"});
        if (!server_.waitForStarted(10'000) || !server_.waitForReadyRead(20'000)) return;
        const QByteArray number = server_.readLine().trimmed();
        qputenv("DISPLAY", ":" + number);
        isUp = !number.isEmpty();
    }
    ~Display()
    {
        server_.terminate();
        if (!server_.waitForFinished(5'000)) server_.kill();
    }
    Display(const Display&) = delete;
    Display& operator=(const Display&) = delete;

    bool isUp = false;

private:
    QProcess server_;
};

inline bool isInstalled(const char* program)
{
    return !QStandardPaths::findExecutable(program).isEmpty();
}

} // namespace tamarok::qt::acting
