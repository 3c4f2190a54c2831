#include "helpers/testumgebung.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QSettings>
#include <QTemporaryDir>

namespace TestUmgebung {

namespace {
QTemporaryDir &heim()
{
    static QTemporaryDir verzeichnis;
    return verzeichnis;
}
} // namespace

void vorbereiten()
{
    const QByteArray pfad = QFile::encodeName(heim().path());
    qputenv("HOME", pfad);
    qputenv("XDG_CONFIG_HOME", pfad + "/.config");
    qputenv("XDG_DATA_HOME", pfad + "/.local/share");
    qunsetenv("XDG_DOCUMENTS_DIR");
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    // Test programs running side by side keep to links of their own; the
    // processes a test starts inherit its port and find each other.
    if (qEnvironmentVariableIsEmpty("VELMORA_UDP_PORT"))
        qputenv("VELMORA_UDP_PORT",
                QByteArray::number(30000 + QCoreApplication::applicationPid() % 20000));
}

QString datenVerzeichnis()
{
    return heim().path() + QStringLiteral("/Documents/Kartulo");
}

QString datenbankDatei()
{
    return datenVerzeichnis() + QStringLiteral("/kartulo.db");
}

void allesLoeschen()
{
    QDir(datenVerzeichnis()).removeRecursively();
    einstellungen().clear();
    QSettings(QSettings::IniFormat, QSettings::UserScope, QStringLiteral("Ormindo"),
              QStringLiteral("velmora"))
        .clear();
}

QSettings einstellungen()
{
    return QSettings(QSettings::NativeFormat, QSettings::UserScope, QStringLiteral("Ormindo"),
                     QStringLiteral("Kartulo"));
}

} // namespace TestUmgebung
