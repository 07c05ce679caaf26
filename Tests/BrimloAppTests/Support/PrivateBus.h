#pragma once

#include <QtCore/QProcess>
#include <QtCore/QTemporaryFile>
#include <QtDBus/QDBusConnection>

#include <csignal>

#include <sys/prctl.h>

namespace Brimlo::Testing {

/// A message bus of the test's own, on which there is nothing but what the test puts there. It is
/// the session bus of the process when it is made before anything asked for that. It does not run
/// where dbus-daemon is missing; skip the test then.
class PrivateBus {
public:
    PrivateBus() {
        // The usual settings would start the services that are installed on the machine.
        QTemporaryFile settings;
        settings.open();
        settings.write(
            "<busconfig><listen>unix:tmpdir=/tmp</listen><policy context='default'><allow own='*'/>"
            "<allow send_destination='*'/><allow receive_sender='*'/></policy></busconfig>");
        settings.close();
        daemon_.setChildProcessModifier(
            [] { prctl(PR_SET_PDEATHSIG, SIGTERM); });  // If it crashes.
        daemon_.start(
            "dbus-daemon", {"--config-file=" + settings.fileName(), "--nofork", "--print-address"});
        if (daemon_.waitForStarted() && daemon_.waitForReadyRead()) {
            address_ = QString::fromUtf8(daemon_.readLine()).trimmed();
            qputenv("DBUS_SESSION_BUS_ADDRESS", address_.toUtf8());
        }
    }
    Q_DISABLE_COPY_MOVE(PrivateBus)
    ~PrivateBus() {
        daemon_.terminate();
        daemon_.waitForFinished();
    }

    [[nodiscard]] bool isRunning() const { return !address_.isEmpty(); }
    /// A new connection, for the objects that play a service.
    [[nodiscard]] QDBusConnection connect() {
        return QDBusConnection::connectToBus(address_, address_ + QString::number(++connections_));
    }

private:
    QProcess daemon_;
    QString address_;
    int connections_ = 0;
};

}  // namespace Brimlo::Testing
