#include "helpers/testumgebung.h"

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
    QSettings(QSettings::NativeFormat, QSettings::UserScope, QStringLiteral("Ormindo"),
              QStringLiteral("Kartulo"))
        .clear();
}

} // namespace TestUmgebung
