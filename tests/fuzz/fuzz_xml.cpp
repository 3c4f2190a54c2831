// The XML import on any bytes. A file it takes must survive being written and read again
// unchanged, as the backup and the copy beside the PDF are read later.

#include "fuzzhilfe.h"

#include "core/files/xmlprotokoll.h"

using FuzzHilfe::pruefen;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *daten, size_t groesse)
{
    const QByteArray inhalt(reinterpret_cast<const char *>(daten), static_cast<int>(groesse));
    const auto ergebnis = XmlProtokoll::lesen(inhalt);
    const auto *gelesen = std::get_if<XmlDaten>(&ergebnis);
    if (!gelesen)
        return 0;
    const QString text = XmlProtokoll::schreiben(*gelesen);
    const auto wieder = XmlProtokoll::lesen(text.toUtf8());
    const auto *zweites = std::get_if<XmlDaten>(&wieder);
    pruefen(zweites, "was gelesen wurde, ist geschrieben wieder lesbar");
    pruefen(XmlProtokoll::schreiben(*zweites) == text, "und wird gleich geschrieben");
    return 0;
}
