#include "core/link/paarung.h"

#include "core/link/nachricht.h"

namespace {

// A participant id names its address; a bare address stands for itself.
QString adresseVon(const QString &id)
{
    return id.contains(QLatin1Char('@')) ? Kennung::aus(id).adresse : id;
}

} // namespace

QString Paarung::zweitlisteAdresse() const
{
    return adresseVon(m_zweitliste);
}

QString Paarung::ersteListeAdresse() const
{
    return adresseVon(m_ersteListe);
}

void Paarung::anfragen(int tisch)
{
    m_gepaarterTisch = tisch;
    emit geaendert();
}

Paarung::Antwort Paarung::anfrageBeantworten(const QString &id, bool gestartet)
{
    if (m_hatZweitliste) {
        anfrageVergessen();
        return Antwort::SchonGepaart;
    }
    if (!gestartet)
        return Antwort::NichtGestartet;
    zweitlisteAngenommen(id);
    return Antwort::Angenommen;
}

void Paarung::ersteListeGefunden(const QString &id)
{
    m_hatZweitliste = true;
    m_wartet = true;
    m_ersteListe = id;
    emit geaendert();
}

void Paarung::zweitlisteAngenommen(const QString &id)
{
    m_hatZweitliste = true;
    m_wartet = true;
    m_zweitliste = id;
    emit geaendert();
}

void Paarung::trennen()
{
    m_hatZweitliste = false;
    m_wartet = false;
    m_zweitliste.clear();
    m_ersteListe.clear();
    emit geaendert();
}

void Paarung::anfrageVergessen()
{
    m_gepaarterTisch = 0;
    emit geaendert();
}

void Paarung::alsKopieBehalten()
{
    m_letzterTisch = m_gepaarterTisch;
    m_gepaarterTisch = 0;
    emit geaendert();
}

void Paarung::aufheben()
{
    m_gepaarterTisch = 0;
    trennen();
}
