#pragma once

#include <QGroupBox>
#include <QLabel>
#include <QObject>

#include <memory>

class Client;
class Einstellungen;
struct LinkSettings;

namespace Ui {
class NetzwerkGruppe;
}

// The settings page's network section: the tournament key, and which link
// the table uses, kept in the link library's own file, with the label for the
// status line that says which link is in use and whether the venue's server
// is reached.
class VerbindungsSteuerung : public QObject
{
    Q_OBJECT

public:
    VerbindungsSteuerung(QObject *parent, Client &client, Einstellungen &einstellungen);
    ~VerbindungsSteuerung() override;

    // The group box for the settings tab and the status line's label; whoever
    // lays them out takes them over.
    QGroupBox *gruppe() const { return m_gruppe; }
    QLabel *anzeige() const { return m_anzeige; }

    void verbindungUebernehmen();

signals:
    void statusMeldung(const QString &text, int dauer);

private:
    void felderZeigen(const LinkSettings &einstellungen);
    void felderSchalten();
    void stand(bool offen, const QString &grund);
    void fehler(const QString &text);

    QGroupBox *m_gruppe;
    std::unique_ptr<Ui::NetzwerkGruppe> m_ui;
    Client &m_client;
    QLabel *m_anzeige;
};
