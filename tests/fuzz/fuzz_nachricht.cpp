// The LAN message decoder as the window meets it: the sender's id, a line end, then the
// text of the message. Without a line end the whole input is the id and the text.

#include "fuzzhilfe.h"

#include "core/link/nachricht.h"

using FuzzHilfe::pruefen;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *daten, size_t groesse)
{
    const QString eingabe =
        QString::fromUtf8(reinterpret_cast<const char *>(daten), static_cast<int>(groesse));
    const int zeilenende = eingabe.indexOf(QLatin1Char('\n'));
    const QString von = zeilenende < 0 ? eingabe : eingabe.left(zeilenende);
    const QString text = eingabe.mid(zeilenende + 1);

    const Kennung kennung = Kennung::aus(von);
    pruefen(kennung.adresse.isEmpty() || von.contains(kennung.adresse),
            "die Adresse einer Kennung steht in ihr");

    const std::optional<Nachricht> nachricht = Nachricht::lesen(text);
    if (!nachricht)
        return 0;
    pruefen(text.count(QLatin1Char('$')) == 1, "eine Nachricht hat genau ein $");
    pruefen(nachricht->typ != Nachricht::BlattDatei || nachricht->inhalt.size() <= 2,
            "ein Blatt hat Namen und Datei");
    // What is read comes back from its own text.
    const std::optional<Nachricht> wieder = Nachricht::lesen(nachricht->text());
    pruefen(wieder && wieder->typ == nachricht->typ && wieder->adresse == nachricht->adresse &&
                wieder->gruppe == nachricht->gruppe && wieder->inhalt == nachricht->inhalt,
            "text() gibt die gelesene Nachricht wieder");
    return 0;
}
