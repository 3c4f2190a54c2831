// One table as its own process, for tests that need two real instances on
// the link: a running list of four in a home of its own, steered by lines on
// standard input, answering every message box and printing it.
//
//   liste <table>                  a running list of four at that table
//   spiel <type button> <seat> <won 0|1>
//   zweitliste <table>             pair as second list with that first list
//   antwort ja|nein                the answer for the next question
//   freigeben                      release the pairing, with its questions
//   zeilen                         prints "ZEILEN <n>"
//   beschriftung                   prints "LISTE <list label>"
//   teilnehmer                     prints "TEILNEHMER <participants on the link>"
//   verbindung <server> <id> <key> the venue's link, as typed on the settings page;
//                                  without arguments the LAN link
//   stand                          prints "STAND <the status line's link label>"
//
// Every message box is printed as "BOX <title>|<text>" with "\n" as "\\n".

#include "helpers/fensterhilfe.h"
#include "velmora/client.h"

#include <QtWidgets>

#include <cstdio>
#include <iostream>
#include <memory>
#include <thread>

using namespace Fenster;

int main(int argc, char *argv[])
{
    TestUmgebung::vorbereiten();
    QApplication app(argc, argv);
    MeldungsBeantworter antworten;
    std::unique_ptr<MainWindow> fenster;
    const auto ausgeben = [](const QString &zeile) {
        std::printf("%s\n", qPrintable(zeile));
        std::fflush(stdout);
    };
    int gemeldet = 0;
    const auto boxenMelden = [&] {
        for (; gemeldet < antworten.texte.size(); ++gemeldet)
            ausgeben("BOX " + antworten.titel.at(gemeldet) + '|' +
                     QString(antworten.texte.at(gemeldet)).replace('\n', QLatin1String("\\n")));
    };
    QTimer boxen;
    QObject::connect(&boxen, &QTimer::timeout, boxenMelden);
    boxen.start(20);

    const auto ausfuehren = [&](const QString &zeile) {
        const QStringList w = zeile.split(' ', Qt::SkipEmptyParts);
        const QString befehl = w.value(0);
        if (befehl == "liste") {
            TestProtokoll::anlegen(4, 48, 0, w.value(1).toInt());
            fenster = std::make_unique<MainWindow>();
            fenster->show();
        } else if (!fenster) {
            ausgeben("FEHLT liste");
        } else if (befehl == "spiel") {
            eingeben(fenster.get(), Spiel{qPrintable(w.value(1)), w.value(2).toInt(),
                                          w.value(3) == "1", QString()});
        } else if (befehl == "zweitliste") {
            zweitlisteTisch(*fenster, w.value(1));
        } else if (befehl == "antwort") {
            antworten.antworte(w.value(1) == "ja" ? QMessageBox::Yes : QMessageBox::No);
        } else if (befehl == "freigeben") {
            fenster->onZweitListeFreigeben(true);
        } else if (befehl == "zeilen") {
            ausgeben(QStringLiteral("ZEILEN %1").arg(TestProtokoll::zeilen("SpielListe")));
        } else if (befehl == "beschriftung") {
            ausgeben("BESCHRIFTUNG " + text(fenster.get(), "lblListe"));
        } else if (befehl == "verbindung") {
            kind<QComboBox>(fenster.get(), "cmbVerbindung")->setCurrentIndex(w.size() > 1);
            kind<QLineEdit>(fenster.get(), "leServer")->setText(w.value(1));
            kind<QLineEdit>(fenster.get(), "leKennung")->setText(w.value(2));
            kind<QLineEdit>(fenster.get(), "leZugangsschluessel")->setText(w.value(3));
            klick(fenster.get(), "pbVerbindungUebernehmen");
        } else if (befehl == "stand") {
            ausgeben("STAND " + text(fenster.get(), "lblVerbindungsart"));
        } else if (befehl == "teilnehmer") {
            ausgeben(QStringLiteral("TEILNEHMER %1")
                         .arg(fenster->findChild<Client *>()->participants().size()));
        }
        // The boxes a command raised come before its end.
        boxenMelden();
        ausgeben("OK " + befehl);
    };
    // Standard input is read on a thread of its own and each line handed to the
    // GUI thread; its end ends the program.
    std::thread leser([&ausfuehren] {
        std::string zeile;
        while (std::getline(std::cin, zeile))
            QMetaObject::invokeMethod(
                qApp, [&ausfuehren, text = QString::fromStdString(zeile)] { ausfuehren(text); },
                Qt::QueuedConnection);
        QMetaObject::invokeMethod(qApp, &QCoreApplication::quit, Qt::QueuedConnection);
    });
    leser.detach();
    return app.exec();
}
