// Replays a fuzz target's corpus through its entry point, for CTest in the ordinary build,
// so every input that once broke a parser is checked without clang. Files or folders on the
// command line take the place of the corpus the build names.

#include "fuzzhilfe.h"

#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QStringList>

#include <cstdio>

namespace {

QStringList korpusDateien(const QString &pfad)
{
    if (QFileInfo(pfad).isFile())
        return {pfad};
    QStringList dateien;
    QDirIterator eintraege(pfad, QDir::Files, QDirIterator::Subdirectories);
    while (eintraege.hasNext())
        dateien << eintraege.next();
    dateien.sort();
    return dateien;
}

} // namespace

int main(int argc, char *argv[])
{
    QStringList pfade;
    for (int i = 1; i < argc; ++i)
        pfade << QString::fromLocal8Bit(argv[i]);
    if (pfade.isEmpty())
        pfade << QStringLiteral(KARTULO_KORPUS);
    LLVMFuzzerInitialize(&argc, &argv);
    int anzahl = 0;
    for (const QString &pfad : pfade) {
        for (const QString &name : korpusDateien(pfad)) {
            QFile datei(name);
            if (!datei.open(QIODevice::ReadOnly)) {
                std::fprintf(stderr, "Nicht lesbar: %s\n", qPrintable(name));
                return 1;
            }
            const QByteArray bytes = datei.readAll();
            LLVMFuzzerTestOneInput(reinterpret_cast<const uint8_t *>(bytes.constData()),
                                   size_t(bytes.size()));
            ++anzahl;
        }
    }
    std::printf("%d Eingaben ohne Befund\n", anzahl);
    // No input at all is a corpus that went missing, not a pass.
    return anzahl > 0 ? 0 : 1;
}
