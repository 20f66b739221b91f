#pragma once

#include <QByteArray>
#include <QProcess>
#include <QProcessEnvironment>
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
        if (!number.isEmpty()) name = ":" + number;
    }
    ~Display()
    {
        server_.terminate();
        if (!server_.waitForFinished(5'000)) server_.kill();
    }
    Display(const Display&) = delete;
    Display& operator=(const Display&) = delete;

    /// Returns the environment in which programs use the display.
    QProcessEnvironment environment() const
    {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert("DISPLAY", name);
        environment.insert("QT_QPA_PLATFORM", "xcb");
        return environment;
    }

    QByteArray name; ///< such as ":1"; empty if it did not start

private:
    QProcess server_;
};

inline bool isInstalled(const char* program)
{
    return !QStandardPaths::findExecutable(program).isEmpty();
}

} // namespace tamarok::qt::acting
