#pragma once

#include <QObject>

class Client;
class QLabel;
class QMainWindow;
struct LinkSettings;
namespace Ui {
class MainWindow;
}

// Which link the table uses: the fields of the settings page's network
// section, kept in the link library's own file, and the label in the status
// line that says which link is in use and whether the venue's server is
// reached.
class VerbindungsSteuerung : public QObject
{
    Q_OBJECT

public:
    VerbindungsSteuerung(QMainWindow *fenster, Ui::MainWindow &ui, Client &client);

    void verbindungUebernehmen();

private:
    void felderZeigen(const LinkSettings &einstellungen);
    void felderSchalten();
    void stand(bool offen, const QString &grund);
    void fehler(const QString &text);

    QMainWindow *m_fenster;
    Ui::MainWindow &m_ui;
    Client &m_client;
    QLabel *m_anzeige;
};
