// The journal reader on any bytes; the lowest bit of the first byte picks the form (so "J"
// JSON, "C" CBOR), the rest is the file. A file it refuses leaves the journal as it was; one
// it takes is written and read again to the same document.

#include "fuzzhilfe.h"

#include "core/files/skatjornal.h"

#include <QCborValue>
#include <QJsonDocument>

using FuzzHilfe::pruefen;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *daten, size_t groesse)
{
    if (groesse == 0)
        return 0;
    const SkatJornal::Form form = daten[0] & 1 ? SkatJornal::Binaer : SkatJornal::Json;
    const QByteArray bytes(reinterpret_cast<const char *>(daten) + 1,
                           static_cast<int>(groesse) - 1);

    SkatJornal jornal;
    jornal.setKopf(QDate(2026, 11, 14), 5, 2);
    JornalEintrag vorher;
    vorher.spieler = QStringLiteral("Anna");
    jornal.anhaengen(vorher);
    if (!jornal.lesen(bytes, form)) {
        pruefen(jornal.tischNr() == 5 && jornal.eintraege().size() == 1,
                "ein abgelehntes Jornal laesst das alte stehen");
        return 0;
    }
    const QJsonObject dokument = jornal.dokument();
    const QByteArray geschrieben = form == SkatJornal::Json
                                       ? QJsonDocument(dokument).toJson()
                                       : QCborValue::fromJsonValue(dokument).toCbor();
    SkatJornal wieder;
    pruefen(wieder.lesen(geschrieben, form), "was gelesen wurde, ist geschrieben wieder lesbar");
    pruefen(wieder.dokument() == dokument, "und gibt dasselbe Dokument");
    return 0;
}
