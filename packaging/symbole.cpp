// Draws the program's symbol from its SVG source at the sizes of the desktop's
// icon theme: <ziel>/<n>x<n>/apps/<name>.png for every size given.
//
//   kartulo_symbole <svg> <ziel> <name> <n>...

#include <QCoreApplication>
#include <QDir>
#include <QImage>
#include <QImageReader>

#include <cstdio>

int main(int argc, char *argv[])
{
    QCoreApplication app(argc, argv);
    const QStringList argumente = app.arguments();
    if (argumente.size() < 5) {
        std::fprintf(stderr, "kartulo_symbole <svg> <ziel> <name> <n>...\n");
        return 2;
    }
    for (const QString &text : argumente.mid(4)) {
        const int n = text.toInt();
        QImageReader leser(argumente.at(1), "svg");
        leser.setScaledSize(QSize(n, n));
        const QImage bild = leser.read();
        const QString ordner = QStringLiteral("%1/%2x%2/apps").arg(argumente.at(2)).arg(n);
        const QString datei = QStringLiteral("%1/%2.png").arg(ordner, argumente.at(3));
        if (bild.isNull() || !QDir().mkpath(ordner) || !bild.save(datei)) {
            std::fprintf(stderr, "%s: %s\n", qPrintable(datei),
                         qPrintable(bild.isNull() ? leser.errorString()
                                                  : QStringLiteral("nicht geschrieben")));
            return 1;
        }
    }
    return 0;
}
