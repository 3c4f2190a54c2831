// Renders the pictures of the manual and the README: a running list of eight
// games at a table of four with the results of two other tables, every page
// of the main window, the projector view and the settings dialog as the
// program draws them on the screen it runs on. Writes
// <ziel>/<name>-<page>.png, and with a third argument the guide's pictures
// into that folder, no wider than the help pane.
//
//   kartulo_bilder <ziel> <name> [<leitfaden>]
//
// Runs in a temporary home, so it never touches a real list.

#include "app/mainwindow.h"
#include "core/game/spielwert.h"
#include "core/service/einstellungen.h"
#include "core/service/listendienst.h"
#include "core/standings/spielmodus.h"

#include <QAction>
#include <QApplication>
#include <QDialog>
#include <QDir>
#include <QMap>
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

// Two other tables of the evening report their players, as their windows do.
const char *const AndereTische[] = {
    "7:10.0.0.12:$Erika Lange|1|1|412|6|1|4.5|-@Fritz Wolf|1|1|187|4|2|5.5|-@"
    "Gerda Huber|1|1|-36|1|3|7.5|-@Hans Roth|1|1|95|2|1|5|-",
    "7:10.0.0.13:$Inge Maier|2|1|254|4|0|3.5|-@Jan Berger|2|1|310|5|1|4.5|-@"
    "Karl Schulz|2|1|61|2|2|5.5|-@Lena Fuchs|2|1|133|3|1|4.5|-"};

// The guide's picture of each page, by the name the guide uses.
const QMap<QString, QString> LeitfadenBilder = {{"tabSpieleintrag", "spieleintrag"},
                                                {"tabNeu", "neu"},
                                                {"tabUebersicht", "uebersicht"},
                                                {"tabSpieleListe", "spieleliste"},
                                                {"tabSpielstaende", "spielstaende"},
                                                {"tabBeschreibung", "beschreibung"},
                                                {"leinwand", "leinwand"},
                                                {"DlgSettings", "einstellungsdialog"}};
const int LeitfadenBreite = 720;

} // namespace

int main(int argc, char *argv[])
{
    QTemporaryDir heim;
    qputenv("HOME", QFile::encodeName(heim.path()));
    qputenv("XDG_CONFIG_HOME", QFile::encodeName(heim.path() + "/.config"));
    qunsetenv("XDG_DOCUMENTS_DIR");
    QApplication app(argc, argv);
    if (argc < 3) {
        std::fprintf(stderr, "kartulo_bilder <ziel> <name> [<leitfaden>]\n");
        return 2;
    }
    const QString ziel = QString::fromLocal8Bit(argv[1]);
    const QString name = QString::fromLocal8Bit(argv[2]);
    const QString leitfaden = argc > 3 ? QString::fromLocal8Bit(argv[3]) : QString();
    QDir().mkpath(ziel);
    if (!leitfaden.isEmpty())
        QDir().mkpath(leitfaden);
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
    for (const char *ergebnisse : AndereTische)
        fenster.appendMessage(QStringLiteral("Kartulo@10.0.0.12:4000"),
                              QString::fromUtf8(ergebnisse));
    fenster.findChild<QPushButton *>(QStringLiteral("pbReihenfolgeAuswerten"))->click();
    int fehler = 0;
    const auto sichern = [&](const QPixmap &bild, const QString &datei) {
        if (!bild.save(datei))
            ++fehler;
        else
            std::printf("%s\n", qPrintable(datei));
    };
    const auto speichern = [&](const QPixmap &bild, const QString &seite) {
        sichern(bild, QStringLiteral("%1/%2-%3.png").arg(ziel, name, seite));
        if (leitfaden.isEmpty() || !LeitfadenBilder.contains(seite))
            return;
        const QPixmap klein = bild.width() > LeitfadenBreite
                                  ? bild.scaledToWidth(LeitfadenBreite, Qt::SmoothTransformation)
                                  : bild;
        sichern(klein, QStringLiteral("%1/%2.png").arg(leitfaden, LeitfadenBilder.value(seite)));
    };
    // Each page once the window has settled on the screen, the projector view
    // and the settings dialog, then the question before a new list and the
    // page it opens.
    QTimer::singleShot(1500, [&] {
        for (int seite = 0; seite < seiten->count(); ++seite) {
            seiten->setCurrentIndex(seite);
            QCoreApplication::processEvents();
            QCoreApplication::processEvents();
            speichern(fenster.grab(), seiten->widget(seite)->objectName());
        }
        fenster.findChild<QPushButton *>(QStringLiteral("pbLeinwand"))->click();
        QCoreApplication::processEvents();
        for (QWidget *oben : QApplication::topLevelWidgets()) {
            if (oben->objectName() == QLatin1String("leinwand") && oben->isVisible()) {
                speichern(oben->grab(), oben->objectName());
                oben->close();
            }
        }
        QTimer::singleShot(300, [&] {
            if (auto *dialog = qobject_cast<QDialog *>(QApplication::activeModalWidget())) {
                speichern(dialog->grab(), dialog->objectName());
                dialog->accept();
            }
        });
        fenster.onEinstellungen();
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
