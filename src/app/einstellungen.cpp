#include "app/einstellungen.h"

#include <QSettings>
#include <QStandardPaths>

QString Einstellungen::datenVerzeichnis()
{
    const QString dokumente = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
    if (dokumente.isEmpty())
        return QString();
    return QStringLiteral("%1/Kartulo").arg(dokumente);
}

Einstellungen::Einstellungen(QSettings &store) : m_store(store) {}

double Einstellungen::lesenOderAnlegen(const QString &key, double standard)
{
    if (m_store.contains(key))
        return m_store.value(key).toDouble();
    m_store.setValue(key, standard);
    return standard;
}

int Einstellungen::lesenOderAnlegen(const QString &key, int standard)
{
    if (m_store.contains(key))
        return m_store.value(key).toInt();
    m_store.setValue(key, standard);
    return standard;
}

void Einstellungen::laden(const QString &datenVerzeichnis)
{
    m_store.setValue(QStringLiteral("databasepath"), datenVerzeichnis);

    KostenWerte &k = m_kosten;
    k.platz1 = lesenOderAnlegen(QStringLiteral("platz1"), k.platz1);
    k.platz2 = lesenOderAnlegen(QStringLiteral("platz2"), k.platz2);
    k.platz3 = lesenOderAnlegen(QStringLiteral("platz3"), k.platz3);
    k.platz4 = lesenOderAnlegen(QStringLiteral("platz4"), k.platz4);
    // Read as "Kartengeld" but created as "kartengeld": older lists on club
    // machines carry the lower-case key, and both spellings are kept.
    if (m_store.contains(QStringLiteral("Kartengeld")))
        k.kartengeld = m_store.value(QStringLiteral("Kartengeld")).toDouble();
    else
        m_store.setValue(QStringLiteral("kartengeld"), k.kartengeld);
    k.verlSpiel1Bis5 = lesenOderAnlegen(QStringLiteral("VerlSpiel1Bis5"), k.verlSpiel1Bis5);
    k.verlSpielAb6 = lesenOderAnlegen(QStringLiteral("VerlSpielAb6"), k.verlSpielAb6);
    m_store.setValue(QStringLiteral("VerlSpielAb6"), k.verlSpielAb6);
    k.preisskat = lesenOderAnlegen(QStringLiteral("Preisskat"), k.preisskat);
    k.gewSpieleMinusVerlSpiele =
        lesenOderAnlegen(QStringLiteral("GewSpieleMinusVerlSpiele"), k.gewSpieleMinusVerlSpiele);
    k.verlSpieleDerGegenSpieler3 = lesenOderAnlegen(QStringLiteral("VerlSpieleDerGegenSpieler3"),
                                                    k.verlSpieleDerGegenSpieler3);
    k.verlSpieleDerGegenSpieler4 = lesenOderAnlegen(QStringLiteral("VerlSpieleDerGegenSpieler4"),
                                                    k.verlSpieleDerGegenSpieler4);

    // The backup runs every five minutes whatever was stored before.
    m_store.setValue(QStringLiteral("sicherheitskopieintervall"), 5);
    if (!m_store.contains(QStringLiteral("spielstandmitfabianpunkten")))
        m_store.setValue(QStringLiteral("spielstandmitfabianpunkten"), true);

    k.platz1 = m_store.value(QStringLiteral("platz1"), 0.0).toDouble();
    k.platz2 = m_store.value(QStringLiteral("platz2"), 1.5).toDouble();
    k.platz3 = m_store.value(QStringLiteral("platz3"), 2.5).toDouble();
    k.platz4 = m_store.value(QStringLiteral("platz4"), 3.0).toDouble();

    if (!m_store.contains(QStringLiteral("vereinsname")))
        m_store.setValue(QStringLiteral("vereinsname"), m_vereinsname);
    m_vereinsname = m_store.value(QStringLiteral("vereinsname"), m_vereinsname).toString();
}

bool Einstellungen::mitFabianpunkten() const
{
    return m_store.value(QStringLiteral("spielstandmitfabianpunkten"), true).toBool();
}

int Einstellungen::sicherheitskopieIntervallMs() const
{
    const QString key = QStringLiteral("sicherheitskopieintervall");
    if (!m_store.contains(key))
        return 300000;
    return m_store.value(key).toInt() * 60000;
}
