// Renders the pictures of the manual and the README: a running list of eight
// games at a table of four, every page of the main window as the program
// draws it on the screen it runs on. Writes <ziel>/<name>-<page>.png.
//
//   kartulo_bilder <ziel> <name>
//
// Runs in a temporary home, so it never touches a real list.

#include "app/mainwindow.h"
#include "core/game/spielwert.h"
#include "core/service/einstellungen.h"
#include "core/service/listendienst.h"
#include "core/standings/spielmodus.h"

#include <QAction>
#include <QApplication>
#include <QDir>
#include <QMessageBox>
#include <QPushButton>
#include <QScreen>
#include <QTabWidget>
#include <QTemporaryDir>
#include <QTimer>

#include <cstdio>

namespace {

struct Beispiel
{
    Spielart art;
    int anzahl; // with matadors, negative: without
    int sitz;
    bool gewonnen;
    bool hand = false;
    bool schneider = false;
};

// An evening's first round and a half; the dealer (seat n % 4) never declares.
const Beispiel Abend[] = {{Spielart::Kreuz, 2, 1, true},
                          {Spielart::Grand, 1, 3, true, true},
                          {Spielart::Herz, -2, 0, false},
                          {Spielart::Null, 0, 1, true},
                          {Spielart::Pik, 1, 2, true, false, true},
                          {Spielart::Karo, -3, 3, true},
                          {Spielart::Eingepasst, 0, -1, true},
                          {Spielart::Grand, -2, 1, false}};

bool listeAnlegen(const QString &verzeichnis)
{
    Einstellungen einstellungen;
    ListenDienst dienst(verzeichnis, einstellungen);
    dienst.oeffnen();
    if (!dienst
             .neuesProtokoll(
                 3, 2, QStringList{"Anna Schmidt", "Bernd Keller", "Clara Vogt", "Dieter Brandt"})
             .ok() ||
        !dienst.serieStarten().ok())
        return false;
    for (const Beispiel &b : Abend) {
        SpielEingabe e;
        Spielangaben &a = e.angaben;
        a.art = b.art;
        if (b.anzahl != 0) {
            a.matadore = b.anzahl > 0 ? Matadore::Mit : Matadore::Ohne;
            a.anzahl = qAbs(b.anzahl);
        }
        a.sitz = b.sitz;
        a.gewonnen = b.gewonnen;
        a.hand = b.hand;
        a.schneider = b.schneider;
        e.spielerName = dienst.teilnehmerName(b.sitz);
        e.spielerKnopfText = e.spielerName;
        if (dienst.spielEintragen(Spielwert::berechne(e).eintrag).art !=
            EintragErgebnis::Eingetragen)
            return false;
    }
    return true;
}

} // namespace

int main(int argc, char *argv[])
{
    QTemporaryDir heim;
    qputenv("HOME", QFile::encodeName(heim.path()));
    qputenv("XDG_CONFIG_HOME", QFile::encodeName(heim.path() + "/.config"));
    qunsetenv("XDG_DOCUMENTS_DIR");
    QApplication app(argc, argv);
    if (argc < 3) {
        std::fprintf(stderr, "kartulo_bilder <ziel> <name>\n");
        return 2;
    }
    const QString ziel = QString::fromLocal8Bit(argv[1]);
    const QString name = QString::fromLocal8Bit(argv[2]);
    QDir().mkpath(ziel);
    QCoreApplication::setOrganizationName(Einstellungen::organisationsName());
    QCoreApplication::setApplicationName(Einstellungen::anwendungsName());
    const QString verzeichnis = Einstellungen::datenVerzeichnis();
    QDir().mkpath(verzeichnis);
    if (!listeAnlegen(verzeichnis)) {
        std::fprintf(stderr, "Die Beispielliste konnte nicht angelegt werden.\n");
        return 1;
    }

    MainWindow fenster;
    fenster.show();
    // No window manager runs on the virtual display; do what one does for a
    // maximised window.
    if (fenster.isMaximized())
        fenster.setGeometry(QGuiApplication::primaryScreen()->availableGeometry());
    auto *seiten = fenster.findChild<QTabWidget *>(QStringLiteral("tabWidget"));
    int fehler = 0;
    const auto speichern = [&](const QPixmap &bild, const QString &seite) {
        const QString datei = QStringLiteral("%1/%2-%3.png").arg(ziel, name, seite);
        if (!bild.save(datei))
            ++fehler;
        else
            std::printf("%s\n", qPrintable(datei));
    };
    // Each page once the window has settled on the screen, then the question
    // before a new list and the page it opens.
    QTimer::singleShot(1500, [&] {
        for (int seite = 0; seite < seiten->count(); ++seite) {
            seiten->setCurrentIndex(seite);
            QCoreApplication::processEvents();
            QCoreApplication::processEvents();
            speichern(fenster.grab(), seiten->widget(seite)->objectName());
        }
        QTimer::singleShot(500, [&] {
            if (auto *frage = qobject_cast<QMessageBox *>(QApplication::activeModalWidget())) {
                speichern(frage->grab(), QStringLiteral("frage"));
                frage->button(QMessageBox::Yes)->click();
            }
        });
        fenster.findChild<QAction *>(QStringLiteral("actionNeu"))->trigger();
        QCoreApplication::processEvents();
        speichern(fenster.grab(), seiten->currentWidget()->objectName());
        app.quit();
    });
    app.exec();
    return fehler == 0 ? 0 : 1;
}
