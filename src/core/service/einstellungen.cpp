#include "core/service/einstellungen.h"

#include "core/standings/spielmodus.h"

#include <QStandardPaths>

#include <array>

namespace {

// Key and member of each value of the account, in the order of Einstellungen::Kosten.
struct KostenSchluessel
{
    const char *key;
    double KostenWerte::*geld;
    int KostenWerte::*punkte;
};

const std::array<KostenSchluessel, 11> &kostenSchluessel()
{
    using K = KostenWerte;
    static const std::array<KostenSchluessel, 11> schluessel{{
        {"platz1", &K::platz1, nullptr},
        {"platz2", &K::platz2, nullptr},
        {"platz3", &K::platz3, nullptr},
        {"platz4", &K::platz4, nullptr},
        {"Kartengeld", &K::kartengeld, nullptr},
        {"VerlSpiel1Bis5", &K::verlSpiel1Bis5, nullptr},
        {"VerlSpielAb6", &K::verlSpielAb6, nullptr},
        {"Preisskat", &K::preisskat, nullptr},
        {"GewSpieleMinusVerlSpiele", nullptr, &K::gewSpieleMinusVerlSpiele},
        {"VerlSpieleDerGegenSpieler3", nullptr, &K::verlSpieleDerGegenSpieler3},
        {"VerlSpieleDerGegenSpieler4", nullptr, &K::verlSpieleDerGegenSpieler4},
    }};
    return schluessel;
}

} // namespace

QString Einstellungen::datenVerzeichnis()
{
    const QString dokumente = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
    if (dokumente.isEmpty())
        return QString();
    return QStringLiteral("%1/Kartulo").arg(dokumente);
}

Einstellungen::Einstellungen(QObject *parent)
    : QObject(parent),
      m_store(QSettings::NativeFormat, QSettings::UserScope, organisationsName(), anwendungsName())
{
}

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

    if (!m_store.contains(QStringLiteral("turnierschluessel")))
        m_store.setValue(QStringLiteral("turnierschluessel"), QString());
}

QString Einstellungen::turnierschluessel() const
{
    return m_store.value(QStringLiteral("turnierschluessel")).toString();
}

void Einstellungen::turnierschluesselSetzen(const QString &schluessel)
{
    if (schluessel == turnierschluessel())
        return;
    m_store.setValue(QStringLiteral("turnierschluessel"), schluessel);
    emit turnierschluesselGeaendert(schluessel);
}

void Einstellungen::kostenSetzen(Kosten wert, const QString &text)
{
    const KostenSchluessel &s = kostenSchluessel().at(static_cast<size_t>(wert));
    if (s.geld) {
        m_kosten.*s.geld = Kostenrechnung::geldWert(text);
        m_store.setValue(QLatin1String(s.key), m_kosten.*s.geld);
    } else {
        m_kosten.*s.punkte = text.toInt(nullptr, 10);
        m_store.setValue(QLatin1String(s.key), m_kosten.*s.punkte);
    }
    emit kostenGeaendert(wert);
}

void Einstellungen::kostenSetzen(const KostenWerte &kosten)
{
    m_kosten = kosten;
    for (const KostenSchluessel &s : kostenSchluessel())
        m_store.setValue(QLatin1String(s.key),
                         s.geld ? QVariant(kosten.*s.geld) : QVariant(kosten.*s.punkte));
    emit alleKostenGeaendert();
}

void Einstellungen::vereinsnameSetzen(const QString &name)
{
    if (name == m_vereinsname)
        return;
    m_vereinsname = name;
    m_store.setValue(QStringLiteral("vereinsname"), name);
    emit vereinsnameGeaendert(name);
}

bool Einstellungen::mitFabianpunkten() const
{
    return m_store.value(QStringLiteral("spielstandmitfabianpunkten"), true).toBool();
}

bool Einstellungen::fabianFuer(int modus) const
{
    return modus == Spielmodus::Turnier && mitFabianpunkten();
}

FabianFaktoren Einstellungen::fabianFaktoren() const
{
    return {m_kosten.gewSpieleMinusVerlSpiele, m_kosten.verlSpieleDerGegenSpieler3,
            m_kosten.verlSpieleDerGegenSpieler4};
}

void Einstellungen::mitFabianpunktenSetzen(bool fabian)
{
    if (fabian == mitFabianpunkten())
        return;
    m_store.setValue(QStringLiteral("spielstandmitfabianpunkten"), fabian);
    emit mitFabianpunktenGeaendert(fabian);
}

int Einstellungen::sicherheitskopieIntervallMs() const
{
    const QString key = QStringLiteral("sicherheitskopieintervall");
    if (!m_store.contains(key))
        return 300000;
    return m_store.value(key).toInt() * 60000;
}

void Einstellungen::sicherheitskopieIntervallSetzen(int minuten)
{
    if (minuten * 60000 == sicherheitskopieIntervallMs())
        return;
    m_store.setValue(QStringLiteral("sicherheitskopieintervall"), minuten);
    emit sicherheitskopieIntervallGeaendert(minuten * 60000);
}

QString Einstellungen::spielstopzeit() const
{
    return m_store.value(QStringLiteral("spielstopzeit")).toString();
}

void Einstellungen::spielstopzeitSetzen(const QString &text)
{
    m_store.setValue(QStringLiteral("spielstopzeit"), text);
}
